#include "zorv/core/progress.h"

#include "tests/support/recorded_host.h"
#include <gtest/gtest.h>

namespace {

using Router = ZoProgressBarRouter;

TEST(Progress, PostsRegisteredMessagesToTheWindow) {
    RecordedHost host;
    int dummy = 0;
    const HWND window = reinterpret_cast<HWND>(&dummy);
    const unsigned int show = RecordedHost::NumberOf(L"MsgZoShowProgressbar");
    const unsigned int move = RecordedHost::NumberOf(L"MsgZoSetProgressBarPos");
    const unsigned int hide = RecordedHost::NumberOf(L"MsgZoHideProgresBar");
    Router::SetMsgHWND(window);
    EXPECT_EQ(Router::ShowProgressBar(L"Lesen", -5, 100), 1);
    host.postResult = 0;
    EXPECT_EQ(Router::SetProgressBarPos(42), 0);
    EXPECT_EQ(Router::HideProgressBar(), 0);
    Router::SetMsgHWND(nullptr);

    EXPECT_EQ(host.posts,
              (std::vector<RecordedHost::Post>{{window, show, -5, 100}, {window, move, 42, 0}, {window, hide, 0, 0}}));
    EXPECT_EQ(Router::GetMsgShowProgressBar(), show);
    EXPECT_EQ(Router::GetMsgSetProgressBarPos(), move);
    EXPECT_EQ(Router::GetMsgHideProgresBar(), hide);
}

TEST(Progress, WithoutAWindowOrAHostOnlyTheValuesChange) {
    const RecordedHost host;
    const std::wstring text(3000, L'p');
    EXPECT_EQ(Router::ShowProgressBar(text.c_str(), 3, 9), 0);
    EXPECT_EQ(Router::SetProgressBarPos(4), 0);
    EXPECT_EQ(Router::HideProgressBar(), 0);
    EXPECT_EQ(Router::GetProgressBarText(), text.substr(0, 1199));
    EXPECT_EQ(Router::GetProgressBarLower(), 3);
    EXPECT_EQ(Router::GetProgressBarUpper(), 9);
    EXPECT_EQ(Router::GetProgressBarPos(), 4);
    EXPECT_TRUE(host.posts.empty());
    ZoSetHostServices({});
    int dummy = 0;
    Router::SetMsgHWND(reinterpret_cast<HWND>(&dummy));
    EXPECT_EQ(Router::SetProgressBarPos(1), 0);
    Router::SetMsgHWND(nullptr);
}

}  // namespace

#include "zorv/core/debug_output.h"

#include "tests/support/recorded_host.h"
#include <gtest/gtest.h>

namespace {

TEST(DebugOutput, TextReachesTheChannelOfItsWidth) {
    const RecordedHost host;
    EXPECT_EQ(dbgprintf("%s %.2f\n", "Höhe", 1.5), 11);
    EXPECT_EQ(dbgprintf(L"%s %c\n", L"Höhe", L'€'), 7);
    dbgputs("50% %s");
    dbgputs(L"50% %s");
    dbgputs(static_cast<const char*>(nullptr));
    EXPECT_EQ(host.narrow, (std::vector<std::string>{"Höhe 1.50\n", "50% %s"}));
    EXPECT_EQ(host.wide, (std::vector<std::wstring>{L"Höhe €\n", L"50% %s"}));
}

TEST(DebugOutput, LongTextIsCutAndAFailureSendsNothing) {
    const RecordedHost host;
    EXPECT_EQ(dbgprintf("%s", std::string(20000, 'n').c_str()), 9499);
    EXPECT_EQ(dbgprintf(L"%s", std::wstring(20000, L'w').c_str()), 9499);
    EXPECT_EQ(std::tuple(host.narrow.at(0).size(), host.wide.at(0).size()), std::tuple(9499u, 9499u));
    EXPECT_EQ(dbgprintf(L"%hs", "\xc3("), -1);
    EXPECT_EQ(host.wide.size(), 1u);
}

TEST(DebugOutput, BoxesAndBeepsAreTheHosts) {
    RecordedHost host;
    EXPECT_TRUE(ZoMessageErrorBox("Fehler", "Größe") && ZoMessageErrorBox(L"Fehler", L"€"));
    EXPECT_EQ(host.boxes,
              (std::vector<std::pair<std::wstring, std::wstring>>{{L"Fehler", L"Größe"}, {L"Fehler", L"€"}}));
    EXPECT_TRUE(ZorvBeep(1000, 100));
    host.beepResult = false;
    EXPECT_FALSE(ZorvBeep(440, 5));
    ZoSetHostServices({});
    EXPECT_FALSE(ZorvBeep(1, 1));
    EXPECT_TRUE(ZoMessageErrorBox("nobody", "there"));
    EXPECT_EQ(dbgprintf("%d", 12), 2);
    EXPECT_EQ(host.beeps, (std::vector<std::pair<int, int>>{{1000, 100}, {440, 5}}));
}

}  // namespace

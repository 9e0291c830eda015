#include "zorv/core/progress.h"

#include "zorv/core/wide_format.h"

wchar_t ZoProgressBarRouter::text[kTextSize] = L"";
int ZoProgressBarRouter::lower = 0;
int ZoProgressBarRouter::upper = 0;
int ZoProgressBarRouter::pos = 0;
HWND ZoProgressBarRouter::window = nullptr;

namespace {

unsigned int showMessage = 0;
unsigned int positionMessage = 0;
unsigned int hideMessage = 0;

unsigned int Registered(unsigned int& number, const wchar_t* name) {
    const auto& registerMessage = ZoGetHostServices().registerMessage;
    if (number == 0 && registerMessage) number = registerMessage(name);
    return number;
}

int Post(unsigned int message, int first, int second) {
    const auto& post = ZoGetHostServices().postMessage;
    return post ? post(ZoProgressBarRouter::window, message, first, second) : 0;
}

}  // namespace

int ZoProgressBarRouter::ShowProgressBar(const wchar_t* newText, int newLower, int newUpper) {
    zorv::detail::CopyToBuffer(text, newText ? newText : L"");
    lower = newLower;
    upper = newUpper;
    return window ? Post(GetMsgShowProgressBar(), lower, upper) : 0;
}

int ZoProgressBarRouter::SetProgressBarPos(int newPos) {
    pos = newPos;
    return window ? Post(GetMsgSetProgressBarPos(), pos, 0) : 0;
}

int ZoProgressBarRouter::HideProgressBar() {
    return window ? Post(GetMsgHideProgresBar(), 0, 0) : 0;
}

unsigned int ZoProgressBarRouter::GetMsgShowProgressBar() {
    return Registered(showMessage, L"MsgZoShowProgressbar");
}

unsigned int ZoProgressBarRouter::GetMsgSetProgressBarPos() {
    return Registered(positionMessage, L"MsgZoSetProgressBarPos");
}

unsigned int ZoProgressBarRouter::GetMsgHideProgresBar() {
    return Registered(hideMessage, L"MsgZoHideProgresBar");
}

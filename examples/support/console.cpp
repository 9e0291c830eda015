#include "console.h"

#include <algorithm>
#include <cstdio>
#include <map>

int ConsoleLogger::Log(int /*level*/, const wchar_t* text) {
    std::printf("%s\n", wstring2string(text, false).c_str());
    return 1;
}

ProgressWindow::ProgressWindow() {
    ZoHostServices services;
    // A desktop asks its window system for the number of a message; here each name gets the next one.
    services.registerMessage = [numbers = std::map<std::wstring, unsigned int>()](const wchar_t* name) mutable {
        constexpr unsigned int kFirst = 0xc000;
        return numbers.try_emplace(name, kFirst + static_cast<unsigned int>(numbers.size())).first->second;
    };
    services.postMessage = [](HWND window, unsigned int message, std::intptr_t first, std::intptr_t) {
        auto* progress = reinterpret_cast<ProgressWindow*>(window);
        if (message == ZoProgressBarRouter::GetMsgShowProgressBar()) {
            progress->Show();
        } else if (message == ZoProgressBarRouter::GetMsgSetProgressBarPos()) {
            progress->Draw(static_cast<int>(first));
        } else if (message == ZoProgressBarRouter::GetMsgHideProgresBar()) {
            progress->Hide();
        }
        return 1;
    };
    ZoSetHostServices(services);
    ZoProgressBarRouter::SetMsgHWND(reinterpret_cast<HWND>(this));
}

ProgressWindow::~ProgressWindow() {
    ZoProgressBarRouter::SetMsgHWND(nullptr);
    ZoSetHostServices({});
}

void ProgressWindow::Show() {
    text = wstring2string(ZoProgressBarRouter::GetProgressBarText(), false);
    lower = ZoProgressBarRouter::GetProgressBarLower();
    upper = ZoProgressBarRouter::GetProgressBarUpper();
    Draw(lower);
}

void ProgressWindow::Draw(int position) {
    constexpr int kWidth = 40;
    const int done = upper > lower ? (position - lower) * kWidth / (upper - lower) : kWidth;
    std::string bar(static_cast<std::size_t>(kWidth), '.');
    std::fill_n(bar.begin(), done, '#');
    std::printf("\r[%s] %s %d/%d", bar.c_str(), text.c_str(), position, upper);
    std::fflush(stdout);
}

void ProgressWindow::Hide() {
    std::printf("\n");
}

HostSession::HostSession() {
    master.AddLogger(&console);
    ZoApplicationLogger::RegisterMasterLogger(&master);
}

HostSession::~HostSession() {
    ZoApplicationLogger::RegisterMasterLogger(nullptr);
}

void Checks::operator()(const std::string& what, bool result) {
    std::printf("  %-50s %s\n", what.c_str(), result ? "ok" : "FAILED");
    good = good && result;
}

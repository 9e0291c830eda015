#include "zorv/core/debug_output.h"

#include <cstdarg>

#include "zorv/core/platform/host_services.h"
#include "zorv/core/text_conversion.h"
#include "zorv/core/wide_format.h"

namespace {

constexpr std::size_t kDebugBuffer = 9500;

template <class Char>
int SendFormatted(const Char* format, std::va_list arguments) {
    auto text = zorv::detail::FormatText(format, arguments);
    if (!text) return -1;
    zorv::detail::CutToBuffer(*text, kDebugBuffer);
    dbgputs(text->c_str());
    return static_cast<int>(text->size());
}

}  // namespace

int dbgprintf(const char* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    const int count = SendFormatted(format, arguments);
    va_end(arguments);
    return count;
}

int dbgprintf(const wchar_t* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    const int count = SendFormatted(format, arguments);
    va_end(arguments);
    return count;
}

void dbgputs(const char* text) {
    const auto& send = ZoGetHostServices().debugOutput;
    if (send && text) send(text);
}

void dbgputs(const wchar_t* text) {
    const auto& send = ZoGetHostServices().debugOutputWide;
    if (send && text) send(text);
}

bool ZoMessageErrorBox(const char* caption, const char* text) {
    return ZoMessageErrorBox(string2wstring(caption).c_str(), string2wstring(text).c_str());
}

bool ZoMessageErrorBox(const wchar_t* caption, const wchar_t* text) {
    const auto& show = ZoGetHostServices().messageBox;
    if (show) show(caption ? caption : L"", text ? text : L"");
    return true;
}

bool ZorvBeep(int frequency, int duration) {
    const auto& beep = ZoGetHostServices().beep;
    return beep && beep(frequency, duration);
}

#include "zorv/core/wide_format.h"

#include "zorv/core/platform/printed_text.h"

namespace zorv::detail {

std::wstring NativeWideFormat(std::wstring_view format) {
    std::wstring native;
    native.reserve(format.size() + 8);
    for (std::size_t at = 0; at < format.size();) {
        native += format[at];
        if (format[at++] != L'%') continue;
        // Flags, width, precision and the place of an argument.
        while (at < format.size() &&
               std::wstring_view(L"-+ #0'123456789.*$").find(format[at]) != std::wstring_view::npos)
            native += format[at++];
        const std::size_t sizeAt = at;
        while (at < format.size() && std::wstring_view(L"hlLqjztw").find(format[at]) != std::wstring_view::npos)
            ++at;
        const std::wstring_view size = format.substr(sizeAt, at - sizeAt);
        if (at == format.size()) {
            native += size;
            break;
        }
        const wchar_t kind = format[at++];
        if (kind == L's' || kind == L'c') {
            if (size != L"h") native += L'l';
            native += kind;
        } else if (kind == L'S' || kind == L'C') {
            if (size == L"l" || size == L"w") native += L'l';
            native += kind == L'S' ? L's' : L'c';
        } else {
            native += size;
            native += kind;
        }
    }
    return native;
}

std::optional<std::wstring> FormatText(const wchar_t* format, std::va_list arguments) {
    if (!format) return std::nullopt;
    return PrintText(NativeWideFormat(format).c_str(), arguments);
}

std::optional<std::string> FormatText(const char* format, std::va_list arguments) {
    if (!format) return std::nullopt;
    return PrintText(format, arguments);
}

void CutToBuffer(std::string& text, std::size_t bufferSize) {
    if (text.size() < bufferSize) return;
    std::size_t end = bufferSize - 1;
    const auto isTail = [&text](std::size_t i) { return (static_cast<unsigned char>(text[i]) & 0xc0) == 0x80; };
    for (int back = 0; back < 3 && end > 0 && isTail(end); ++back)
        --end;
    text.resize(isTail(end) ? bufferSize - 1 : end);
}

void CutToBuffer(std::wstring& text, std::size_t bufferSize) {
    if (text.size() < bufferSize) return;
    std::size_t end = bufferSize - 1;
    // A surrogate pair, where wide characters have 16 bits.
    if (end > 0 && text[end] >= 0xdc00 && text[end] <= 0xdfff && text[end - 1] >= 0xd800 && text[end - 1] <= 0xdbff)
        --end;
    text.resize(end);
}

}  // namespace zorv::detail

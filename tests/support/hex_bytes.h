#pragma once

#include <string>
#include <string_view>

/// The bytes that a text of hexadecimal digits names; blanks and line ends between them do not count.
inline std::string HexBytes(std::string_view text) {
    constexpr std::string_view kDigits = "0123456789abcdef";
    std::string bytes;
    int digits = 0;
    int value = 0;
    for (const char c : text) {
        const std::size_t digit = kDigits.find(c);
        if (digit == kDigits.npos) continue;
        value = (value << 4 | static_cast<int>(digit)) & 0xff;
        if (++digits % 2 == 0) bytes += static_cast<char>(value);
    }
    return bytes;
}

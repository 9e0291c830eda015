#include "zorv/core/number_format.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cstddef>
#include <limits>

namespace zorv::detail {

namespace {

bool IsSpace(char c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}

/// Skips white space and one sign; true when the sign was a minus.
bool PassSign(const char*& at, const char* end) {
    while (at != end && IsSpace(*at))
        ++at;
    if (at == end || (*at != '-' && *at != '+')) return false;
    return *at++ == '-';
}

/// Whether a hexadecimal number begins here: what stands behind its "0x" must be no sign or word.
bool IsHex(const char* at, const char* end) {
    if (end - at <= 2 || at[0] != '0' || (at[1] != 'x' && at[1] != 'X')) return false;
    const char* const digit = at[2] == '.' ? at + 3 : at + 2;
    return digit != end && std::isxdigit(static_cast<unsigned char>(*digit)) != 0;
}

/// A second sign behind the exponent's, which from_chars would take, leaves the exponent out.
const char* HexEnd(const char* at, const char* end) {
    const char* const exponent = std::find_if(at, end, [](char character) { return (character | 0x20) == 'p'; });
    const bool isDoubled = end - exponent > 2 && exponent[1] == '+' && exponent[2] == '-';
    return isDoubled ? exponent : end;
}

/// Whether a number that from_chars found out of range is too large, rather than too small.
bool IsTooLarge(const char* at, const char* end, bool hex) {
    const int weight = hex ? 4 : 1;  // of a digit, in units of the exponent
    long long exponent = 0;
    bool afterPoint = false;
    bool significant = false;
    for (; at != end; ++at) {
        const auto character = static_cast<unsigned char>(*at);
        if (*at == '.') {
            afterPoint = true;
        } else if (hex ? std::isxdigit(character) : std::isdigit(character)) {
            significant = significant || *at != '0';
            if (afterPoint && !significant) exponent -= weight;
            if (!afterPoint && significant) exponent += weight;
        } else {
            break;
        }
    }
    if (at == end) return exponent > 0;
    const bool negative = PassSign(++at, end);
    long long written = 0;
    if (std::from_chars(at, end, written).ec == std::errc::result_out_of_range) return !negative;
    return negative ? exponent > written : exponent > -written;
}

}  // namespace

double ParseDouble(std::string_view text) {
    const char* at = text.data();
    const char* end = at + text.size();
    const bool negative = PassSign(at, end);
    if (at == end || *at == '-') return 0.0;

    double value = 0.0;
    const bool hex = IsHex(at, end);
    if (hex) end = HexEnd(at += 2, end);
    const auto result = std::from_chars(at, end, value, hex ? std::chars_format::hex : std::chars_format::general);
    // Without a digit not even the sign counts.
    if (result.ec == std::errc::invalid_argument) return 0.0;
    if (result.ec == std::errc::result_out_of_range) {
        value = IsTooLarge(at, result.ptr, hex) ? std::numeric_limits<double>::infinity() : 0.0;
    }
    return negative ? -value : value;
}

int ParseInt(std::string_view text) {
    constexpr std::int64_t kLowest = std::numeric_limits<std::int32_t>::min();
    constexpr std::int64_t kHighest = std::numeric_limits<std::uint32_t>::max();
    const char* at = text.data();
    const char* end = at + text.size();
    const bool negative = PassSign(at, end);
    std::int64_t value = 0;
    for (; at != end && *at >= '0' && *at <= '9'; ++at) {
        value = value * 10 + (*at - '0');
        if (value > kHighest) break;
    }
    if (negative) return static_cast<int>(-value < kLowest ? kLowest : -value);
    return static_cast<int>(static_cast<std::uint32_t>(value > kHighest ? kHighest : value));
}

char* FormatDouble(char* out, double value, int precision) {
    return std::to_chars(out, out + kNumberTextSize, value, std::chars_format::general, precision).ptr;
}

char* FormatFixed(char* out, double value, int decimals) {
    static_assert(kFixedTextSize >= std::numeric_limits<double>::max_exponent10 + kMostDecimals + 3);
    decimals = std::clamp(decimals, 0, kMostDecimals);
    return std::to_chars(out, out + kFixedTextSize, value, std::chars_format::fixed, decimals).ptr;
}

void AppendFixed(std::string& text, double value, int decimals, char sign, int width) {
    char digits[kFixedTextSize];
    const char* end = FormatFixed(digits, value, decimals);
    const std::size_t length = static_cast<std::size_t>(end - digits);
    const std::size_t blanks = sign == ' ' && digits[0] != '-' ? 1 : 0;
    const std::size_t field = width > 0 ? static_cast<std::size_t>(width) : 0;
    text.append(std::max(field, length + blanks) - length, ' ');
    text.append(digits, length);
}

std::string FixedText(double value, int decimals) {
    std::string text;
    AppendFixed(text, value, decimals);
    return text;
}

char* FormatInt(char* out, std::int64_t value) {
    return std::to_chars(out, out + kNumberTextSize, value).ptr;
}

char* FormatUnsigned(char* out, std::uint64_t value) {
    return std::to_chars(out, out + kNumberTextSize, value).ptr;
}

}  // namespace zorv::detail

#pragma once

#include <cmath>
#include <cstdint>
#include <string>
#include <string_view>

/// The one way by which numbers become text and text becomes numbers. The process locale plays no part.
namespace zorv::detail {

/// Digits that bring every double back exactly.
inline constexpr int kExactDigits = 17;

/// Longest text that FormatDouble writes, for precisions up to kExactDigits.
inline constexpr int kNumberTextSize = 32;

/// The number at the start of the text, as atof reads it in the "C" locale: leading white space, a sign, decimal and
/// hexadecimal forms, inf and nan. What does not begin with a number gives 0; too large gives infinity, too small 0.
double ParseDouble(std::string_view text);

/// digits / 10^decimals into `value`, correctly rounded. False, and nothing done, where one division cannot do that:
/// digits that a double does not hold exactly, or more than 22 decimals.
inline bool DecimalToDouble(std::uint64_t digits, int decimals, double& value) {
    constexpr double kPowers[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,  1e10, 1e11,
                                  1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
    constexpr std::uint64_t kExactIntegers = std::uint64_t{1} << 53;
    if (digits > kExactIntegers || decimals < 0 || decimals > 22) return false;
    value = static_cast<double>(digits) / kPowers[decimals];
    return true;
}

/// The integer at the start of the text, as atoi reads it. Values from 2147483648 to 4294967295 keep their 32 bits, so
/// that unsigned ids pass; beyond that they saturate at 4294967295 and at -2147483648.
int ParseInt(std::string_view text);

/// Writes the number as printf's "%.<precision>g" and returns the end of the text, which is not terminated. `out` has
/// room for kNumberTextSize bytes; precision counts significant digits and is at most kExactDigits.
char* FormatDouble(char* out, double value, int precision);

/// What a tagged text can hold: it has no form for infinity and not-a-number.
inline double FiniteOrZero(double value) {
    return std::isfinite(value) ? value : 0.0;
}

/// Decimals that the fixed form has at most, and the longest text of it.
inline constexpr int kMostDecimals = 60;
inline constexpr int kFixedTextSize = 380;

/// Writes the number as printf's "%.<decimals>f" and returns the end of the text, which is not terminated. `out` has
/// room for kFixedTextSize bytes.
char* FormatFixed(char* out, double value, int decimals);
/// Appends the number as printf's "%.<decimals>f", padded with blanks on the left to `width`. With ' ' as `sign` a
/// number without a minus sign gets a blank before its digits.
void AppendFixed(std::string& text, double value, int decimals, char sign = '\0', int width = 0);
/// The number alone, as printf's "%.<decimals>f".
std::string FixedText(double value, int decimals);

/// Decimal digits, as printf's "%d" and "%u".
char* FormatInt(char* out, std::int64_t value);
char* FormatUnsigned(char* out, std::uint64_t value);

}  // namespace zorv::detail

#include "zorv/core/number_text.h"

#include <algorithm>
#include <clocale>
#include <cmath>
#include <cstddef>

#include "zorv/core/number_format.h"
#include "zorv/core/text_conversion.h"

namespace {

/// The text with the locale's separator between groups of three, counted from the right.
std::string Grouped(const std::string& digits) {
    constexpr std::size_t kGroup = 3;
    const char* ofLocale = std::localeconv()->thousands_sep;
    const std::string separator = ofLocale && *ofLocale ? ofLocale : ",";
    std::string text;
    for (std::size_t i = 0; i < digits.size(); ++i) {
        if (i > 0 && (digits.size() - i) % kGroup == 0) text += separator;
        text += digits[i];
    }
    return text;
}

double WithSignOf(double signedValue, double magnitude) {
    if (signedValue == 0.0) return 0.0;
    return signedValue < 0.0 ? -magnitude : magnitude;
}

}  // namespace

std::string zoitoa10(unsigned long long value) {
    return Grouped(std::to_string(value));
}

std::wstring wzoitoa10(unsigned long long value) {
    return string2wstring(zoitoa10(value));
}

std::string zoitoa10(double value, int decimals) {
    std::string whole = zorv::detail::FixedText(value, decimals);
    if (!std::isfinite(value)) return whole;
    const std::size_t sign = whole[0] == '-' ? 1 : 0;
    const std::size_t point = std::min(whole.find('.'), whole.size());
    std::string text = whole.substr(0, sign) + Grouped(whole.substr(sign, point - sign));
    if (point < whole.size()) text += std::localeconv()->decimal_point + whole.substr(point + 1);
    return text;
}

std::wstring wzoitoa10(double value, int decimals) {
    return string2wstring(zoitoa10(value, decimals));
}

double RoundValue(double value, double step, int mode) {
    if (step == 0.0) return value;
    if (mode < 0) return std::floor(value / step) * step;
    const double added = mode == 0 ? step / 2 : step;
    return WithSignOf(value, std::floor((std::fabs(value) + added) / step) * step);
}

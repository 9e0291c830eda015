#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "zorv/core/field_splitter.h"
#include "zorv/core/number_format.h"

namespace zorv::detail {

/// Cuts a line, which stays as it is, at runs of separators.
class FieldCursor {
  public:
    FieldCursor(std::string_view line, const DelimiterSet& separatorSet)
        : at(line.data()), end(at + line.size()), separators(separatorSet) {}

    /// The next field; false when there is none.
    bool Next(std::string_view& field) {
        const char* const begin = std::find_if_not(at, end, separators);
        at = std::find_if(begin, end, separators);
        field = {begin, static_cast<std::size_t>(at - begin)};
        return !field.empty();
    }

  private:
    const char* at;
    const char* end;
    const DelimiterSet& separators;
};

/// Takes plain decimal numbers, the usual kind, from a line that a line feed ends: digits with at most one sign and one
/// point. Whatever else stands in a line makes the operations false; FieldCursor, ParseDouble and ParseInt then tell
/// what it means. What they do take has the same value there.
template <const DelimiterSet& kSeparators>
class PlainNumbers {
  public:
    explicit PlainNumbers(const char* line) : at(line) {}

    /// Passes separators; true at the end of the line.
    bool AtLineEnd() {
        while (kSeparators(*at))
            ++at;
        return *at == '\n' || IsReturn();
    }
    /// Where the next line begins.
    const char* NextLine() const { return at + (*at == '\r' ? 2 : 1); }

    bool Take(double& value) {
        if (AtLineEnd()) return false;
        const bool negative = *at == '-';
        if (negative) ++at;
        const char* const begin = at;
        std::uint64_t digits = 0;
        TakeDigits(digits);
        std::ptrdiff_t count = at - begin;
        std::ptrdiff_t decimals = 0;
        hasPoint = *at == '.';
        if (hasPoint) {
            const char* const fraction = ++at;
            TakeDigits(digits);
            decimals = at - fraction;
            count += decimals;
        }
        if (count == 0 || count > kMostDigits || !AtFieldEnd()) return false;
        if (!DecimalToDouble(digits, static_cast<int>(decimals), value)) return false;
        if (negative) value = -value;
        return true;
    }

    /// Whether the last double had a decimal point.
    bool HasPoint() const { return hasPoint; }

    bool Take(int& value) {
        if (AtLineEnd()) return false;
        const bool negative = *at == '-';
        if (negative) ++at;
        const char* const begin = at;
        std::uint64_t digits = 0;
        TakeDigits(digits);
        const std::ptrdiff_t count = at - begin;
        if (count == 0 || count > kMostIntDigits || !AtFieldEnd()) return false;
        value = negative ? -static_cast<int>(digits) : static_cast<int>(digits);
        return true;
    }

  private:
    static constexpr std::ptrdiff_t kMostDigits = 19;    // of a 64-bit number, whichever they are
    static constexpr std::ptrdiff_t kMostIntDigits = 9;  // of a 32-bit one

    bool IsReturn() const { return *at == '\r' && at[1] == '\n'; }
    bool AtFieldEnd() const { return kSeparators(*at) || *at == '\n' || IsReturn(); }
    void TakeDigits(std::uint64_t& digits) {
        for (; *at >= '0' && *at <= '9'; ++at)
            digits = digits * 10 + static_cast<std::uint64_t>(*at - '0');
    }

    const char* at;
    bool hasPoint = false;
};

}  // namespace zorv::detail

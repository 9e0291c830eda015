#pragma once

#include <string>

#include "zorv/export.h"

/// Decimal text for people, with a separator every three digits: "1,234,567". The separator is the thousands separator
/// of the process's C locale, or a comma where that has none.
ZORV_API std::string zoitoa10(unsigned long long value);
/// The same as wide text.
ZORV_API std::wstring wzoitoa10(unsigned long long value);

/// The same for a number rounded to that many decimals: "-1,234.50". The decimal mark is that of the process's C
/// locale. What is not finite reads "inf", "-inf" or "nan".
ZORV_API std::string zoitoa10(double value, int decimals);
/// The same as wide text.
ZORV_API std::wstring wzoitoa10(double value, int decimals);

/// A multiple of `step` near the value. Mode 0: the nearest one, halves away from zero. Below 0: the next one down.
/// Above 0: the next one away from zero, so that an exact multiple also goes one step up; 0 stays 0 in both. A step of
/// 0 gives the value itself.
ZORV_API double RoundValue(double value, double step, int mode);

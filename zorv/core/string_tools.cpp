#include "zorv/core/string_tools.h"

#include <algorithm>
#include <cwctype>

bool StringEqualsNoCase(const std::wstring& a, const std::wstring& b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](wchar_t x, wchar_t y) { return x == y || std::towlower(x) == std::towlower(y); });
}

#pragma once

#include <string>

#include "zorv/export.h"

/// Whether two texts are equal without regard to case.
ZORV_API bool StringEqualsNoCase(const std::wstring& a, const std::wstring& b);

#pragma once

#include <ctime>
#include <string>

namespace zorv::detail {

/// Puts the time and then the message into a log pattern. Words of the pattern inside the message stay.
std::wstring LogLine(std::wstring pattern, const std::tm& time, const std::wstring& message);

}  // namespace zorv::detail

#pragma once

#include <string>

namespace zorv::detail {

/// The name under which the debug logger keeps its lines; tests point it elsewhere.
std::wstring& DebugProtocolFile();

}  // namespace zorv::detail

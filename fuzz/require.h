#pragma once

#include <cstdlib>

/// Ends the harness where something that always holds does not.
inline void Require(bool condition) {
    if (!condition) std::abort();
}

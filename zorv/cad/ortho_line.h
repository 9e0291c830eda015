#pragma once

#include "zorv/export.h"
#include "zorv/math/point3d.h"

/// Forces a line from its start to run along the coordinate axis to which it is nearest; x goes before y, and y before
/// z. Calculated in the constructor.
class ZORV_API ZoCadOrthoLine {
  public:
    ZoCadOrthoLine(const ZoPoint3d& lineStart, const ZoPoint3d& lineEnd);
    ZoCadOrthoLine(const ZoCadOrthoLine&) = default;
    ZoCadOrthoLine& operator=(const ZoCadOrthoLine&) = default;
    virtual ~ZoCadOrthoLine() = default;

    /// False for a line without length; the result is then the end.
    bool IsValid() const { return valid; }
    const ZoPoint3d& Result() const { return result; }
    const ZoPoint3d& Start() const { return start; }
    const ZoPoint3d& End() const { return end; }

    ZoPoint3d result;
    ZoPoint3d start;
    ZoPoint3d end;
    bool valid = false;
};

#include "zorv/cad/ortho_line.h"

#include <algorithm>
#include <array>
#include <cmath>

ZoCadOrthoLine::ZoCadOrthoLine(const ZoPoint3d& lineStart, const ZoPoint3d& lineEnd)
    : result(lineEnd), start(lineStart), end(lineEnd) {
    const ZoVector3d direction = end - start;
    if (direction.Norm() == 0.0) return;
    valid = true;
    const ZoVector3d unit = Normalized(direction);
    const std::array<double, 3> parts{std::fabs(unit.x()), std::fabs(unit.y()), std::fabs(unit.z())};
    const auto along = std::max_element(parts.begin(), parts.end()) - parts.begin();
    for (int axis = 0; axis < 3; ++axis) {
        if (axis != along) result[axis] = start[axis];
    }
}

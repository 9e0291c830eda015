#include "zorv/math/line3d.h"

#include <algorithm>
#include <cmath>

#include "zorv/core/debug_output.h"
#include "zorv/math/matrix.h"
#include "zorv/math/solvers.h"

namespace {

constexpr double kOnLine = 1e-10;
// 89 degrees. Its cosine bounds the sine of the angle between two lines from below, at 1 degree.
constexpr double kSteepestAngle = 1.5533430342749532;

bool Between(double value, double a, double b) {
    return value >= std::min(a, b) && value <= std::max(a, b);
}

}  // namespace

bool ZoLine3d::getClosestPointTo(const ZoPoint3d& point, ZoPoint3d& foot, bool infinite) const {
    const double t = (point - start) * direction;
    foot = Evaluate(t);
    return infinite || (t >= 0.0 && t <= getLength());
}

bool ZoLine3d::getDistAtPoint(const ZoPoint3d& point, double& dist) const {
    dist = point.Distance(start);
    return getNormDistance(point) < kOnLine;
}

double ZoLine3d::getNormDistance(const ZoPoint3d& point, ZoPoint3d& foot) const {
    const double distance = getNormDistance(point);
    getClosestPointTo(point, foot, true);
    return distance;
}

double ZoLine3d::getNormDistance(const ZoPoint3d& point, bool& inSegment) const {
    ZoPoint3d foot;
    const double distance = getNormDistance(point, foot);
    inSegment = Between(foot.x(), start.x(), end.x()) && Between(foot.y(), start.y(), end.y()) &&
                Between(foot.z(), start.z(), end.z());
    return distance;
}

double ZoLine3d::Intersect(const ZoLine3d& other, ZoPoint3d& point) const {
    const ZoVector3d d1 = Normalized(direction);
    const ZoVector3d d2 = Normalized(other.direction);
    const ZoVector3d n = d1 % d2;
    if (!(n.Norm() > std::cos(kSteepestAngle))) return -1.0;

    // t d1 - s d2 - k n = start2 - start1
    ZoMatrix system(3, 3);
    ZoMatrix unknowns(3, 1);
    const ZoVector3d offset = other.start - start;
    for (int i = 0; i < 3; ++i) {
        system[i + 1][1] = d1[i];
        system[i + 1][2] = -d2[i];
        system[i + 1][3] = -n[i];
        unknowns[i + 1][1] = offset[i];
    }
    if (GaussLoeserRelMax(system, unknowns) != 0) return -1.0;

    const ZoPoint3d p1 = start + unknowns[1][1] * d1;
    const ZoPoint3d p2 = other.start + unknowns[2][1] * d2;
    point = p1.MiddlePoint(p2);
    return p1.Distance(p2);
}

void ZoLine3d::DbgPrintf() const {
    dbgprintf("ZoLine3d start: %f %f %f end: %f %f %f direction: %f %f %f", start.x(), start.y(), start.z(), end.x(),
              end.y(), end.z(), direction.x(), direction.y(), direction.z());
}

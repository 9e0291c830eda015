#include "zorv/math/line3d.h"

#include <algorithm>
#include <cmath>

#include "zorv/core/debug_output.h"

namespace {

constexpr double kOnLine = 1e-10;
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

void ZoLine3d::DbgPrintf() const {
    dbgprintf("ZoLine3d start: %f %f %f end: %f %f %f direction: %f %f %f", start.x(), start.y(), start.z(), end.x(),
              end.y(), end.z(), direction.x(), direction.y(), direction.z());
}

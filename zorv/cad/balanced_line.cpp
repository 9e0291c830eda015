#include "zorv/cad/balanced_line.h"

#include <algorithm>

#include "zorv/cad/linear_regression.h"
#include "zorv/math/affine_map3d.h"
#include "zorv/rectify/plane_fit.h"

namespace {

ZoPoint3d Position(const ZoPoint& p) {
    return {p.x, p.y, p.z};
}

ZoPoint AsPoint(const ZoPoint3d& p) {
    return {0, p.x(), p.y(), p.z(), 0};
}

const ZoPoint& FarthestFrom(const ZoPoint& from, const ZoPointList& points) {
    const ZoPoint* farthest = points.First();
    for (const ZoPoint* point = farthest; point; point = point->NextConst()) {
        if (from.DistanceSq(*point) > from.DistanceSq(*farthest)) farthest = point;
    }
    return *farthest;
}

}  // namespace

ZoCadBalancedLine::ZoCadBalancedLine(const ZoPointList* list) {
    if (list) list->CopyTo(&points);
    CalcBalancedLine();
}

bool ZoCadBalancedLine::AddPoint(const ZoPoint& point) {
    points.Add(point);
    return CalcBalancedLine();
}

bool ZoCadBalancedLine::AddPoint(double x, double y, double z) {
    return AddPoint(ZoPoint(0, x, y, z, 0));
}

bool ZoCadBalancedLine::CalcBalancedLine() {
    valid = false;
    maxDeviation = 0.0;
    meanDeviation = 0.0;
    if (!points.CountMoreThan(1)) return false;
    if (!points.CountMoreThan(2)) {
        start = *points.First();
        end = *points.Last();
        valid = true;
        return true;
    }
    ZoCalcPlane plane;
    if (!plane.CalcPlaneFromFilteredPoints(&points, true, false)) {
        TakeFarthestPoints();
        return true;
    }
    const ZoVector& normal = plane.GetPlane().GetNorm();
    valid = FitInPlane(ZoVector3d(normal[1], normal[2], normal[3]));
    if (valid) CalcDeviations();
    return valid;
}

void ZoCadBalancedLine::TakeFarthestPoints() {
    start = FarthestFrom(ZoCalcGravitycenter(points), points);
    end = FarthestFrom(start, points);
    valid = true;
}

bool ZoCadBalancedLine::FitInPlane(const ZoVector3d& normal) {
    const ZoAffinMap3d toWorld = MapEcsToWcs(normal);
    const ZoAffinMap3d toPlane = ZoAffinMap3d::Inv(toWorld);
    ZoLinearRegression regression;
    for (const ZoPoint* point = points.First(); point; point = point->NextConst()) {
        const ZoPoint3d p = toPlane * Position(*point);
        regression.Add(p.x(), p.y(), p.z());
    }
    if (!regression.Calc()) return false;
    start = AsPoint(toWorld * regression.GetLow());
    end = AsPoint(toWorld * regression.GetHigh());
    return true;
}

void ZoCadBalancedLine::CalcDeviations() {
    const ZoPoint3d from = Position(start);
    const ZoVector3d direction = Normalized(Position(end) - from);
    double sum = 0.0;
    int count = 0;
    for (const ZoPoint* point = points.First(); point; point = point->NextConst(), ++count) {
        const ZoPoint3d p = Position(*point);
        const ZoPoint3d foot = from + (p - from).dot(direction) * direction;
        const double deviation = foot.Distance(p);
        maxDeviation = std::max(maxDeviation, deviation);
        sum += deviation;
    }
    meanDeviation = sum / count;
}

#include "zorv/cad/rectangle.h"

#include <algorithm>
#include <cmath>

#include "zorv/math/point3d.h"

int ZoCadRectangle::CalcRectangle(const ZoPointList* list, double tolerance) {
    angle = 0.0;
    ZoPointList corners;
    for (const ZoPoint* point = list ? list->First() : nullptr; point && !corners.CountMoreThan(2);
         point = point->NextConst())
        corners.Add(*point);
    points.Destroy();
    if (!corners.CountMoreThan(2)) {
        status = eZoCadNotCalculated;
        return 0;
    }
    status = eZoCadFailed;
    corners.MoveTo(&points);

    const auto corner = [this](int i) {
        const ZoPoint* p = points.Get(i);
        return ZoPoint3d(p->x, p->y, p->z);
    };
    const ZoPoint3d p1 = corner(1);
    const ZoVector3d a = corner(0) - p1;
    ZoVector3d b = corner(2) - p1;
    const double lengthA = a.Norm();
    const double lengthB = b.Norm();
    if (lengthA * lengthB == 0.0) return 0;
    const double cosine = a.dot(b) / (lengthA * lengthB);
    angle = std::acos(std::clamp(cosine, -1.0, 1.0));
    if (!(std::fabs(cosine) < tolerance)) return 0;

    const ZoVector3d w = b / lengthB - (cosine / lengthA) * a;
    const double lengthW = w.Norm();
    // A tolerance beyond 1 lets sides on one line pass, and lengths beyond all numbers look perpendicular.
    if (!(lengthW > 0.0)) return 0;
    b = lengthB * w / lengthW;
    const ZoPoint3d fourth = p1 + a + b;
    result = ZoPoint(4, fourth.x(), fourth.y(), fourth.z(), 0);
    points.Add(result);
    sideA = lengthA;
    sideB = b.Norm();
    status = eZoCadOk;
    return 1;
}

#include "zorv/math/plane3d.h"
#include "zorv/points/point_list.h"
#include "zorv/rectify/plane_fit.h"

// Three points are fitted as any number is. It stands here, where the fit is known, since space types know no planes of
// the project.
ZoPlane3d::ZoPlane3d(const ZoPoint3d& p1, const ZoPoint3d& p2, const ZoPoint3d& p3) {
    ZoPointList points;
    unsigned int id = 0;
    for (const ZoPoint3d& point : {p1, p2, p3})
        points.Add(ZoPoint(++id, point.x(), point.y(), point.z(), 0));
    ZoCalcPlane fit;
    if (!fit.CalcPlaneFromFilteredPoints(&points, false, false)) return;
    const ZoPlane& plane = fit.GetPlane();
    SetNorm({plane.A(), plane.B(), plane.C()});
    dist = plane.D();
}

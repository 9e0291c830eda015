#include "zorv/rectify/point_projection.h"

#include "zorv/math/affine_map3d.h"
#include "zorv/math/matrix.h"
#include "zorv/rectify/plane_fit.h"

bool ZoProjectPointListTo2d(ZoPointList* out, const ZoPointList& in) {
    if (!out || !in.CountMoreThan(2)) return false;
    ZoPointList points(in);
    ZoCalcPlane fit;
    if (!fit.CalcPlaneFromFilteredPoints(&points, false, false)) return false;

    const ZoVector& normal = fit.GetPlane().GetNorm();
    ZoVector xAxis(3);
    ZoVector yAxis(3);
    CalcArbitaryAlg(&xAxis, &yAxis, normal);
    const auto direction = [](const ZoVector& v) { return ZoVector3d(v[1], v[2], v[3]); };
    const ZoFrame3d planeFrame(ZoPoint3d::origin, direction(xAxis), direction(yAxis), direction(normal));
    const ZoAffinMap3d toWorldFrame(planeFrame, ZoFrame3d());
    const ZoMatrix map(toWorldFrame.asDblArray(), 4, 4);

    ZoPointList projected(in);
    Transform3D(&projected, map);
    out->Destroy();
    projected.MoveTo(out);
    return true;
}

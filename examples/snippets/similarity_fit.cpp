#include <cmath>
#include <cstdio>

#include <zorv/zorv.h>

int main() {
    // Control points of the site in metres: id, x, y, z, control code.
    ZoPointList controls;
    controls.Add(ZoPoint(1, 100.0, 200.0, 10.0, 0));
    controls.Add(ZoPoint(2, 110.0, 200.0, 10.0, 0));
    controls.Add(ZoPoint(3, 110.0, 205.0, 10.0, 0));
    controls.Add(ZoPoint(4, 100.0, 205.0, 14.0, 0));

    // The same points as an instrument saw them, turned by a right angle and in millimetres, and a new point 9.
    ZoPointList measured;
    measured.Add(ZoPoint(1, 0.0, 0.0, 0.0, 0));
    measured.Add(ZoPoint(2, 0.0, 10000.0, 0.0, 0));
    measured.Add(ZoPoint(3, -5000.0, 10000.0, 0.0, 0));
    measured.Add(ZoPoint(4, -5000.0, 0.0, 4000.0, 0));
    measured.Add(ZoPoint(9, -1000.0, 2000.0, 3000.0, 0));

    // x' = targetOrigin + scale * rotation * (x - sourceOrigin), from at least three points with the same ids.
    ZoTrafo3d trafo;
    if (!trafo.CalcByControlPoints(&controls, &measured, 3, false)) return 1;
    ZoPointList site;
    trafo.Transform(site, measured, &controls, true);

    const ZoPoint* const added = site.Find(9);
    const ZoPoint* const worst = trafo.GetWorstPoint();
    if (!added || !worst) return 1;
    std::printf("scale %.6f, point 9: %.3f %.3f %.3f\n", trafo.scale, added->x, added->y, added->z);
    std::printf("largest residual %.1f mm\n", 1000.0 * std::hypot(worst->dx, worst->dy, worst->dz));
}

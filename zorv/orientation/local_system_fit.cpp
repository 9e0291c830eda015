#include <algorithm>
#include <cmath>
#include <limits>

#include "zorv/orientation/local_system.h"
#include "zorv/orientation/similarity.h"

namespace {

/// A known distance whose points are both at hand.
struct Distance {
    const ZoPoint* a = nullptr;
    const ZoPoint* b = nullptr;
    double length = 0.0;

    explicit operator bool() const { return a && b; }
};

/// Whether the angle at the first point is zero, or so small that the rounding of the coordinates makes it.
bool IsCollinear(const ZoVector& p0, const ZoVector& p1, const ZoVector& p2) {
    constexpr double kSmallestSine = 1e-10;
    constexpr double kRounding = 8.0 * std::numeric_limits<double>::epsilon();
    const ZoVector u = p1 - p0;
    const ZoVector w = p2 - p0;
    const double shorter = std::min(u.Abs(), w.Abs());
    const double largest = std::max({p0.Abs(), p1.Abs(), p2.Abs()});
    const double sine = (u % w).Abs() / (u.Abs() * w.Abs());
    return !(sine > kSmallestSine) || !(sine * shorter > kRounding * largest);
}

/// The axes of the local system as rows, from those of the definition as columns: u along the axis, v across it in the
/// plane, w across the plane. Rows are named by column, with the sign of the direction; all are right-handed.
bool ArrangeAxes(const ZoMatrix& frame, int axisMode, int planeMode, ZoMatrix& rotation) {
    enum : int { U = 1, V = 2, W = 3 };
    struct Arrangement {
        int axis;
        int plane;
        int inPlane[3];  // with that plane
        int other[3];    // with any other
    };
    static constexpr Arrangement kArrangements[] = {
        {eAxisX, ePlaneXY, {U, V, W}, {U, -W, V}},
        {eAxisY, ePlaneXY, {V, U, -W}, {W, U, V}},
        {eAxisZ, ePlaneZX, {V, W, U}, {-W, V, U}},
    };
    for (const Arrangement& known : kArrangements) {
        if (known.axis != axisMode) continue;
        const int* rows = known.plane == planeMode ? known.inPlane : known.other;
        for (int r = 1; r <= 3; ++r) {
            const int column = rows[r - 1];
            for (int c = 1; c <= 3; ++c)
                rotation[r][c] = column > 0 ? frame[c][column] : -frame[c][-column];
        }
        return true;
    }
    return false;
}

/// The mean of all points, summed from the first one on.
ZoVector CalcMean(const ZoPointList& list) {
    ZoVector sum(3);
    const ZoPoint* first = list.First();
    if (!first) return sum;
    const ZoVector origin = first->GetAsVector();
    int count = 0;
    for (const ZoPoint* point = first; point; point = point->NextConst(), ++count)
        sum += point->GetAsVector() - origin;
    return origin + sum * (1.0 / count);
}

}  // namespace

bool ZoTrafo3d::CalcByLocalSystem(const ZoLokalSystemDef& def, const ZoPointList* list, double fixedScale,
                                  double maxDeviation) {
    const auto fail = [this](eTrafo3DStatus reason) {
        status = reason;
        return false;
    };
    constexpr int kNScale = ZoLokalSystemDef::kNScale;
    std::fill_n(scaleCheck, kNScale, ZoScaleCheck());
    const auto find = [list](unsigned int id) -> const ZoPoint* { return list ? list->Find(id) : nullptr; };
    const ZoPoint* point0 = find(def.id0);
    const ZoPoint* point1 = find(def.id1);
    const ZoPoint* point2 = find(def.id2);
    const ZoPoint* point3 = find(def.id3);
    Distance distances[kNScale];
    for (int i = 0; i < kNScale; ++i) {
        const ZoScaleDef& record = def.scale[i];
        if (!record.IsEmpty()) distances[i] = {find(record.idA), find(record.idB), record.distance};
    }

    eTrafo3DStatus reason = eTrafo3DOk;
    if (!def.IsValid(reason, list, true)) {
        status = reason;
        if (reason != eTrafo3DNoScaleDef) return false;
    }
    const bool hasDistance = std::any_of(distances, distances + kNScale, [](const Distance& d) { return bool(d); });
    if (!hasDistance && fixedScale == 0.0) return fail(eTrafo3DBadScaleDef);
    if (!point0 || !point1 || !point2 || !point3) return fail(eTrafo3DBadScaleDef);

    const ZoVector p0 = point0->GetAsVector();
    const ZoVector p1 = point1->GetAsVector();
    const ZoVector p2 = point2->GetAsVector();
    if (IsCollinear(p0, p1, p2)) return fail(eTrafo3DNoSolution);
    ZoMatrix frame(3, 3);
    unvect(p0, p1, p2, &frame);
    ZoMatrix axes(3, 3);
    if (!ArrangeAxes(frame, def.axisMode, def.planeMode, axes)) return fail(eTrafo3DNoSolution);

    double mean = fixedScale;
    double own[kNScale] = {};
    const auto counts = [&](int i) { return fixedScale == 0.0 && distances[i] && distances[i].length != 0.0; };
    if (fixedScale == 0.0) {
        double sum = 0.0;
        int count = 0;
        for (int i = 0; i < kNScale; ++i) {
            if (!counts(i)) continue;
            own[i] = CalcScale(distances[i].a->GetAsVector(), distances[i].b->GetAsVector(), distances[i].length);
            sum += own[i];
            ++count;
        }
        mean = count > 0 ? sum / count : 1.0;
    }
    // Not-a-number among the coordinates or distances, or distances of both signs that cancel.
    if (!std::isfinite(mean) || mean == 0.0) return fail(eTrafo3DBadScaleDef);
    const ZoVector centre = CalcMean(*list);
    const ZoVector target = ZoVector(def.x, def.y, def.z) - axes * (point3->GetAsVector() - centre) * mean;
    if (!std::isfinite(target.Abs())) return fail(eTrafo3DNoSolution);
    for (int i = 0; i < kNScale; ++i) {
        if (!counts(i) || !(std::fabs(mean - own[i]) / mean > maxDeviation)) continue;
        scaleCheck[i].exceeded = true;
        status = eTrafo3DScaleDeviation;
    }

    scale = mean;
    rotation = axes;
    sourceOrigin = centre;
    targetOrigin = target;

    const ZoMatrix m = GetAsMatrix();
    for (int i = 0; i < kNScale; ++i) {
        if (!distances[i]) continue;
        ZoPoint a(*distances[i].a);
        ZoPoint b(*distances[i].b);
        m.PTrans3D(&a);
        m.PTrans3D(&b);
        ZoScaleCheck& check = scaleCheck[i];
        const double known = distances[i].length;
        check.difference = a.Distance(b) - known;
        if (check.difference != 0.0 && known != 0.0) check.percent = check.difference / known * 100.0;
        if (check.exceeded && std::fabs(check.percent) > 0.0) lastScaleCheck = i;
    }
    return true;
}

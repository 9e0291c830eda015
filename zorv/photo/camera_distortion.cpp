#include <cmath>
#include <limits>

#include "zorv/photo/camera.h"
#include "zorv/photo/camera_pair.h"
#include "zorv/photo/classic_distortion.h"
#include "zorv/photo/inverse_table.h"
#include "zorv/points/point_list.h"

using zorv::detail::ClassicDistortion;

double ZoCamera::Calcd(double x, double y) const {
    const double rho = x * x + y * y;
    const double r0Pow2 = r0 * r0;
    return a1 * rho - a1 * r0Pow2 + a2 * (rho * rho) - a2 * (r0Pow2 * r0Pow2);
}

double ZoCamera::CalcdrA1A2(double r) const {
    return ClassicDistortion(*this).RelativeAt(r);
}

double ZoCamera::CalcdrA1A2A3(double r) const {
    if (r == 0.0) return 0.0;
    const double rPow2 = r * r;
    const double r0Pow2 = r0 * r0;
    return CalcdrA1A2(r) + a3 * (rPow2 * rPow2 * rPow2 - r0Pow2 * r0Pow2 * r0Pow2);
}

void ZoCamera::CalcDistortA1A2(double& dx, double& dy, double x, double y) const {
    const double dr = CalcdrA1A2(x, y);
    dx = -x * dr;
    dy = -y * dr;
}

double ZoCamera::Calc_drForGraph(double x, double y) const {
    if (HasFormula()) return CalcdrA1A2(x, y);
    if (!camPair) return 0.0;
    const double before = x;
    camPair->Adjust(&x, &y);
    return x - before;
}

bool ZoCamera::Adjust(double* x, double* y) const {
    if (id == 0) return false;
    if (camPair) return camPair->Adjust(x, y);
    if (!HasFormula()) return false;
    ClassicDistortion(*this).Adjust(*x, *y);
    return true;
}

bool ZoCamera::Adjust(ZoPoint* point) const {
    return point && Adjust(&point->x, &point->y);
}

bool ZoCamera::Adjust(ZoPointList* list) const {
    if (!list) return false;
    if (id == 0 || camPair || !HasFormula()) {
        for (ZoPoint* point = list->First(); point; point = point->Next())
            Adjust(point);
        return true;
    }
    const ClassicDistortion distortion(*this);
    for (ZoPoint* point = list->First(); point; point = point->Next())
        distortion.Adjust(point->x, point->y);
    return true;
}

bool ZoCamera::InvAdjust(double* x, double* y) const {
    if (id == 0) return false;
    if (camPair) return camPair->InvAdjust(x, y);
    if (HasFormula()) return InvertByTable(x, y);
    if (IsPinholeCamera()) return true;
    return InvertByIteration(x, y) || InvertByTable(x, y);
}

bool ZoCamera::InvAdjust(ZoPoint* point) const {
    return point && InvAdjust(&point->x, &point->y);
}

bool ZoCamera::InvAdjust(ZoPointList* list) const {
    if (!list) return false;
    for (ZoPoint* point = list->First(); point; point = point->Next())
        InvAdjust(point);
    return true;
}

void ZoCamera::DeleteInvAdjustTables() {
    ZoInvAdjustTable::DeleteAll();
}

bool ZoCamera::InvertByTable(double* x, double* y) const {
    const ZoInvAdjustTable* table = ZoInvAdjustTable::For(*this);
    const double givenX = *x;
    const double givenY = *y;
    if (!table || !table->Invert(x, y)) return false;
    RememberInversion(givenX, givenY, *x, *y);
    return true;
}

// Fixed-point iteration on the radial polynomial. It begins at the answer to a neighbouring point.
bool ZoCamera::InvertByIteration(double* x, double* y) const {
    constexpr double kNeighbour = 0.5;    // mm^2
    constexpr double kConverged = 1e-14;  // mm^2
    constexpr int kPasses = 25;

    const double givenX = *x;
    const double givenY = *y;
    const double fromLastX = givenX - lastInX;
    const double fromLastY = givenY - lastInY;
    const bool isNeighbour = std::fabs(fromLastX * fromLastX - fromLastY * fromLastY) <= kNeighbour;
    double u = isNeighbour ? lastOutX : givenX;
    double v = isNeighbour ? lastOutY : givenY;

    const double r0Pow2 = r0 * r0;
    double best = std::numeric_limits<double>::max();
    for (int pass = 0; pass < kPasses && !(best <= kConverged); ++pass) {
        const double rho = u * u + v * v;
        const double d = a2 * (rho * rho) + (a1 * rho - a1 * r0Pow2) - a2 * (r0Pow2 * r0Pow2);
        const double nextU = (u - xh) * d + givenX;
        const double nextV = (v - yh) * d + givenY;
        const double e = (u - nextU) * (u - nextU) + (v - nextV) * (v - nextV);
        if (e > best) return false;
        best = e;
        u = nextU;
        v = nextV;
    }
    if (!(best < kConverged)) return false;
    RememberInversion(givenX, givenY, u, v);
    *x = xh + u;
    *y = yh + v;
    return true;
}

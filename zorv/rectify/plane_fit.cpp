#include "zorv/rectify/plane_fit.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numeric>
#include <utility>
#include <vector>

#include "zorv/core/log_file.h"
#include "zorv/core/sort_helper.h"
#include "zorv/math/matrix.h"

namespace {

constexpr double kSamePlace = 1e-10;      // per coordinate
constexpr double kCollinear = 0.9999996;  // largest cosine of two directions that span a plane
constexpr int kDistanceLine = 4;          // of the matrix of points

ZoVector Column(const ZoMatrix& columns, int c) {
    return {columns[1][c], columns[2][c], columns[3][c]};
}

void SetColumn(ZoMatrix& columns, int c, const ZoVector& point) {
    for (int line = 1; line <= 3; ++line)
        columns[line][c] = point[line];
}

void SetColumn(ZoMatrix& columns, int c, const ZoPoint& point) {
    columns[1][c] = point.x;
    columns[2][c] = point.y;
    columns[3][c] = point.z;
}

bool IsApart(const ZoVector& difference) {
    return std::fabs(difference[1]) >= kSamePlace || std::fabs(difference[2]) >= kSamePlace ||
           std::fabs(difference[3]) >= kSamePlace;
}

bool IsFinite(const ZoVector& v) {
    return std::isfinite(v[1]) && std::isfinite(v[2]) && std::isfinite(v[3]);
}

bool HasFinitePoints(const ZoMatrix& columns) {
    const auto isFinite = [&columns](int line) {
        const double* const first = columns[line] + 1;
        return std::all_of(first, first + columns.GetSpalten(), [](double value) { return std::isfinite(value); });
    };
    return isFinite(1) && isFinite(2) && isFinite(3);
}

void SetDifferences(ZoPoint& point, double dx, double dy, double dz) {
    point.dx = dx;
    point.dy = dy;
    point.dz = dz;
}

/// Holds the filter back for the length of a computation.
class WithoutFilter {
  public:
    explicit WithoutFilter(std::shared_ptr<ZoFilter>& of) : filter(of), held(std::move(of)) { filter.reset(); }
    ~WithoutFilter() { filter = std::move(held); }
    WithoutFilter(const WithoutFilter&) = delete;
    WithoutFilter& operator=(const WithoutFilter&) = delete;

  private:
    std::shared_ptr<ZoFilter>& filter;
    std::shared_ptr<ZoFilter> held;
};

}  // namespace

const char* ZoCalcPlane::GetZoPlaneStatusAsText() const {
    switch (status) {
        case StatusOk:
            return "ZoCalcPlane::StatusOk";
        case TooLessPoints:
            return "ZoCalcPlane::TooLessPoints";
        case BadPointDistrib:
            return "ZoCalcPlane::BadPointDistrib";
        case BadApproximate:
            return "ZoCalcPlane::BadApproximate";
    }
    return "ZoCalcPlane::Unknown Status";
}

void ZoCalcPlane::SetCooFilter(ZoFilter* filter) {
    if (filter != cooFilter.get()) cooFilter.reset(filter);
}

bool ZoCalcPlane::CalcPlane(ZoPoint* p1, ZoPoint* p2, ZoPoint* p3, bool collinear) {
    ZoPointList points;
    for (const ZoPoint* point : {p1, p2, p3}) {
        if (point) points.Add(*point);
    }
    usedPoints.Destroy();
    points.MoveTo(&usedPoints);
    acceptCollinear = collinear;
    return CalcZoPlane(&usedPoints);
}

bool ZoCalcPlane::CalcPlaneFromFilteredPoints(ZoPointList* list, bool storeResiduals, bool collinear) {
    acceptCollinear = collinear;
    std::vector<const ZoPoint*> taken;
    for (ZoPoint* point = list ? list->First() : nullptr; point; point = point->Next()) {
        SetDifferences(*point, 0.0, 0.0, 0.0);
        if (!cooFilter || cooFilter->Test(point)) taken.push_back(point);
    }
    // As CalcZoPlane on copies of the points, but these are made last, with their residuals at once: with many points
    // the walks through memory are what takes the time. The list may be one of this object's own.
    ZoMatrix columns(4, static_cast<int>(taken.size()));
    int c = 0;
    for (const ZoPoint* point : taken)
        SetColumn(columns, ++c, *point);
    const bool found = CalcColumns(columns);
    ZoPointList used;
    c = 0;
    for (const ZoPoint* point : taken) {
        ZoPoint* copy = used.Add(*point);
        if (found) TakeDistance(*copy, columns[kDistanceLine][++c]);
    }
    usedPoints.Destroy();
    used.MoveTo(&usedPoints);
    if (!found) return false;
    Project(usedPoints);
    if (storeResiduals && list) CalcResiduals(list);
    return true;
}

bool ZoCalcPlane::CalcUnfiltered(ZoPointList& points) {
    const WithoutFilter scope(cooFilter);
    return CalcPlaneFromFilteredPoints(&points, true, false);
}

bool ZoCalcPlane::CalcParallelPlane(int axis) {
    static constexpr struct {
        int axis;
        double second[3];
        double third[3];
    } kPlanes[] = {
        {4, {1, 0, 0}, {0, 1, 0}},
        {5, {0, 1, 0}, {0, 0, 1}},
        {6, {1, 0, 0}, {0, 0, 1}},
    };
    ZoPointList points;
    points.Add(ZoPoint(1, 0.0, 0.0, 0.0, 0));
    for (const auto& [known, second, third] : kPlanes) {
        if (known != axis) continue;
        points.Add(ZoPoint(2, second[0], second[1], second[2], 0));
        points.Add(ZoPoint(3, third[0], third[1], third[2], 0));
    }
    return CalcUnfiltered(points);
}

bool ZoCalcPlane::CalcNormalPlane(int axis, const ZoPoint& a, const ZoPoint& b) {
    ZoCalcPlane parallel;
    parallel.CalcParallelPlane(axis);
    return CalcNormalPlane(&parallel.plane, a, b);
}

bool ZoCalcPlane::CalcNormalPlane(const ZoPlane* normalTo, const ZoPoint& a, const ZoPoint& b) {
    if (!normalTo) return false;
    ZoPointList points;
    points.Add(a);
    points.Add(b);
    points.Add(ZoPoint(0, a.x + normalTo->A(), a.y + normalTo->B(), a.z + normalTo->C(), 0));
    return CalcUnfiltered(points);
}

bool ZoCalcPlane::CalcZoPlane(ZoPointList* list) {
    ZoMatrix columns(4, list ? list->Count() : 0);
    int c = 0;
    for (const ZoPoint* point = list ? list->First() : nullptr; point; point = point->NextConst())
        SetColumn(columns, ++c, *point);
    if (!CalcColumns(columns)) return false;
    c = 0;
    for (ZoPoint* point = list->First(); point; point = point->Next())
        TakeDistance(*point, columns[kDistanceLine][++c]);
    Project(*list);
    return true;
}

bool ZoCalcPlane::CalcColumns(ZoMatrix& columns) {
    mediumPointDist = 0.0;
    sigma0 = 0.0;
    const int count = columns.GetSpalten();
    if (count < 3) {
        status = TooLessPoints;
        return false;
    }
    // Behind three good points such a one would not stop the approximation, only void the adjustment.
    if (!HasFinitePoints(columns)) {
        status = BadPointDistrib;
        return false;
    }
    if (!Approximate(columns)) return false;
    if (count > 3) {
        Adjust(columns);
        sigma0 = CalcSigma(columns);
    }
    const double* distance = columns[kDistanceLine] + 1;
    mediumPointDist = std::sqrt(std::inner_product(distance, distance + count, distance, 0.0));
    status = StatusOk;
    return true;
}

void ZoCalcPlane::TakeDistance(ZoPoint& point, double distance) const {
    // Three points lie in their plane: no negative zeros for them.
    if (distance == 0.0) return SetDifferences(point, 0.0, 0.0, 0.0);
    SetDifferences(point, distance * plane.A(), distance * plane.B(), distance * plane.C());
}

void ZoCalcPlane::Project(const ZoPointList& list) {
    ZoPointList projections;
    for (const ZoPoint* point = list.First(); point; point = point->NextConst()) {
        ZoPoint* projected = projections.Add(*point);
        projected->x -= point->dx;
        projected->y -= point->dy;
        projected->z -= point->dz;
    }
    pointsInPlane.SetNotify(false);
    pointsInPlane.Destroy();
    projections.MoveTo(&pointsInPlane);
    pointsInPlane.SetNotify(true);
}

// The plane through the first point, the first one apart from it, and the first one off the line through both.
bool ZoCalcPlane::Approximate(const ZoMatrix& columns) {
    const int last = columns.GetSpalten();
    const ZoVector p = Column(columns, 1);
    firstPoint = 0;
    int second = 2;
    while (second <= last && !IsApart(Column(columns, second) - p))
        ++second;
    if (second >= last) {
        status = BadPointDistrib;
        return false;
    }
    secondPoint = second - 1;
    const ZoVector u = Column(columns, second) - p;
    const double lengthOfU = u.Abs();

    int third = second + 1;
    ZoVector w(3);
    bool spans = false;
    for (;; ++third) {
        w = Column(columns, third) - p;
        const double lengths = lengthOfU * w.Abs();
        const double cosine = lengths > kSamePlace ? (u * w) / lengths : 1.0;
        spans = std::fabs(cosine) <= kCollinear && IsApart(w);
        if (spans || third == last) break;
    }
    thirdPoint = third - 1;
    ZoVector normal = u % w;
    const double length = normal.Abs();
    if ((!spans && !acceptCollinear) || !(length > 0.0) || !std::isfinite(length)) {
        status = BadPointDistrib;
        return false;
    }
    const double distance = -(normal * p);
    plane.norm = normal / length;
    plane.d = distance / length;
    return true;
}

int ZoCalcPlane::NormComp() const {
    const double a = std::fabs(plane.A());
    const double b = std::fabs(plane.B());
    const double c = std::fabs(plane.C());
    if (a > b && a > c) return 0;
    return b > a && b > c ? 1 : 2;
}

void ZoCalcPlane::FindEdgePoints(const ZoMatrix& columns, int a, int b, double& amin, double& amax, double& bmin,
                                 double& bmax) const {
    const int count = columns.GetSpalten();
    const auto [lowA, highA] = std::minmax_element(columns[a] + 1, columns[a] + 1 + count);
    const auto [lowB, highB] = std::minmax_element(columns[b] + 1, columns[b] + 1 + count);
    amin = *lowA;
    amax = *highA;
    bmin = *lowB;
    bmax = *highB;
}

// Least squares of the dependent coordinate at three corners of the extent, as barycentric interpolation between them:
// E1 = (amin, bmin), E2 = (amax, bmin), E3 = (amin, bmax). The plane through the three adjusted corners is the result.
void ZoCalcPlane::Adjust(ZoMatrix& columns) {
    static constexpr int kAxes[3][3] = {{2, 3, 1}, {3, 1, 2}, {1, 2, 3}};  // lines of a, b, c by NormComp
    const auto [a, b, c] = kAxes[NormComp()];
    double amin, amax, bmin, bmax;
    FindEdgePoints(columns, a, b, amin, amax, bmin, bmax);
    const double extentA = amax - amin;
    const double extentB = bmax - bmin;

    ZoMatrix n(3, 3);
    ZoVector g(3);
    ZoVector weights(3);
    for (int i = 1; i <= columns.GetSpalten(); ++i) {
        const double s = (columns[a][i] - amin) / extentA;
        const double t = (columns[b][i] - bmin) / extentB;
        weights[1] = 1.0 - s - t;
        weights[2] = s;
        weights[3] = t;
        n.CalcNGLAN(weights);
        g += weights * columns[c][i];
    }
    const ZoVector h = n.Cramer(g);
    // Without an extent, or with points on a line, there is nothing to adjust.
    if (!IsFinite(h)) return;

    const std::array<ZoVector, 3> saved{Column(columns, 1), Column(columns, 2), Column(columns, 3)};
    const std::array<int, 3> savedPoints{firstPoint, secondPoint, thirdPoint};
    const double edges[3][2] = {{amin, bmin}, {amax, bmin}, {amin, bmax}};
    for (int i = 1; i <= 3; ++i) {
        columns[a][i] = edges[i - 1][0];
        columns[b][i] = edges[i - 1][1];
        columns[c][i] = h[i];
    }
    Approximate(columns);
    for (int i = 1; i <= 3; ++i)
        SetColumn(columns, i, saved[static_cast<std::size_t>(i - 1)]);
    firstPoint = savedPoints[0];
    secondPoint = savedPoints[1];
    thirdPoint = savedPoints[2];
}

double ZoCalcPlane::CalcSigma(ZoMatrix& columns) const {
    const int count = columns.GetSpalten();
    double squares = 0.0;
    for (int i = 1; i <= count; ++i) {
        const double distance = plane.FastDist(columns[1][i], columns[2][i], columns[3][i]);
        columns[kDistanceLine][i] = distance;
        squares += distance * distance;
    }
    return count > 3 ? std::sqrt(squares / (count - 3)) : 0.0;
}

void ZoCalcPlane::CalcResiduals(ZoPointList* list) const {
    // The used points stand in the order of the list, so that each is mostly the one behind the last that was found.
    const ZoPoint* used = usedPoints.First();
    std::unique_ptr<ZoSortHelper<ZoPoint>> byId;
    for (ZoPoint* point = list->First(); point; point = point->Next()) {
        const ZoPoint* same = used;
        if (used && used->GetId() == point->GetId()) {
            used = used->NextConst();
        } else {
            if (!byId) byId = std::make_unique<ZoSortHelper<ZoPoint>>(zorv::detail::ForLookups(&usedPoints));
            same = byId->Find(point->GetId());
        }
        if (same) SetDifferences(*point, same->dx, same->dy, same->dz);
    }
    list->NotifyChanged(nullptr, nullptr);
}

void ZoCalcPlane::WriteLogfile(ZoLogfile& log) const {
    static constexpr eZoPointRWMask kKinds[] = {eZoRWId, eZoRWName, eZoRWX, eZoRWY, eZoRWZ, eZoRWDs, eZoRWEnd};
    const TZoFormatTable<eZoPointRWMask> columns(kKinds);
    log << "3D PLANE DEFINITION\n\n\n" << columns << '\n';
    ZoPointList listed(usedPoints);
    listed.SetMask(columns);
    listed.Write(log);
    log << "\n\n";
}

void ZoCalcPlane::WriteLogfile(const std::wstring& fileName) const {
    ZoLogfile log(fileName, 1);
    WriteLogfile(log);
}

#include <algorithm>
#include <cmath>
#include <vector>

#include "zorv/core/large_block_allocator.h"
#include "zorv/orientation/control_lookup.h"
#include "zorv/orientation/similarity.h"

namespace {

/// What takes the place of smaller centred coordinates.
constexpr double kSmallestElement = 1e-10;
constexpr double kSmallestSpread = 1e-10;
constexpr double kScaleTolerance = 1e-10;
constexpr int kScaleSteps = 200;
/// Points whose greatest extent is some 3000 times the second one, or more, lie on a line.
constexpr double kCollinear = 1e-14;

/// Coordinates of a point in the source and in the target system.
struct Common {
    double a[3];
    double b[3];
};

/// May be millions.
using CommonPoints = std::vector<Common, zorv::detail::LargeBlockAllocator<Common>>;

bool IsFollowedByLowerId(const ZoPoint& point) {
    return point.NextConst() && point.NextConst()->GetId() < point.GetId();
}

CommonPoints FindCommonPoints(const ZoSortHelper<ZoPoint>& controls, const ZoPointList* source) {
    CommonPoints common;
    if (!source) return common;
    common.reserve(controls.index.size());
    const auto add = [&common](const ZoPoint& point, const auto* control) {
        if (control) common.push_back({{point.x, point.y, point.z}, {control->x, control->y, control->z}});
    };
    const ZoPoint* point = source->First();
    if (!source->CountMoreThan(static_cast<int>(zorv::detail::ControlLookup::CountOfFew(controls)))) {
        for (; point; point = point->NextConst())
            add(*point, controls.Find(point->GetId()));
        return common;
    }
    // As long as the ids ascend, the partners stand in the order of the points.
    auto partner = controls.index.begin();
    for (; point && !IsFollowedByLowerId(*point); point = point->NextConst()) {
        while (partner != controls.index.end() && partner->first < point->GetId())
            ++partner;
        if (partner != controls.index.end() && partner->first == point->GetId()) add(*point, partner->second);
    }
    if (!point) return common;
    const zorv::detail::ControlTable<zorv::detail::ControlPosition> table(controls);
    zorv::detail::ControlWalk walk(table);
    for (; point; point = point->NextConst())
        add(*point, walk.FindValue(*point));
    return common;
}

/// The mean of the points in both systems. It is summed from the first point on, which keeps the digits of coordinates
/// far from the origin.
Common CalcMean(const CommonPoints& common) {
    const Common first = common.front();
    Common sum{};
    for (const Common& point : common) {
        for (int i = 0; i < 3; ++i) {
            sum.a[i] += point.a[i] - first.a[i];
            sum.b[i] += point.b[i] - first.b[i];
        }
    }
    const auto count = static_cast<double>(common.size());
    Common mean{};
    for (int i = 0; i < 3; ++i) {
        mean.a[i] = first.a[i] + sum.a[i] / count;
        mean.b[i] = first.b[i] + sum.b[i] / count;
    }
    return mean;
}

inline double Centred(double coordinate, double mean) {
    const double difference = coordinate - mean;
    return std::fabs(difference) < kSmallestElement ? kSmallestElement : difference;
}

/// Sums over the centred points.
struct Moments {
    double squares = 0.0;  // of the source coordinates
    double products[9]{};  // target times transposed source, row by row
};

Moments CalcMoments(const CommonPoints& common, const Common& mean) {
    double squares[3]{};
    double products[3][3]{};
    for (const Common& point : common) {
        double a[3];
        double b[3];
        for (int i = 0; i < 3; ++i) {
            a[i] = Centred(point.a[i], mean.a[i]);
            b[i] = Centred(point.b[i], mean.b[i]);
        }
        for (int j = 0; j < 3; ++j) {
            squares[j] += a[j] * a[j];
            for (int i = 0; i < 3; ++i)
                products[i][j] += b[i] * a[j];
        }
    }
    Moments moments;
    moments.squares = squares[0] + squares[1] + squares[2];
    for (int i = 0; i < 9; ++i)
        moments.products[i] = products[i / 3][i % 3];
    return moments;
}

/// Rows of cofactors: determinant times transposed inverse, where there is one.
ZoMatrix CalcCofactors(const ZoMatrix& c) {
    ZoMatrix cofactors(3, 3);
    for (int i = 1; i <= 3; ++i) {
        const int i1 = i % 3 + 1;
        const int i2 = i1 % 3 + 1;
        for (int j = 1; j <= 3; ++j) {
            const int j1 = j % 3 + 1;
            const int j2 = j1 % 3 + 1;
            cofactors[i][j] = c[i1][j1] * c[i2][j2] - c[i1][j2] * c[i2][j1];
        }
    }
    return cofactors;
}

/// The sum of the signed singular values of a matrix with the determinant d, from the invariants of its square: the
/// fixed point of s = sqrt(t1 + 2 sqrt(t2 + 2 d s)). False where a root has no real value, where the inner one
/// vanishes since there is but one singular value, and without convergence.
bool FindScale(double t1, double t2, double d, double& scale) {
    double s = 1.0;
    for (int step = 0; step <= kScaleSteps; ++step) {
        const double inner = t2 + 2.0 * d * s;
        if (!(inner >= 0.0)) return false;
        const double square = t1 + 2.0 * std::sqrt(inner);
        if (!(square >= 0.0)) return false;
        const double former = s;
        s = std::sqrt(square);
        if (std::fabs(s - former) <= kScaleTolerance) {
            scale = s;
            return t2 + 2.0 * d * s > kCollinear * t1 * t1;
        }
    }
    return false;
}

}  // namespace

bool ZoTrafo3d::CalcByControlPoints(const ZoPointList* controls, const ZoPointList* source, int minPoints,
                                    bool unitScale) {
    return CalcByControlPoints(ZoSortHelper<ZoPoint>(zorv::detail::ForLookups(controls)), source, minPoints, unitScale);
}

bool ZoTrafo3d::CalcByControlPoints(const ZoSortHelper<ZoPoint>& controls, const ZoPointList* source, int minPoints,
                                    bool unitScale) {
    status = eTrafo3DTooFewPoints;
    commonCount = 0;
    const CommonPoints common = FindCommonPoints(controls, source);
    commonCount = static_cast<int>(common.size());
    if (common.empty() || commonCount < minPoints) return false;

    status = eTrafo3DNoSolution;
    const Common mean = CalcMean(common);
    sourceOrigin = ZoVector(mean.a[0], mean.a[1], mean.a[2]);
    targetOrigin = ZoVector(mean.b[0], mean.b[1], mean.b[2]);
    const Moments moments = CalcMoments(common, mean);
    if (moments.squares < kSmallestSpread) return false;

    const ZoMatrix c = ZoMatrix(moments.products, 3, 3) / moments.squares;
    const ZoMatrix cofactors = CalcCofactors(c);
    const double d = c[1][1] * cofactors[1][1] + c[1][2] * cofactors[1][2] + c[1][3] * cofactors[1][3];
    const ZoMatrix g = c.Transpose() * c;
    const double t1 = g[1][1] + g[2][2] + g[3][3];
    const double t2 = g[1][1] * g[2][2] + g[1][1] * g[3][3] + g[2][2] * g[3][3] - g[1][2] * g[1][2] -
                      g[1][3] * g[1][3] - g[2][3] * g[2][3];
    if (!FindScale(t1, t2, d, scale)) return false;

    // c = r p with the positive root p of g, and by the theorem of Cayley and Hamilton for p its inverse is a
    // polynomial of g; the cofactors stand for the inverse of c, which need not exist.
    const double sigma = unitScale ? 1.0 : scale;
    const double f = d / sigma - 0.5 * (sigma * sigma - t1);
    if (f == 0.0) return false;  // only where sigma is not the fitted scale
    ZoMatrix shifted(g);
    for (int i = 1; i <= 3; ++i)
        shifted[i][i] -= 0.5 * (sigma * sigma + t1);
    rotation = (c * shifted - cofactors * sigma) * (1.0 / f) * (1.0 / sigma);
    status = eTrafo3DOk;
    return true;
}

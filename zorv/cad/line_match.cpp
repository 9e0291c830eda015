#include "zorv/cad/line_match.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <utility>

#include "zorv/math/matrix.h"
#include "zorv/math/solvers.h"

namespace {

constexpr double kSmallGap = 0.05;  // of the shorter line

/// The end that is farther from the result; the first of a tie.
const ZoPoint3d& Staying(const ZoPoint3d& result, const ZoPoint3d& a, const ZoPoint3d& b) {
    return result.Distance(b) > result.Distance(a) ? b : a;
}

}  // namespace

ZoCad2LinesMatch::ZoCad2LinesMatch(const ZoPoint3d& firstOuter, const ZoPoint3d& firstInner,
                                   const ZoPoint3d& secondInner, const ZoPoint3d& secondOuter, double firstOffset,
                                   double secondOffset, double angle, eMatchMode mode)
    : p1(firstOuter), p2(firstInner), p3(secondInner), p4(secondOuter), offset1(firstOffset), offset2(secondOffset) {
    const double tolerance = std::cos((90.0 - angle) / 180.0 * std::numbers::pi);
    // The component that a plane mode leaves out: z, y or x.
    const bool inPlane = mode == eMatchXY || mode == eMatchXZ || mode == eMatchYZ;
    const int axis = 3 - mode;
    std::array<double, 4> saved{};
    if (inPlane) {
        const std::array<ZoPoint3d*, 4> ends{&p1, &p2, &p3, &p4};
        for (std::size_t i = 0; i < ends.size(); ++i)
            saved[i] = std::exchange((*ends[i])[axis], 0.0);
    }
    valid = Calc(tolerance);
    if (inPlane) {
        result1[axis] = result2[axis] = (saved[1] + saved[2]) / 2.0;
        base1[axis] = saved[0];
        base2[axis] = saved[3];
    }
}

bool ZoCad2LinesMatch::Calc(double tolerance) {
    valid = false;
    parallel = false;
    const ZoVector3d d1 = Normalized(p2 - p1);
    const ZoVector3d d2 = Normalized(p4 - p3);
    const ZoVector3d n = d1 % d2;
    const double sine = n.Norm();
    if (std::isnan(sine)) return false;
    if (!(sine > tolerance)) {
        MatchParallel(d1, d2);
        return true;
    }

    // p1 + t1 d1 and p3 + t2 d2 are closest where their difference is a multiple of n.
    ZoMatrix system(3, 3);
    ZoMatrix right(3, 1);
    const ZoVector3d between = p3 - p1;
    for (int line = 1; line <= 3; ++line) {
        system[line][1] = n[line - 1];
        system[line][2] = d1[line - 1];
        system[line][3] = -d2[line - 1];
        right[line][1] = between[line - 1];
    }
    if (GaussLoeserRelMax(system, right) != 0) return false;

    const auto match = [](const ZoPoint3d& from, const ZoPoint3d& to, const ZoVector3d& d, double t, double offset,
                          ZoPoint3d& base, ZoPoint3d& result) {
        result = from + t * d;
        base = Staying(result, from, to);
        const double sign = result.Distance(from) <= result.Distance(to) ? -1.0 : 1.0;
        result = from + (t + sign * offset) * d;
    };
    match(p1, p2, d1, right[2][1], offset1, base1, result1);
    match(p3, p4, d2, right[3][1], offset2, base2, result2);
    return true;
}

void ZoCad2LinesMatch::MatchParallel(const ZoVector3d& d1, const ZoVector3d& d2) {
    const std::pair<const ZoPoint3d*, const ZoPoint3d*> pairs[] = {{&p1, &p3}, {&p1, &p4}, {&p2, &p3}, {&p2, &p4}};
    const auto [a, b] = *std::min_element(std::begin(pairs), std::end(pairs), [](const auto& x, const auto& y) {
        return x.first->Distance(*x.second) < y.first->Distance(*y.second);
    });
    const ZoPoint3d middle = a->MiddlePoint(*b);
    result1 = p1 + d1.dot(middle - p1) * d1;
    result2 = p3 + d2.dot(middle - p3) * d2;
    base1 = Staying(result1, p1, p2);
    base2 = Staying(result2, p3, p4);
    parallel = true;
}

int ZoCad2LinesMatch::ValueDistance() const {
    const double gap = Distance();
    const double shorter = std::min(base1.Distance(result1), base2.Distance(result2));
    if (gap == 0.0 || shorter == 0.0) return 0;
    return gap / shorter <= kSmallGap ? 1 : 2;
}

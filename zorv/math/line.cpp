#include "zorv/math/line.h"

#include <algorithm>
#include <array>
#include <utility>

#include "zorv/math/point3d.h"

void ZoLine::Adjust() {
    if (start.x > end.x || start.y > end.y) std::swap(start, end);
}

bool ZoIntersect(const ZoLine& l1, const ZoLine& l2) {
    ZoLine a = l1;
    ZoLine b = l2;
    a.Adjust();
    b.Adjust();
    const auto parted = [](const ZoLine& line, const ZoLine& other) {
        return ZoCounterClockwise(line.start, line.end, other.end) *
                   ZoCounterClockwise(line.start, line.end, other.start) >=
               1;
    };
    return !parted(a, b) && !parted(b, a);
}

void ZoIntervall(double& lo, double& hi, double a1, double a2, double b1, double b2) {
    if (a1 > a2) std::swap(a1, a2);
    if (b1 > b2) std::swap(b1, b2);
    struct Bound {
        double value;
        bool isStart;
    };
    std::array<Bound, 4> bounds{{{a1, true}, {a2, false}, {b1, true}, {b2, false}}};
    std::stable_sort(bounds.begin(), bounds.end(), [](const Bound& a, const Bound& b) { return a.value < b.value; });
    const bool apart = !bounds[1].isStart && bounds[2].isStart;
    lo = apart ? 0.0 : bounds[1].value;
    hi = apart ? 0.0 : bounds[2].value;
}

int ZoCounterClockwise(const ZoPoint& p0, const ZoPoint& p1, const ZoPoint& p2) {
    return CounterClockwise(ZoPoint3d(p0.x, p0.y, 0.0), ZoPoint3d(p1.x, p1.y, 0.0), ZoPoint3d(p2.x, p2.y, 0.0));
}

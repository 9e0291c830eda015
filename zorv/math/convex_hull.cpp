#include "zorv/math/convex_hull.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <optional>

#include "zorv/core/number_cast.h"
#include "zorv/math/bounding_box2d.h"

namespace {

using Points = std::vector<ZoPoint2d>;

/// Largest group size of the last round of Chan's guesses, 2^(2^4).
constexpr std::size_t kLargestGroup = 65536;

/// Turns and comparisons after which the guessing gives way to the direct hull, so that large inputs end too.
constexpr std::size_t kWorkLimit = 20'000'000;

/// +1 for a clockwise turn p, q, r (y up), -1 for the other, 0 for a cross product below 1.
int Orientation(const ZoPoint2d& p, const ZoPoint2d& q, const ZoPoint2d& r) {
    const double cross = (q.y - p.y) * (r.x - q.x) - (r.y - q.y) * (q.x - p.x);
    const int truncated = zorv::detail::SaturatedInt(cross);
    return truncated > 0 ? 1 : truncated < 0 ? -1 : 0;
}

/// Adds the sorted points to a chain that turns clockwise only; no point twice in a row.
void AppendChain(const Points& sorted, Points& chain) {
    for (const ZoPoint2d& point : sorted) {
        while (chain.size() >= 2 && Orientation(chain[chain.size() - 2], chain.back(), point) != 1)
            chain.pop_back();
        if (chain.empty() || !(chain.back() == point)) chain.push_back(point);
    }
}

/// Graham's scan over the points sorted around the origin of the coordinates. A hull of more than one distinct point
/// repeats its first point at the end.
Points GroupHull(Points group) {
    if (group.size() <= 1) return group;
    const ZoPoint2d origin = ZoPoint2d::kOrigin;
    // Truncated turns are no strict weak order; an insertion sort takes any comparison and groups are small. Large
    // groups are merged stably, which is as safe.
    std::stable_sort(group.begin(), group.end(), [&origin](const ZoPoint2d& a, const ZoPoint2d& b) {
        const int turn = Orientation(origin, a, b);
        return turn != 0 ? turn > 0 : a.distanceToSq(origin) < b.distanceToSq(origin);
    });
    Points hull;
    AppendChain(group, hull);
    std::reverse(group.begin(), group.end());
    Points back;
    AppendChain(group, back);
    if (!back.empty()) hull.insert(hull.end(), back.begin() + 1, back.end());
    return hull;
}

/// Binary search for the vertex where a tangent from p touches the hull.
std::size_t Tangent(const Points& v, const ZoPoint2d& p) {
    const std::size_t n = v.size();
    std::size_t l = 0;
    std::size_t r = n;
    int before = Orientation(p, v[0], v[n - 1]);
    int after = Orientation(p, v[0], v[1 % n]);
    while (l < r) {
        const std::size_t c = (l + r) / 2;
        const int cb = Orientation(p, v[c], v[(c + n - 1) % n]);
        const int ca = Orientation(p, v[c], v[(c + 1) % n]);
        const int cs = Orientation(p, v[l], v[c]);
        if (cb != -1 && ca != -1) return c;
        if ((cs == 1 && (after == -1 || before == after)) || (cs == -1 && cb == -1)) {
            r = c;
        } else {
            l = c + 1;
        }
        before = -ca;
        after = Orientation(p, v[l % n], v[(l + 1) % n]);
    }
    return l % n;
}

/// The start of the path: the lowest point of all groups. Within a group the running minimum is truncated.
std::pair<std::size_t, std::size_t> LowestOf(const std::vector<Points>& hulls) {
    std::pair<std::size_t, std::size_t> start{0, 0};
    for (std::size_t h = 0; h < hulls.size(); ++h) {
        std::size_t lowest = 0;
        int minimum = zorv::detail::SaturatedInt(hulls[h][0].y);
        for (std::size_t i = 1; i < hulls[h].size(); ++i) {
            if (hulls[h][i].y < minimum) {
                minimum = zorv::detail::SaturatedInt(hulls[h][i].y);
                lowest = i;
            }
        }
        if (h == 0 || hulls[h][lowest].y < hulls[start.first][start.second].y) start = {h, lowest};
    }
    return start;
}

/// One round with groups of m points: a gift wrapping over the group hulls that ends after m steps. Empty when the
/// path did not close.
Points Wrap(const Points& points, std::size_t m) {
    std::vector<Points> hulls;
    for (std::size_t from = 0; from < points.size(); from += m) {
        const auto begin = points.begin() + static_cast<std::ptrdiff_t>(from);
        const auto size = static_cast<std::ptrdiff_t>(std::min(m, points.size() - from));
        hulls.push_back(GroupHull(Points(begin, begin + size)));
    }
    const auto start = LowestOf(hulls);
    auto last = start;
    Points path{hulls[start.first][start.second]};
    for (std::size_t step = 0; step < m; ++step) {
        const ZoPoint2d p = hulls[last.first][last.second];
        std::pair<std::size_t, std::size_t> candidate{last.first, (last.second + 1) % hulls[last.first].size()};
        for (std::size_t h = 0; h < hulls.size(); ++h) {
            if (h == last.first) continue;
            const std::size_t tangent = Tangent(hulls[h], p);
            const ZoPoint2d& q = hulls[candidate.first][candidate.second];
            const ZoPoint2d& r = hulls[h][tangent];
            const int turn = Orientation(p, q, r);
            if (turn == -1 || (turn == 0 && p.distanceToSq(r) > p.distanceToSq(q))) candidate = {h, tangent};
        }
        if (candidate == start) return path;
        last = candidate;
        path.push_back(hulls[last.first][last.second]);
    }
    return {};
}

/// The exact hull, clockwise from its lowest point (the leftmost of several), by Andrew's monotone chain.
Points MonotoneChain(Points points) {
    std::sort(points.begin(), points.end(),
              [](const ZoPoint2d& a, const ZoPoint2d& b) { return a.y != b.y ? a.y < b.y : a.x < b.x; });
    Points hull;
    const auto append = [&hull](const ZoPoint2d& point, std::size_t kept) {
        const auto turn = [&] {
            const ZoVector2d a = hull.back() - hull[hull.size() - 2];
            return a.crossProduct(point - hull.back());
        };
        while (hull.size() > kept && turn() >= 0.0)
            hull.pop_back();
        hull.push_back(point);
    };
    for (const ZoPoint2d& point : points)
        append(point, 1);
    const std::size_t upward = hull.size();
    for (std::size_t i = points.size() - 1; i-- > 0;)
        append(points[i], upward);
    if (hull.size() > 1) hull.pop_back();
    return hull;
}

/// Whether the corner at `point` is not acute, which on one line means: between the others. Truncated as turns are.
bool LiesBetween(const ZoPoint2d& before, const ZoPoint2d& point, const ZoPoint2d& after) {
    return zorv::detail::SaturatedInt((before - point).dotProduct(after - point)) <= 0;
}

/// Leaves out the vertices at which the hull goes straight on under the truncated orientation, and repeated points.
Points WithoutCollinear(Points hull) {
    for (bool changed = true; changed && hull.size() > 2;) {
        changed = false;
        for (std::size_t i = 0; i < hull.size() && hull.size() > 2;) {
            const std::size_t n = hull.size();
            const ZoPoint2d& before = hull[(i + n - 1) % n];
            const ZoPoint2d& after = hull[(i + 1) % n];
            // The lowest point stays: the result starts there.
            const bool straight = Orientation(before, hull[i], after) != 1 && LiesBetween(before, hull[i], after);
            if (i > 0 && (hull[i] == before || straight)) {
                hull.erase(hull.begin() + static_cast<std::ptrdiff_t>(i));
                changed = true;
            } else {
                ++i;
            }
        }
    }
    if (hull.size() == 2 && hull[0] == hull[1]) hull.pop_back();
    return hull;
}

/// Whether the path is a hull of the points: no vertex twice, no point outside any of its edges or more than a unit
/// beyond its extent. Edges on one line have no outside; a path along them has two vertices, if it is longer than a
/// unit.
bool IsHull(const Points& path, const Points& exactHull) {
    ZoBoundingBox2d extent;
    bool turns = false;
    for (std::size_t i = 0; i < path.size(); ++i) {
        const ZoPoint2d& a = path[i];
        const ZoPoint2d& b = path[(i + 1) % path.size()];
        extent.Update(a.x, a.y);
        turns = turns || Orientation(a, b, path[(i + 2) % path.size()]) != 0;
        for (std::size_t j = 0; j < i; ++j) {
            if (path[i] == path[j]) return false;
        }
        for (const ZoPoint2d& point : exactHull) {
            if (path.size() > 1 && Orientation(a, b, point) == -1) return false;
        }
    }
    if (!turns && path.size() > 2 && std::max(extent.GetWidth(), extent.GetHeight()) >= 1.0) return false;
    extent.Adjust(-1.0, 1.0, -1.0, 1.0);
    return std::all_of(exactHull.begin(), exactHull.end(),
                       [&extent](const ZoPoint2d& point) { return extent.Overlap(point.x, point.y, true); });
}

}  // namespace

std::vector<ZoPoint2d> ChansConvexHullAlgorithm(const std::vector<ZoPoint2d>& input) {
    Points points;
    points.reserve(input.size());
    std::copy_if(input.begin(), input.end(), std::back_inserter(points),
                 [](const ZoPoint2d& p) { return std::isfinite(p.x) && std::isfinite(p.y); });
    if (points.empty()) return {};

    // Chan guesses the size of the hull: each round of guesses tries 1, 2, ... up to a limit that is squared from
    // round to round. A guess gives the same path in every round, so each is tried once.
    const Points exact = MonotoneChain(points);
    const std::size_t n = points.size();
    std::size_t largest = 2;
    for (std::size_t round = 1; round < n && round <= 4; ++round)
        largest *= largest;
    const std::size_t limit = std::min(std::min(largest, kLargestGroup) - 1, n + 1);
    std::size_t work = 0;
    for (std::size_t m = 1; m <= limit && work < kWorkLimit; ++m) {
        Points path = Wrap(points, m);
        if (!path.empty() && IsHull(path, exact)) return path;
        work += n * static_cast<std::size_t>(2 + std::log2(m)) + n;
    }
    // Where no guess ends in a hull (a start that is no vertex, a tangent that goes astray) the hull itself counts.
    return WithoutCollinear(exact);
}

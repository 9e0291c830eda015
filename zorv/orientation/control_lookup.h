#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

#include "zorv/core/sort_helper.h"
#include "zorv/points/point_list.h"

namespace zorv::detail {

/// A helper over a list that is only read: the helper hands out what it was given and changes nothing.
inline ZoSortHelper<ZoPoint> HelperOver(const ZoPointList* list) {
    return ZoSortHelper<ZoPoint>(const_cast<ZoPointList*>(list));
}

/// The points of a helper in one block of memory, by ascending id, for about as many lookups as there are points.
///
/// The lists of a survey are mostly in the order of their ids; then the point asked for next stands next. Others are
/// found through buckets of nearby ids, several times faster than through the nodes of the helper's map.
class ControlTable {
  public:
    static constexpr std::size_t kNone = static_cast<std::size_t>(-1);

    explicit ControlTable(const ZoSortHelper<ZoPoint>& helper) {
        entries.reserve(helper.index.size());
        for (const auto& [id, point] : helper.index) {
            if (point) entries.push_back({id, point});
        }
    }

    std::size_t Size() const { return entries.size(); }
    ZoPoint* PointAt(std::size_t place) const { return entries[place].point; }

    /// The place of the point of that id, or kNone.
    std::size_t Find(std::uint32_t id) {
        if (next < entries.size() && entries[next].id == id) return next++;
        if (entries.empty() || id < entries.front().id || id > entries.back().id) return kNone;
        if (buckets.empty()) MakeBuckets();
        const std::size_t bucket = (id - entries.front().id) >> shift;
        const auto end = At(buckets[bucket + 1]);
        const auto found =
            std::lower_bound(At(buckets[bucket]), end, id, [](const Entry& e, std::uint32_t i) { return e.id < i; });
        next = static_cast<std::size_t>(found - entries.begin());
        return found == end || found->id != id ? kNone : next++;
    }

  private:
    struct Entry {
        std::uint32_t id;
        ZoPoint* point;
    };

    std::vector<Entry>::const_iterator At(std::uint32_t place) const {
        return entries.begin() + static_cast<std::ptrdiff_t>(place);
    }

    /// As many buckets as points, or up to twice as many: with ids that lie evenly, a bucket holds one or two.
    void MakeBuckets() {
        const std::uint32_t first = entries.front().id;
        const std::uint32_t range = entries.back().id - first;
        while (range >> shift >= 2 * entries.size())
            ++shift;
        buckets.reserve((range >> shift) + 2);
        for (std::uint32_t i = 0; i < entries.size(); ++i) {
            while (buckets.size() <= (entries[i].id - first) >> shift)
                buckets.push_back(i);
        }
        buckets.push_back(static_cast<std::uint32_t>(entries.size()));
    }

    std::vector<Entry> entries;
    std::vector<std::uint32_t> buckets;  // the place where each begins, and the end of the last
    int shift = 0;
    std::size_t next = 0;
};

/// The places of the points of a list, asked for one after the other.
///
/// Where the list is in no order nearly every control point is far away in memory. Then some are found, and on their
/// way, before they are needed.
class ControlWalk {
  public:
    explicit ControlWalk(ControlTable& of) : table(of) {}

    std::size_t Find(const ZoPoint& point) {
        if (next < found) return places[next++];
        const std::size_t place = table.Find(point.GetId());
        if (place != ControlTable::kNone && place != std::exchange(last, place) + 1) LookAhead(point.NextConst());
        return place;
    }

  private:
    static constexpr std::size_t kAhead = 32;

    void LookAhead(const ZoPoint* point) {
        next = 0;
        for (found = 0; point && found < kAhead; point = point->NextConst()) {
            const std::size_t place = table.Find(point->GetId());
            places[found++] = place;
#if defined(__GNUC__)
            if (place == ControlTable::kNone) continue;
            __builtin_prefetch(&table.PointAt(place)->controlFlags);
            __builtin_prefetch(&table.PointAt(place)->z);
#endif
        }
    }

    ControlTable& table;
    std::size_t last = ControlTable::kNone;  // one before the first place
    std::size_t places[kAhead] = {};
    std::size_t found = 0;
    std::size_t next = 0;
};

/// Lookups in a helper, which may be few or many. The helper must not change meanwhile.
class ControlLookup {
  public:
    explicit ControlLookup(const ZoSortHelper<ZoPoint>& of) : helper(of) {}

    /// The control point of the id, or null.
    ZoPoint* Find(unsigned int id) {
        if (!table) {
            if (++lookups <= kFew + helper.index.size() / kShareOfFew) return helper.Find(id);
            table.emplace(helper);
        }
        const std::size_t place = table->Find(id);
        return place == ControlTable::kNone ? nullptr : table->PointAt(place);
    }

  private:
    // The table costs about as much as looking up this share of the points.
    static constexpr std::size_t kShareOfFew = 16;
    static constexpr std::size_t kFew = 16;

    const ZoSortHelper<ZoPoint>& helper;
    std::size_t lookups = 0;
    std::optional<ControlTable> table;
};

}  // namespace zorv::detail

#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <type_traits>
#include <utility>
#include <vector>

#include "zorv/core/key_sort.h"
#include "zorv/core/large_block_allocator.h"
#include "zorv/core/sort_helper.h"
#include "zorv/points/point_list.h"

namespace zorv::detail {

/// What is wanted of each point of a list, by id and in one block of memory, for about as many lookups as there are
/// points. Of points with one id the first counts. A Value is made from a point, and by default.
///
/// The nodes of a long list lie all over the memory, and a lookup in no order of ids waits for each of them. The values
/// lie close together: where the ids do, too, as in most surveys, an id is a place; others are found through buckets of
/// nearby ids.
template <class Value>
class ControlTable {
  public:
    static constexpr std::size_t kNone = static_cast<std::size_t>(-1);

    explicit ControlTable(const ZoSortHelper<ZoPoint>& helper) {
        if (helper.index.empty()) return;
        SetRange(helper.index.begin()->first, helper.index.rbegin()->first, helper.index.size());
        for (const auto& [id, point] : helper.index) {
            if (point) Put(id, *point);
        }
        FinishBuckets();
    }

    explicit ControlTable(const ZoPointList& list) {
        if (list.IsEmpty()) return;
        std::size_t count = 0;
        std::uint32_t lowest = list.First()->GetId();
        std::uint32_t highest = lowest;
        for (const ZoPoint* point = list.First(); point; point = point->NextConst(), ++count) {
            lowest = std::min(lowest, point->GetId());
            highest = std::max(highest, point->GetId());
        }
        SetRange(lowest, highest, count);
        if (isDense) {
            for (ZoPoint* point = list.First(); point; point = point->Next())
                Put(point->GetId(), *point);
            return;
        }
        std::vector<std::pair<std::uint32_t, ZoPoint*>> sorted;
        sorted.reserve(count);
        for (ZoPoint* point = list.First(); point; point = point->Next())
            sorted.emplace_back(point->GetId(), point);
        StableSortByKey(sorted);
        for (const auto& [id, point] : sorted)
            Put(id, *point);
        FinishBuckets();
    }

    /// Places are numbers below this one; not all need be taken.
    std::size_t Size() const { return values.size(); }
    const Value& At(std::size_t place) const { return values[place]; }

    /// The place of the point of that id, or kNone. A guess where that may be saves a search.
    std::size_t Find(std::uint32_t id, std::size_t guess = kNone) const {
        if (guess < ids.size() && ids[guess] == id) return guess;
        const std::uint32_t offset = id - first;  // an id below wraps around to one behind the end
        if (offset > range) return kNone;
        if (isDense) return taken[offset] ? offset : kNone;
        if (buckets.empty()) return kNone;
        const std::size_t bucket = offset >> shift;
        const auto end = ids.begin() + buckets[bucket + 1];
        const auto found = std::lower_bound(ids.begin() + buckets[bucket], end, id);
        return found == end || *found != id ? kNone : static_cast<std::size_t>(found - ids.begin());
    }

    /// The value of the point of that id, or null.
    const Value* FindValue(std::uint32_t id) const {
        const std::size_t place = Find(id);
        return place == kNone ? nullptr : &values[place];
    }

  private:
    static constexpr std::size_t kPlacesPerPoint = 4;

    /// There are as many buckets as points, or up to twice as many: with ids that lie evenly, a bucket holds one or
    /// two.
    void SetRange(std::uint32_t lowest, std::uint32_t highest, std::size_t count) {
        first = lowest;
        range = highest - lowest;
        isDense = range < kPlacesPerPoint * count;
        if (isDense) {
            taken.resize(std::size_t{range} + 1);
            values.resize(std::size_t{range} + 1);
            return;
        }
        while (range >> shift >= 2 * count)
            ++shift;
        buckets.reserve((range >> shift) + std::size_t{2});
        ids.reserve(count);
        values.reserve(count);
    }

    /// Ids that do not lie close together come ascending.
    void Put(std::uint32_t id, ZoPoint& point) {
        const std::uint32_t offset = id - first;
        if (isDense) {
            if (taken[offset]) return;
            taken[offset] = true;
            values[offset] = Value(point);
        } else if (ids.empty() || ids.back() != id) {
            while (buckets.size() <= offset >> shift)
                buckets.push_back(static_cast<std::uint32_t>(ids.size()));
            ids.push_back(id);
            values.push_back(Value(point));
        }
    }

    void FinishBuckets() {
        if (!isDense) buckets.resize((range >> shift) + std::size_t{2}, static_cast<std::uint32_t>(ids.size()));
    }

    std::uint32_t first = 0;
    std::uint32_t range = 0;
    bool isDense = false;
    std::vector<Value, LargeBlockAllocator<Value>> values;
    std::vector<bool> taken;             // where an id is a place
    std::vector<std::uint32_t> ids;      // else those of the values
    std::vector<std::uint32_t> buckets;  // the place where each begins, and the end of the last
    int shift = 0;
};

/// The coordinates of a control point.
struct ControlPosition {
    ControlPosition() = default;
    explicit ControlPosition(const ZoPoint& point) : x(point.x), y(point.y), z(point.z) {}

    double x = 0.0;
    double y = 0.0;
    double z = 0.0;
};

/// The control point itself.
struct ControlAddress {
    ControlAddress() = default;
    explicit ControlAddress(ZoPoint& of) : point(&of) {}

    ZoPoint* point = nullptr;
};

/// The places of the points of a list in a table, asked for one after the other.
///
/// Where the list is in no order nearly every value is far away in memory. Then some are found, and on their way,
/// before they are needed.
template <class Value>
class ControlWalk {
  public:
    explicit ControlWalk(const ControlTable<Value>& of) : table(of) {}

    std::size_t Find(const ZoPoint& point) {
        if (next < found) return places[next++];
        const std::size_t place = table.Find(point.GetId(), last + 1);
        if (place != table.kNone && place != std::exchange(last, place) + 1) LookAhead(point.NextConst());
        return place;
    }

    /// The value of the point's partner, or null.
    const Value* FindValue(const ZoPoint& point) {
        const std::size_t place = Find(point);
        return place == table.kNone ? nullptr : &table.At(place);
    }

  private:
    static constexpr std::size_t kAhead = 32;

    void LookAhead(const ZoPoint* point) {
        next = 0;
        for (found = 0; point && found < kAhead; point = point->NextConst()) {
            const std::size_t place = table.Find(point->GetId());
            places[found++] = place;
            if (place != table.kNone) Expect(table.At(place));
        }
    }

    static void Expect([[maybe_unused]] const Value& value) {
#if defined(__GNUC__)
        if constexpr (std::is_same_v<Value, ControlAddress>) {
            __builtin_prefetch(&value.point->controlFlags);
            __builtin_prefetch(&value.point->z);
        } else {
            __builtin_prefetch(&value);
        }
#endif
    }

    const ControlTable<Value>& table;
    std::size_t last = ControlTable<Value>::kNone;  // one before the first place
    std::size_t places[kAhead] = {};
    std::size_t found = 0;
    std::size_t next = 0;
};

/// Lookups in a helper, which may be few or many. The helper must not change meanwhile; its points may.
class ControlLookup {
  public:
    explicit ControlLookup(const ZoSortHelper<ZoPoint>& of) : helper(of) {}

    /// So many lookups take about as long as the making of a table.
    static std::size_t CountOfFew(const ZoSortHelper<ZoPoint>& of) { return kFew + of.index.size() / kShareOfFew; }

    /// The control point of the id, or null.
    ZoPoint* Find(unsigned int id) {
        if (!table) {
            if (++lookups <= CountOfFew(helper)) return helper.Find(id);
            table.emplace(helper);
        }
        const ControlAddress* found = table->FindValue(id);
        return found ? found->point : nullptr;
    }

  private:
    static constexpr std::size_t kShareOfFew = 16;
    static constexpr std::size_t kFew = 16;

    const ZoSortHelper<ZoPoint>& helper;
    std::size_t lookups = 0;
    std::optional<ControlTable<ControlAddress>> table;
};

}  // namespace zorv::detail

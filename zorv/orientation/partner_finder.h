#pragma once

#include <algorithm>
#include <cstddef>
#include <optional>
#include <vector>

#include "zorv/core/sort_helper.h"
#include "zorv/orientation/control_lookup.h"
#include "zorv/points/point_list.h"

namespace zorv::detail {

/// Finds partners for the points of a list that is walked: the first point of another list that has the id.
///
/// Lists stand mostly in the order of their ids. As long as both do, the partner lies at a cursor that only moves
/// forward, and no memory is needed. At the first request that the cursor cannot answer an index takes over: a table by
/// id where the ids lie close together, else one that is searched.
class PartnerFinder {
  public:
    /// A null list has no partners. Its ids stay as they are while the finder lives.
    explicit PartnerFinder(ZoPointList* targets) : list(targets), cursor(list ? list->First() : nullptr) {}

    /// The partner, or null.
    ZoPoint* Find(unsigned int id) {
        if (indexed) return FindInIndex(id);
        if (id >= formerId) {
            formerId = id;
            // What the cursor has passed lies below id, so the first point at or above it is the first of its id.
            while (cursor && cursor->GetId() < id)
                cursor = cursor->Next();
            if (!cursor || cursor->GetId() == id) return cursor;
            if (RestAscends()) return nullptr;
        }
        MakeIndex();
        return FindInIndex(id);
    }

  private:
    /// Whether no id from the cursor on lies below that of the cursor.
    bool RestAscends() {
        if (ascends) return true;
        for (const ZoPoint* point = cursor; const ZoPoint* following = point->NextConst(); point = following) {
            if (following->GetId() < point->GetId()) return false;
        }
        ascends = true;
        return true;
    }

    void MakeIndex() {
        constexpr std::size_t kPlacesPerPoint = 4;
        indexed = true;
        if (!list || list->IsEmpty()) return;
        std::size_t count = 0;
        unsigned int highest = 0;
        lowest = list->First()->GetId();
        for (const ZoPoint* point = list->First(); point; point = point->NextConst(), ++count) {
            lowest = std::min(lowest, point->GetId());
            highest = std::max(highest, point->GetId());
        }
        if (highest - lowest < kPlacesPerPoint * count) {
            table.resize(std::size_t{highest - lowest} + 1);
            for (ZoPoint* point = list->First(); point; point = point->Next()) {
                ZoPoint*& place = table[point->GetId() - lowest];
                if (!place) place = point;
            }
        } else {
            sorted.emplace(list);
            lookup.emplace(*sorted);
        }
    }

    ZoPoint* FindInIndex(unsigned int id) {
        if (lookup) return lookup->Find(id);
        const unsigned int place = id - lowest;  // an id below wraps around to a place behind the end
        return place < table.size() ? table[place] : nullptr;
    }

    ZoPointList* list;
    ZoPoint* cursor;
    unsigned int formerId = 0;
    bool ascends = false;  // known of the points from the cursor on
    bool indexed = false;
    unsigned int lowest = 0;  // id of the first place
    std::vector<ZoPoint*> table;
    std::optional<ZoSortHelper<ZoPoint>> sorted;
    std::optional<ControlLookup> lookup;
};

}  // namespace zorv::detail

#pragma once

#include <optional>

#include "zorv/core/sort_helper.h"
#include "zorv/orientation/control_lookup.h"
#include "zorv/points/point_list.h"

namespace zorv::detail {

/// Finds partners for the points of a list that is walked: the first point of another list that has the id.
///
/// Lists stand mostly in the order of their ids. As long as both do, the partner lies at a cursor that only moves
/// forward, and no memory is needed. At the first request that the cursor cannot answer an index takes over.
class PartnerFinder {
  public:
    /// A null list has no partners. Its ids stay as they are while the finder lives.
    explicit PartnerFinder(ZoPointList* targets) : list(targets), cursor(list ? list->First() : nullptr) {}

    /// The partner, or null.
    ZoPoint* Find(unsigned int id) {
        if (lookup) return lookup->Find(id);
        if (id >= formerId) {
            formerId = id;
            // What the cursor has passed lies below id, so the first point at or above it is the first of its id.
            while (cursor && cursor->GetId() < id)
                cursor = cursor->Next();
            if (!cursor || cursor->GetId() == id) return cursor;
            if (RestAscends()) return nullptr;
        }
        index.emplace(list);
        return lookup.emplace(*index).Find(id);
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

    ZoPointList* list;
    ZoPoint* cursor;
    unsigned int formerId = 0;
    bool ascends = false;  // known of the points from the cursor on
    std::optional<ZoSortHelper<ZoPoint>> index;
    std::optional<ControlLookup> lookup;
};

}  // namespace zorv::detail

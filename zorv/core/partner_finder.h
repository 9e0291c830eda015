#pragma once

#include <optional>

#include "zorv/core/list.h"
#include "zorv/core/sort_helper.h"

namespace zorv::detail {

/// Finds partners for the nodes of a list that is walked: the first node of another list that has the id.
///
/// Lists stand mostly in the order of their ids. As long as both do, the partner lies at a cursor that only moves
/// forward, and no memory is needed. At the first request that the cursor cannot answer an index takes over.
template <class T>
class PartnerFinder {
  public:
    /// A null list has no partners. Its ids stay as they are while the finder lives.
    explicit PartnerFinder(TZoListHeader<T>* targets) : list(targets), cursor(list ? list->First() : nullptr) {}

    /// The partner, or null.
    T* Find(unsigned int id) {
        if (index) return index->Find(id);
        if (id >= formerId) {
            formerId = id;
            // What the cursor has passed lies below id, so the first node at or above it is the first of its id.
            while (cursor && cursor->GetId() < id)
                cursor = Next(cursor);
            if (!cursor || cursor->GetId() == id) return cursor;
            if (RestAscends()) return nullptr;
        }
        index.emplace(list);
        return index->Find(id);
    }

  private:
    static T* Next(const T* node) { return static_cast<T*>(node->next); }

    /// Whether no id from the cursor on lies below that of the cursor.
    bool RestAscends() {
        if (ascends) return true;
        for (const T* node = cursor; const T* following = Next(node); node = following) {
            if (following->GetId() < node->GetId()) return false;
        }
        ascends = true;
        return true;
    }

    TZoListHeader<T>* list;
    T* cursor;
    unsigned int formerId = 0;
    bool ascends = false;  // known of the nodes from the cursor on
    std::optional<ZoSortHelper<T>> index;
};

}  // namespace zorv::detail

#pragma once

#include <algorithm>
#include <cstddef>
#include <vector>

#include "zorv/core/sort_helper.h"
#include "zorv/points/point.h"

namespace zorv::detail {

/// Many lookups in one helper, in the order of a list.
///
/// The lists of a survey are mostly in the order of their ids, and then the next point stands next in the helper too.
/// Where that fails often, the ids are brought into one block of memory, whose binary search is several times faster
/// than the one through the nodes of the map. The helper must not change meanwhile.
class ControlLookup {
  public:
    explicit ControlLookup(const ZoSortHelper<ZoPoint>& helper) : index(helper.index), next(index.begin()) {}

    /// The control point of the id, or null.
    ZoPoint* Find(unsigned int id) {
        if (next != index.end() && next->first == id) return (next++)->second;
        return ids.empty() ? FindInMap(id) : FindInBlock(id);
    }

  private:
    ZoPoint* FindInMap(unsigned int id) {
        const auto found = index.lower_bound(id);
        next = found;
        // The block costs a walk through the whole index.
        if (++jumps > index.size() / 16 + 64) MakeBlock();
        if (found == index.end() || found->first != id) return nullptr;
        ++next;
        return found->second;
    }

    ZoPoint* FindInBlock(unsigned int id) const {
        const auto found = std::lower_bound(ids.begin(), ids.end(), id);
        if (found == ids.end() || *found != id) return nullptr;
        return points[static_cast<std::size_t>(found - ids.begin())];
    }

    void MakeBlock() {
        ids.reserve(index.size());
        points.reserve(index.size());
        for (const auto& [id, point] : index) {
            ids.push_back(id);
            points.push_back(point);
        }
    }

    const ZoSortHelper<ZoPoint>::Index& index;
    ZoSortHelper<ZoPoint>::Index::const_iterator next;
    std::size_t jumps = 0;
    std::vector<unsigned int> ids;
    std::vector<ZoPoint*> points;
};

}  // namespace zorv::detail

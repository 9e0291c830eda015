#pragma once

#include <optional>

#include "zorv/orientation/control_lookup.h"
#include "zorv/points/point_list.h"

namespace zorv::detail {

/// Finds partners for the points of a list that is walked: the first point of another list that has the id.
///
/// Lists stand mostly in the order of their ids. As long as both do, the partner lies at a cursor that only moves
/// forward, and no memory is needed. At the first request that the cursor cannot answer a table takes over.
class PartnerFinder {
  public:
    /// Where a partner lies in the plane.
    struct Position {
        Position() = default;
        explicit Position(const ZoPoint& point) : x(point.x), y(point.y) {}

        double x = 0.0;
        double y = 0.0;
    };

    /// A null list has no partners. Its ids and coordinates stay as they are while the finder lives.
    explicit PartnerFinder(const ZoPointList* targets) : list(targets), cursor(list ? list->First() : nullptr) {}
    PartnerFinder(const PartnerFinder&) = delete;
    PartnerFinder& operator=(const PartnerFinder&) = delete;

    /// The position of a point's partner, or nothing. The points that follow it in its list should be the next ones.
    std::optional<Position> Find(const ZoPoint& point) {
        if (walk) return FindInTable(point);
        const unsigned int id = point.GetId();
        const ZoPoint* following = point.NextConst();
        // Where the order ends with the next point, the way to this one is not worth it.
        if (id >= formerId && (!following || following->GetId() >= id)) {
            formerId = id;
            // What the cursor has passed lies below id, so the first point at or above it is the first of its id.
            while (cursor && cursor->GetId() < id)
                cursor = cursor->NextConst();
            if (!cursor) return std::nullopt;
            if (cursor->GetId() == id) return Position(*cursor);
            if (RestAscends()) return std::nullopt;
        }
        if (!list) return std::nullopt;
        table.emplace(*list);
        walk.emplace(*table);
        return FindInTable(point);
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

    std::optional<Position> FindInTable(const ZoPoint& point) {
        const Position* found = walk->FindValue(point);
        return found ? std::optional<Position>(*found) : std::nullopt;
    }

    const ZoPointList* list;
    const ZoPoint* cursor;
    unsigned int formerId = 0;
    bool ascends = false;  // known of the points from the cursor on
    std::optional<ControlTable<Position>> table;
    std::optional<ControlWalk<Position>> walk;
};

}  // namespace zorv::detail

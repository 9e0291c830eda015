#pragma once

#include "zorv/export.h"
#include "zorv/points/point_list.h"

/// Merges new coordinates into a list in two steps, with the points that moved too far held back in between.
///
/// The host fills the update list and runs UpdateCooStep1, moves each point of the failed list to the medium, the old
/// value or the new value list as it decides, and runs UpdateCooStep2. The list to update stays the host's; the other
/// five belong to the helper, and none of them may be the list to update.
class ZORV_API ZoCooListUpdateHelper {
  public:
    ZoCooListUpdateHelper() = default;
    explicit ZoCooListUpdateHelper(ZoPointList* target) : listToUpdate(target) {}
    /// A copy has no observers; an assignment takes over those of the other's lists, as lists do. A move takes
    /// points and columns and leaves the other lists empty.
    ZoCooListUpdateHelper(const ZoCooListUpdateHelper&) = default;
    ZoCooListUpdateHelper(ZoCooListUpdateHelper&& other) noexcept;
    ZoCooListUpdateHelper& operator=(const ZoCooListUpdateHelper&) = default;
    ZoCooListUpdateHelper& operator=(ZoCooListUpdateHelper&& other) noexcept;

    void SetListToUpdate(ZoPointList* target) { listToUpdate = target; }
    ZoPointList* GetListToUpdate() const { return listToUpdate; }
    ZoPointList* GetUpdateList() { return &updateList; }
    ZoPointList* GetUpdateFailedList() { return &updateFailedList; }
    ZoPointList* GetMediumList() { return &mediumList; }
    ZoPointList* GetOldValueList() { return &oldValueList; }
    ZoPointList* GetNewValueList() { return &newValueList; }

    /// Empties the update list. A point with a new id is added to the list to update. One that lies no further than
    /// `tolerance` (in space, in the unit of the lists) from the point of its id replaces that, or with `useMean` is
    /// averaged into it. Any other goes to the failed list, with the list's value minus its own in dx, dy, dz.
    /// Returns the number of those; -1 without a list to update.
    int UpdateCooStep1(double tolerance, int useMean);

    /// Empties the medium list, whose coordinates are averaged into the list to update, and the new value list, whose
    /// points replace theirs; dx, dy, dz become 0. Points with an unknown id are dropped. The list to update is
    /// ascending by id afterwards; of points with the same id only the first stays. Its observers hear of the new order
    /// and then of the change. Returns 1; -1 without a list to update.
    int UpdateCooStep2();

    ZoPointList* listToUpdate = nullptr;
    ZoPointList updateList;
    ZoPointList updateFailedList;
    ZoPointList mediumList;
    ZoPointList oldValueList;
    ZoPointList newValueList;

  private:
    bool HasTarget() const;
};

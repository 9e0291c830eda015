#include "zorv/points/coordinate_update.h"

#include <algorithm>
#include <memory>
#include <utility>

#include "zorv/core/sort_helper.h"

namespace {

void MoveList(ZoPointList& from, ZoPointList& to) {
    if (&from == &to) return;
    to.Destroy();
    to.SetMask(from.GetMask());
    from.MoveTo(&to);
}

/// Hands each point to `apply` together with the indexed point of its id, and deletes it; the list is empty afterwards.
template <class Apply>
void Consume(ZoPointList& points, const ZoSortHelper<ZoPoint>& index, Apply apply) {
    while (const std::unique_ptr<ZoPoint> point{points.SubtractFirst()}) {
        if (ZoPoint* target = index.Find(point->GetId())) apply(*target, *point);
    }
}

void ClearDifferences(ZoPoint& point) {
    point.dx = point.dy = point.dz = 0.0;
}

}  // namespace

ZoCooListUpdateHelper::ZoCooListUpdateHelper(ZoCooListUpdateHelper&& other) noexcept {
    *this = std::move(other);
}

ZoCooListUpdateHelper& ZoCooListUpdateHelper::operator=(ZoCooListUpdateHelper&& other) noexcept {
    listToUpdate = other.listToUpdate;
    MoveList(other.updateList, updateList);
    MoveList(other.updateFailedList, updateFailedList);
    MoveList(other.mediumList, mediumList);
    MoveList(other.oldValueList, oldValueList);
    MoveList(other.newValueList, newValueList);
    return *this;
}

// A list of the helper's own would be read and changed at once.
bool ZoCooListUpdateHelper::HasTarget() const {
    const ZoPointList* const own[] = {&updateList, &updateFailedList, &mediumList, &oldValueList, &newValueList};
    return listToUpdate && std::find(std::begin(own), std::end(own), listToUpdate) == std::end(own);
}

int ZoCooListUpdateHelper::UpdateCooStep1(double tolerance, int useMean) {
    if (!HasTarget()) return -1;
    updateList.SetNotify(false);
    listToUpdate->SetNotify(false);

    const ZoSortHelper<ZoPoint> index(listToUpdate);
    int failed = 0;
    while (std::unique_ptr<ZoPoint> point{updateList.SubtractFirst()}) {
        ZoPoint* const target = index.Find(point->GetId());
        if (!target) {
            listToUpdate->Add(point.release());
        } else if (target->Distance(*point) > tolerance) {
            point->dx = target->x - point->x;
            point->dy = target->y - point->y;
            point->dz = target->z - point->z;
            updateFailedList.Add(point.release());
            ++failed;
        } else if (useMean != 0) {
            *target = *target % *point;
        } else {
            *target = *point;
        }
    }

    updateList.SetNotify(true);
    listToUpdate->SetNotify(true);
    updateList.NotifyChanged(nullptr, nullptr);
    listToUpdate->NotifyChanged(nullptr, nullptr);
    return failed;
}

int ZoCooListUpdateHelper::UpdateCooStep2() {
    if (!HasTarget()) return -1;
    listToUpdate->SetNotify(false);
    {
        const ZoSortHelper<ZoPoint> index(listToUpdate);
        Consume(mediumList, index, [](ZoPoint& target, const ZoPoint& point) {
            target.x = (target.x + point.x) / 2;
            target.y = (target.y + point.y) / 2;
            target.z = (target.z + point.z) / 2;
            ClearDifferences(target);
        });
        Consume(newValueList, index, [](ZoPoint& target, const ZoPoint& point) {
            target = point;
            ClearDifferences(target);
        });
    }
    listToUpdate->SetNotify(true);
    listToUpdate->SortById();
    listToUpdate->NotifyChanged(nullptr, nullptr);
    return 1;
}

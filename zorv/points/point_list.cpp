#include "zorv/points/point_list.h"

#include <cmath>
#include <limits>

ZoPointList& ZoPointList::operator=(const ZoPointList& other) {
    if (this == &other) return *this;
    TZoListHeader<ZoPoint>::operator=(other);
    SetMask(other);
    return *this;
}

ZoPoint* ZoPointList::Find(unsigned int number, unsigned int photo, ZoPoint* start) const {
    const auto matches = [number, photo](const ZoPoint* point) {
        return point->id == number && (photo == 0 || point->photoId == photo);
    };
    for (ZoPoint* point = start ? start : First(); point; point = point->Next()) {
        if (matches(point)) return point;
    }
    for (ZoPoint* point = start ? start->Previous() : nullptr; point; point = point->Previous()) {
        if (matches(point)) return point;
    }
    return nullptr;
}

ZoPoint* ZoPointList::FindInSortedList(unsigned int number) const {
    ZoPoint* point = First();
    while (point && point->id < number)
        point = point->Next();
    return point && point->id == number ? point : nullptr;
}

ZoPoint* ZoPointList::FindNearest(const ZoPoint& point, double* distance) const {
    ZoPoint* nearest = nullptr;
    double least = std::numeric_limits<double>::infinity();
    for (ZoPoint* candidate = First(); candidate; candidate = candidate->Next()) {
        const double away = candidate->Distance(point);
        // Any distance is better than none or not-a-number.
        if (!nearest || away < least || (std::isnan(least) && !std::isnan(away))) {
            nearest = candidate;
            least = away;
        }
    }
    if (distance) *distance = least;
    return nearest;
}

void ZoPointList::GetStat(unsigned long long& total, unsigned long long& used) const {
    total = 0;
    used = 0;
    for (const ZoPoint* point = First(); point; point = point->NextConst()) {
        ++total;
        if (point->IsFlagSet(ZoPoint::kInUse)) ++used;
    }
}

bool ZoPointList::HasControlPoints() const {
    for (const ZoPoint* point = First(); point; point = point->NextConst()) {
        if (point->controlFlags != 0) return true;
    }
    return false;
}

void ZoPointList::RemoveControlInformation() {
    for (ZoPoint* point = First(); point; point = point->Next())
        point->controlFlags = 0;
    NotifyChanged(nullptr, nullptr);
}

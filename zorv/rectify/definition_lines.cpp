#include "zorv/rectify/definition_lines.h"

#include "zorv/math/line3d.h"
#include "zorv/points/point_list.h"

namespace {

/// The last two records of a list; both null when it holds fewer.
template <class T>
struct LastTwo {
    explicit LastTwo(const TZoListHeader<T>& list) {
        const T* end = list.Last();
        if (!end || !end->previous) return;
        last = end;
        previous = static_cast<const T*>(end->previous);
    }

    const T* previous = nullptr;
    const T* last = nullptr;
};

/// Deletes the records of which an id is unknown.
template <class T, class Known>
void DropUnknown(TZoListHeader<T>& list, Known known) {
    for (T* record = list.First(); record;) {
        T* const following = record->Next();
        if (!known(record->id1) || !known(record->id2)) delete list.Subtract(record);
        record = following;
    }
}

template <class T, class Matches>
bool Any(const TZoListHeader<T>& list, Matches matches) {
    for (const T* record = list.First(); record; record = record->NextConst()) {
        if (matches(*record)) return true;
    }
    return false;
}

}  // namespace

void ZoElspParallelDef::Clear() {
    lines.Destroy();
    constraints.Destroy();
}

void ZoElspParallelDef::CheckAndRepair() {
    if (!points) return;
    DropUnknown(lines, [this](unsigned int id) { return points->Find(id) != nullptr; });
    DropUnknown(constraints, [this](unsigned int id) { return lines.Find(id) != nullptr; });
}

bool ZoElspParallelDef::GetLine(ZoPoint& a, ZoPoint& b, const ZoElspDefLine* line) const {
    if (!line || !points) return false;
    const ZoPoint* const first = points->Find(line->id1);
    const ZoPoint* const second = points->Find(line->id2);
    if (!first || !second) return false;
    a = *first;
    b = *second;
    return true;
}

bool ZoElspParallelDef::GetLine(ZoLine3d& l, const ZoElspDefLine* line) const {
    ZoPoint a;
    ZoPoint b;
    if (!GetLine(a, b, line)) return false;
    l = ZoLine3d(ZoPoint3d(a.x, a.y, a.z), ZoPoint3d(b.x, b.y, b.z));
    return true;
}

bool ZoElspParallelDef::GetConstraintLine(ZoPoint& a, ZoPoint& b, const ZoElspDefLineConstraint* constraint) const {
    ZoPoint ends[4];
    if (!constraint || !GetLine(ends[0], ends[1], lines.Find(constraint->id1)) ||
        !GetLine(ends[2], ends[3], lines.Find(constraint->id2)))
        return false;
    a = ends[0] % ends[1];
    b = ends[2] % ends[3];
    return true;
}

bool ZoElspParallelDef::HasXAxisDef() const {
    return Any(lines, [](const ZoElspDefLine& line) { return line.xAxis != 0; });
}

bool ZoElspParallelDef::HasDefLineFromBikos(unsigned int a, unsigned int b, bool both) const {
    return Any(lines, [=](const ZoElspDefLine& line) { return both ? line.HasBothId(a, b) : line.HasEitherId(a, b); });
}

bool ZoElspParallelDef::HasDefLineWithLastBikos() const {
    if (!points) return false;
    const LastTwo<ZoPoint> two(*points);
    return two.last && HasDefLineFromBikos(two.previous->GetId(), two.last->GetId(), false);
}

bool ZoElspParallelDef::HasConstraintDef(unsigned int a, unsigned int b, bool both, ConstraintType type) const {
    return Any(constraints, [=](const ZoElspDefLineConstraint& constraint) {
        return (both ? constraint.HasBothId(a, b) : constraint.HasEitherId(a, b)) && constraint.IsConstraint(type);
    });
}

bool ZoElspParallelDef::HasConstraintDefFromLastTwoLines(ConstraintType type) const {
    const LastTwo<ZoElspDefLine> two(lines);
    return two.last && HasConstraintDef(two.previous->GetId(), two.last->GetId(), false, type);
}

bool ZoElspParallelDef::IsDefLineValid(unsigned int a, unsigned int b) const {
    return points && a != b && points->Find(a) && points->Find(b) && !HasDefLineFromBikos(a, b, true);
}

bool ZoElspParallelDef::IsConstraintDefValid(unsigned int a, unsigned int b, ConstraintType type) const {
    return a != b && lines.Find(a) && lines.Find(b) && !HasConstraintDef(a, b, true, type);
}

ZoElspDefLine* ZoElspParallelDef::MakeDefLine(unsigned int a, unsigned int b) {
    if (!IsDefLineValid(a, b)) return nullptr;
    ZoElspDefLine line(a, b);
    line.SetId(lines.GetFreeId(0));
    return lines.Add(line);
}

ZoElspDefLine* ZoElspParallelDef::MakeDefLineFromLastTwoBikos() {
    if (!points) return nullptr;
    const LastTwo<ZoPoint> two(*points);
    return two.last ? MakeDefLine(two.previous->GetId(), two.last->GetId()) : nullptr;
}

ZoElspDefLineConstraint* ZoElspParallelDef::MakeConstraintDef(unsigned int a, unsigned int b, ConstraintType type) {
    if (!IsConstraintDefValid(a, b, type)) return nullptr;
    ZoElspDefLineConstraint constraint(a, b, type, 0.0);
    constraint.SetId(constraints.GetFreeId(0));
    return constraints.Add(constraint);
}

ZoElspDefLineConstraint* ZoElspParallelDef::MakeConstraintDefFromLastTwoDefLines(ConstraintType type) {
    const LastTwo<ZoElspDefLine> two(lines);
    return two.last ? MakeConstraintDef(two.previous->GetId(), two.last->GetId(), type) : nullptr;
}

bool ZoElspParallelDef::MakeLastTwoParallelConstraintsPerpendicular() {
    const LastTwo<ZoElspDefLineConstraint> two(constraints);
    if (!two.last || !two.previous->IsParallel() || !two.last->IsParallel()) return false;
    for (const unsigned int first : {two.previous->id1, two.previous->id2}) {
        for (const unsigned int second : {two.last->id1, two.last->id2})
            MakeConstraintDef(first, second, ZoElspDefLineConstraint::ConstraintPerpendicular);
    }
    return true;
}

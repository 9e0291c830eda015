#include <algorithm>
#include <cmath>
#include <cstddef>
#include <memory>
#include <vector>

#include "zorv/math/affine_map3d.h"
#include "zorv/orientation/control_lookup.h"
#include "zorv/orientation/similarity.h"

using zorv::detail::ControlAddress;
using zorv::detail::ControlLookup;
using zorv::detail::ControlTable;

namespace {

/// Control point minus point in dx, dy, dz; zero without a control point.
void SetResidual(ZoPoint& point, const ZoPoint* control) {
    point.dx = control ? control->x - point.x : 0.0;
    point.dy = control ? control->y - point.y : 0.0;
    point.dz = control ? control->z - point.z : 0.0;
}

double ResidualSq(const ZoPoint& point) {
    return point.dx * point.dx + point.dy * point.dy + point.dz * point.dz;
}

/// The coordinates that the control flags name go over, the others by the share.
void Approach(ZoPoint& point, const ZoPoint& control, double share) {
    const auto approach = [share](double& own, double goal, int fixed) {
        own = fixed ? goal : own * (1.0 - share) + goal * share;
    };
    approach(point.x, control.x, control.IsXControlPoint());
    approach(point.y, control.y, control.IsYControlPoint());
    approach(point.z, control.z, control.IsZControlPoint());
}

void TakeControlCoordinates(ZoPoint& point, const ZoPoint& control) {
    if (control.IsXControlPoint()) point.x = control.x;
    if (control.IsYControlPoint()) point.y = control.y;
    if (control.IsZControlPoint()) point.z = control.z;
}

bool IsAscending(const ZoPointList& list) {
    const ZoPoint* point = list.First();
    while (point && point->NextConst() && point->GetId() < point->NextConst()->GetId())
        point = point->NextConst();
    return !point || !point->NextConst();
}

ZoMatrix Translation(const ZoVector& to) {
    ZoMatrix m(4, 4);
    m.SetIdent();
    for (int i = 1; i <= 3; ++i)
        m[i][4] = to[i];
    return m;
}

}  // namespace

ZoMatrix ZoTrafo3dData::GetAsMatrix() const {
    ZoMatrix scaled(4, 4);
    for (int r = 1; r <= 3; ++r) {
        for (int c = 1; c <= 3; ++c)
            scaled[r][c] = scale * rotation[r][c];
    }
    scaled[4][4] = 1.0;
    return Translation(targetOrigin) * scaled * Translation(sourceOrigin * -1.0);
}

void ZoTrafo3d::ClearResiduals() {
    rmsX = rmsY = rmsZ = 0.0;
    residualCount = 0;
    worstPoint = nullptr;
}

void ZoTrafo3d::AddResidual(const ZoPoint& point) {
    rmsX += point.dx * point.dx;
    rmsY += point.dy * point.dy;
    rmsZ += point.dz * point.dz;
    ++residualCount;
}

void ZoTrafo3d::FinishResiduals() {
    residualCount = std::max(residualCount, 1);
    for (double* rms : {&rmsX, &rmsY, &rmsZ})
        *rms = std::sqrt(*rms / residualCount);
}

bool ZoTrafo3d::Transform(ZoPointList& result, const ZoPointList& source, const ZoPointList* controls, bool sortById) {
    return Transform(result, source, ZoSortHelper<ZoPoint>(zorv::detail::ForLookups(controls)), sortById);
}

bool ZoTrafo3d::Transform(ZoPointList& result, const ZoPointList& source, const ZoSortHelper<ZoPoint>& controls,
                          bool sortById) {
    const ZoMatrix m = GetAsMatrix();
    ClearResiduals();
    double worst = 0.0;
    ZoPointList made;
    const ControlTable<ControlAddress> table(controls);
    zorv::detail::ControlWalk walk(table);
    std::vector<bool> matched(table.Size());
    int matchedCount = 0;
    for (const ZoPoint* point = source.First(); point; point = point->NextConst()) {
        const std::size_t place = walk.Find(*point);
        ZoPoint* moved = made.Add(*point);
        m.PTrans3D(&moved->x, &moved->y, &moved->z);
        const ZoPoint* control = place == table.kNone ? nullptr : table.At(place).point;
        SetResidual(*moved, control);
        moved->SetFlag(kHasResidual);
        if (control) {
            TakeControlCoordinates(*moved, *control);
            matchedCount += matched[place] ? 0 : 1;
            matched[place] = true;
        }
        const double residual = ResidualSq(*moved);
        if (residual > worst) {
            worst = residual;
            worstPoint = moved;
        }
        AddResidual(*moved);
    }
    FinishResiduals();

    if (controls.list && matchedCount != controls.count) {
        for (const ZoPoint* control = controls.list->First(); control; control = control->NextConst()) {
            const std::size_t place = table.Find(control->GetId());
            if (place == table.kNone || !matched[place]) made.Add(*control);
        }
    }

    result.Destroy();
    result.SetNotify(false);
    made.MoveTo(&result);
    if (sortById && !IsAscending(result)) {
        // Of several points with one id only the first stays.
        if (worstPoint && result.Find(worstPoint->GetId()) != worstPoint) worstPoint = nullptr;
        result.SortById();
    }
    result.SetNotify(true);
    result.NotifyChanged(nullptr, nullptr);
    return true;
}

bool ZoTrafo3d::Transform(ZoPointList* accepted, ZoPointList* rejected, ZoPointList* rejectedControls,
                          ZoPointList* source, double maxResidual, const ZoSortHelper<ZoPoint>& controls,
                          double blend) {
    const ZoMatrix m = GetAsMatrix();
    const double share = blend > 0.0 ? std::min(blend, 1.0) : 0.0;
    const double limit = maxResidual * maxResidual;
    ClearResiduals();
    double worst = 0.0;
    ControlLookup lookup(controls);
    const ZoPoint* last = source ? source->Last() : nullptr;
    for (bool more = last; more;) {
        // One of the output lists may be the source.
        more = source->First() != last;
        std::unique_ptr<ZoPoint> point(source->SubtractFirst());
        m.PTrans3D(point.get());
        const ZoPoint* control = lookup.Find(point->GetId());
        SetResidual(*point, control);
        point->SetFlag(kHasResidual);
        if (control) Approach(*point, *control, share);
        point->SetControlFlags(control ? control->GetControlFlags() : short{0});

        const double residual = ResidualSq(*point);
        const bool isAccepted = residual <= limit;
        ZoPointList* target = isAccepted ? accepted : rejected;
        if (residual > worst) {
            worst = residual;
            worstPoint = target ? point.get() : nullptr;
        }
        if (isAccepted) {
            AddResidual(*point);
        } else {
            point->SetFlag(kRejected);
            if (control && rejectedControls) rejectedControls->Add(*control);
        }
        if (target) target->Add(point.release());
    }
    FinishResiduals();
    return true;
}

bool ZoTrafo3d::InPlaceTransform(ZoPointList* list) {
    if (!list) return false;
    const ZoMatrix m = GetAsMatrix();
    ZoAffinMap3d map;
    for (int r = 0; r < 4; ++r) {
        for (int c = 0; c < 4; ++c)
            map[r][c] = m.GetElemZeroIndex(r, c);
    }
    const ZoAffinMap3d normals = map.NormalTransformMap();
    for (ZoPoint* point = list->First(); point; point = point->Next()) {
        point->ClearFlag(kHasResidual | kRejected);
        m.PTrans3D(point);
        point->SetControlFlags(0);
        point->dx *= scale;
        point->dy *= scale;
        point->dz *= scale;
        normals.InplaceTransform(point->dx, point->dy, point->dz);
        normals.InplaceTransform(point->vx, point->vy, point->vz);
    }
    return true;
}

void ZoTrafo3d::GetCommonIds(ZoIdTable& table, ZoPointList* a, ZoPointList* b) {
    table.Clear();
    const ZoSortHelper<ZoPoint> helper(a);
    ControlLookup lookup(helper);
    for (const ZoPoint* point = b ? b->First() : nullptr; point; point = point->NextConst()) {
        if (lookup.Find(point->GetId())) table.Add(point->GetId());
    }
}

double ZoTrafo3d::CalcScale(const ZoVector& a, const ZoVector& b, double distance) {
    constexpr double kCoinciding = 1e-10;
    const double length = (b - a).Abs();
    return length == 0.0 ? kCoinciding : distance / length;
}

void ZoTrafo3d::unvect(const ZoVector& a, const ZoVector& b, const ZoVector& c, ZoMatrix* frame) {
    frame->MakeRotMatrix(a, b, c);
}

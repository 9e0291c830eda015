// What a photo sees: its field of view, tests of visibility, distances to its object points.

#include <algorithm>
#include <cmath>
#include <limits>

#include "zorv/photo/photo.h"
#include "zorv/photo/photo_list.h"
#include "zorv/rectify/plane_fit.h"

namespace {

constexpr double kFarDepth = 1.5;  // of the largest distance to an object point

ZoPlane PlaneThrough(std::initializer_list<const ZoPoint*> points) {
    ZoPointList list;
    for (const ZoPoint* point : points)
        list.Add(*point);
    ZoCalcPlane fit;
    fit.CalcPlaneFromFilteredPoints(&list, true, false);
    return fit.GetPlane();
}

double SquaredLength(const ZoVector& v) {
    return v[1] * v[1] + v[2] * v[2] + v[3] * v[3];
}

/// The distances from a projection centre to object points.
struct Distances {
    double min = 0.0;
    double max = 0.0;
    double mean = 0.0;
    std::int32_t count = 0;

    static Distances Of(const ZoPhoto& photo, const ZoSortHelper<ZoPoint>& coordinates) {
        Distances result{std::numeric_limits<double>::max(), std::numeric_limits<double>::min(), 0.0, 0};
        double sum = 0.0;
        for (const ZoPoint* imo = photo.FirstImo(); imo; imo = imo->NextConst()) {
            const ZoPoint* const point = coordinates.Find(imo->GetId());
            if (!point) continue;
            const double distance = photo.Distance(*point);
            result.min = std::min(result.min, distance);
            result.max = std::max(result.max, distance);
            sum += distance;
            ++result.count;
        }
        if (result.count == 0) return {};
        result.mean = sum / result.count;
        return result;
    }

    void Give(ZoPhoto& photo) const {
        photo.minCooDistance = min;
        photo.maxCooDistance = max;
        photo.meanCooDistance = mean;
        photo.cooDistanceCount = count;
    }
};

}  // namespace

bool ZoPhoto::CalcFieldOfViewPlanes() {
    ZoPhotoFieldOfView& view = fieldOfView;
    if (view.valid) return true;
    if (!hasAOR) return false;
    const ZoRegion& region = GetBikoRegion();
    const ZoPoint image[ZoPhotoFieldOfView::kSides] = {region.GetLL(), region.GetLR(), region.GetUR(), region.GetUL()};

    view.apex = ZoPoint(5, posAOR[1], posAOR[2], posAOR[3], 0);
    for (unsigned int i = 0; i < ZoPhotoFieldOfView::kSides; ++i) {
        // Mirrored through the projection centre: the sides of the pyramid lie in the same planes.
        const ZoVector corner = posAOR - rotAOR * ZoVector(image[i].x, image[i].y, -camera.c);
        view.corners[i] = ZoPoint(i + 1, corner[1], corner[2], corner[3], 0);
    }
    for (int i = 0; i < ZoPhotoFieldOfView::kSides; ++i)
        view.sidePlanes[i] =
            PlaneThrough({&view.apex, &view.corners[i], &view.corners[(i + 1) % ZoPhotoFieldOfView::kSides]});
    view.basePlane = PlaneThrough({&view.corners[0], &view.corners[1], &view.corners[2], &view.corners[3]});
    view.valid = true;

    for (ZoPoint& point : view.farPoints)
        point = ZoPoint();
    if (cooDistanceCount == 0) return true;
    ZoPoint end;
    CalcRayEndPoint(&end, &end, maxCooDistance * kFarDepth);
    ZoPlane farPlane = view.basePlane;
    farPlane.D() -= farPlane.Dist(end);
    for (int i = 0; i < ZoPhotoFieldOfView::kSides; ++i) {
        // The corners are Biko coordinates already; corrected they are those of the corner rays.
        ZoPoint corner = image[i];
        ConvertBiko(&corner, eBikoToImage);
        CalcSipNoErrorCheck(&view.farPoints[i], farPlane, &corner);
    }
    return true;
}

bool ZoPhoto::IsViewIntersect(const ZoPhoto& other, bool ifUnknown) const {
    return fieldOfView.Intersect(other.fieldOfView, ifUnknown);
}

bool ZoPhoto::IsInPhotoView(const ZoPoint& objectPoint, bool checkDirection) const {
    if (!IsActive() || !hasAOR) return false;
    const ZoBikoTransform toBiko(this, eObjectToBiko, false);
    ZoPoint seen(objectPoint);
    toBiko.Transform(&seen);
    ZoRegion region = GetBikoRegion();
    region.Sort();
    if (!region.Overlap(seen)) return false;
    return !checkDirection || toBiko.IsInPhotoView(objectPoint.x, objectPoint.y, objectPoint.z);
}

bool ZoPhoto::IsSamePointOfView(const ZoPhoto& other, double tolerance) const {
    if (id == other.id) return true;
    if (!tpsSetupId.empty() && !other.tpsSetupId.empty())
        return tpsSetupId.find(other.tpsSetupId) != std::wstring::npos;
    return Distance(other) <= tolerance;
}

bool ZoPhoto::IsLookingInSameDirection(const ZoPhoto& other) const {
    return rotAOR.IsLookingInSameDirection(other.rotAOR);
}

double ZoPhoto::CalcAngle(const ZoPhoto& other) const {
    return rotAOR.CalcAngle(other.rotAOR);
}

double ZoPhoto::Distance(const ZoPhoto& other) const {
    return std::sqrt(Distance2(other));
}

double ZoPhoto::Distance(const ZoPoint& point) const {
    return std::sqrt(Distance2(point));
}

double ZoPhoto::Distance2(const ZoPhoto& other) const {
    return SquaredLength(posAOR - other.posAOR);
}

double ZoPhoto::Distance2(const ZoPoint& point) const {
    return SquaredLength(posAOR - ZoVector(point.x, point.y, point.z));
}

void ZoPhoto::CalcPhotoCooDistances(const ZoPhotoList* photos, const ZoPointList* coordinates) {
    if (!photos || !coordinates) return;
    const ZoSortHelper<ZoPoint> known(zorv::detail::ForLookups(coordinates));
    Distances best;
    bool waiting = false;
    for (ZoPhoto* photo = photos->First(); photo; photo = photo->Next()) {
        Distances().Give(*photo);
        if (!photo->hasAOR) continue;
        if (photo->imoList.IsEmpty()) {
            waiting = true;
            continue;
        }
        const Distances own = Distances::Of(*photo, known);
        own.Give(*photo);
        photo->CalcFieldOfViewPlanes();
        if (own.max > best.max) best = own;
    }
    if (!waiting) return;
    best.count = 1;
    for (ZoPhoto* photo = photos->First(); photo; photo = photo->Next()) {
        if (!photo->hasAOR || photo->cooDistanceCount != 0) continue;
        best.Give(*photo);
        photo->CalcFieldOfViewPlanes();
    }
}

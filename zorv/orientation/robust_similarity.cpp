#include <algorithm>
#include <cstdint>

#include "zorv/math/bounding_box3d.h"
#include "zorv/math/vector3d.h"
#include "zorv/orientation/control_lookup.h"
#include "zorv/orientation/random_index.h"
#include "zorv/orientation/similarity.h"

namespace {

using zorv::detail::ControlLookup;
using zorv::detail::ForLookups;

constexpr int kSmallestSample = 4;
constexpr int kFewestAttempts = 12;
constexpr int kMostAttempts = 50;
constexpr double kEnough = 0.8;  // share of the common points with which the search is content

ZoPoint* AddCleared(ZoPointList& list, const ZoPoint& point) {
    ZoPoint* copy = list.Add(point);
    copy->ClearFlag(ZoTrafo3d::kHasResidual | ZoTrafo3d::kRejected);
    return copy;
}

/// Control point minus transformed point.
ZoVector3d Residual(const ZoMatrix& m, const ZoPoint& point, const ZoPoint& control) {
    double x = point.x;
    double y = point.y;
    double z = point.z;
    m.PTrans3D(&x, &y, &z);
    return {control.x - x, control.y - y, control.z - z};
}

/// Moves the points of these ids to the end of the other list, in the order of the first one.
void MovePoints(ZoPointList& from, ZoPointList& to, const std::set<unsigned int>& ids) {
    for (ZoPoint* point = from.First(); point;)
        point = ids.contains(point->GetId()) ? from.Move(point, to) : point->Next();
}

void MoveSample(ZoPointList& from, ZoPointList& to, const ZoSortHelper<ZoPoint>& byId, const ZoIdTable& ids,
                unsigned int size) {
    ZoGenerateRandomIndex random;
    random.Generate(size, static_cast<unsigned int>(ids.Size()));
    for (const unsigned int index : random.GetIndices()) {
        if (ZoPoint* point = byId.Find(ids[static_cast<int>(index)])) from.Move(point, to);
    }
}

}  // namespace

eTrafo3DStatus ZoTrafo3d::RobustCalcByControlPointsAndTransform(ZoPointList* result, ZoPointList* rejected,
                                                                ZoPointList* rejectedControls,
                                                                const ZoPointList& controls, const ZoPointList& source,
                                                                double threshold, bool thresholdIsAbsolute,
                                                                double blend, int minPoints, bool, int extraPoints,
                                                                int extraSample) {
    status = eTrafo3DOk;
    ZoPointList commonControls, commonSources, loneControls, loneSources;
    ZoIdTable commonIds;
    ZoBoundingBox3d box;
    RobustSplitLists(controls, source, commonControls, commonSources, loneControls, loneSources, commonIds, box);
    if (commonIds.Size() < minPoints) return status = eTrafo3DTooFewPoints;

    const ZoSortHelper<ZoPoint> helper(&commonControls);
    const double limit = thresholdIsAbsolute ? threshold : threshold * box.GetMax();
    const double limitSq = limit * limit;
    if (RobustCalcAndCheckByControlPoints(helper, &commonSources, limitSq, minPoints) != eRobustOk) {
        status = eTrafo3DTooFewPoints;
        const bool isSearch = commonIds.Size() >= std::int64_t{minPoints} + extraPoints;
        if (!isSearch || !RobustSearch(helper, commonSources, commonIds, limitSq, minPoints, extraSample)) {
            worstPoint = nullptr;  // it goes with the lists
            return status;
        }
    }

    ZoPointList accepted, bad, badControls;
    Transform(&accepted, &bad, &badControls, &commonSources, limit, helper, blend);
    ZoPointList* const badTarget = rejected ? rejected : result;
    if (worstPoint && !(worstPoint->IsFlagSet(kRejected) ? badTarget : result)) worstPoint = nullptr;
    bad.MoveTo(badTarget);
    badControls.MoveTo(rejectedControls);
    accepted.MoveTo(result);
    InPlaceTransform(&loneSources);
    loneSources.MoveTo(result);
    loneControls.MoveTo(result);
    return status = eTrafo3DOk;
}

// M. A. Fischler, R. C. Bolles: Random sample consensus, Comm. ACM 24 (1981) 381-395, with the last fit over the
// largest set of points that agree.
bool ZoTrafo3d::RobustSearch(const ZoSortHelper<ZoPoint>& controls, ZoPointList& sources, const ZoIdTable& commonIds,
                             double limitSq, int minPoints, int extraSample) {
    const std::int64_t count = commonIds.Size();
    const std::int64_t sampleSize = std::clamp<std::int64_t>(std::int64_t{kSmallestSample} + extraSample, 0, count);
    const std::int64_t attempts = std::clamp<std::int64_t>(2 * count, kFewestAttempts, kMostAttempts);
    // The same points are at hand in each attempt, though in another order.
    const ZoSortHelper<ZoPoint> byId(&sources);
    std::set<unsigned int> best;
    ZoPointList tried;
    for (std::int64_t i = 0; i < attempts && static_cast<double>(best.size()) <= kEnough * static_cast<double>(count);
         ++i) {
        MoveSample(sources, tried, byId, commonIds, static_cast<unsigned int>(sampleSize));
        if (RobustCalcAndCheckByControlPoints(controls, &tried, limitSq, minPoints) == eRobustOk) {
            std::set<unsigned int> good, bad;
            RobustTryAndAddPoints(good, bad, limitSq, controls, sources);
            for (const ZoPoint* point = tried.First(); point; point = point->NextConst())
                good.insert(point->GetId());
            MovePoints(sources, tried, good);
            if (CalcByControlPoints(controls, &tried, minPoints, false) && good.size() > best.size()) best.swap(good);
        }
        tried.MoveTo(&sources);
    }
    if (best.empty()) {
        status = eTrafo3DNoSolution;
        return false;
    }
    MovePoints(sources, tried, best);
    const bool isFitted = CalcByControlPoints(controls, &tried, minPoints, false);
    tried.MoveTo(&sources);
    return isFitted;
}

void ZoTrafo3d::RobustSplitLists(const ZoPointList& controls, const ZoPointList& source, ZoPointList& commonControls,
                                 ZoPointList& commonSources, ZoPointList& loneControls, ZoPointList& loneSources,
                                 ZoIdTable& commonIds, ZoBoundingBox3d& box) {
    // The first points of an id in both lists are a pair; further ones have no partner.
    const ZoSortHelper<ZoPoint> controlsById(ForLookups(&controls));
    const ZoSortHelper<ZoPoint> sourcesById(ForLookups(&source));
    ControlLookup findControl(controlsById);
    ControlLookup findSource(sourcesById);
    for (const ZoPoint* control = controls.First(); control; control = control->NextConst()) {
        const unsigned int id = control->GetId();
        const ZoPoint* partner = findControl.Find(id) == control ? findSource.Find(id) : nullptr;
        if (!partner) {
            loneControls.Add(*control);
            continue;
        }
        AddCleared(commonControls, *control);
        AddCleared(commonSources, *partner);
        commonIds.Add(id);
        box.Update(control->x, control->y, control->z);
    }
    for (const ZoPoint* point = source.First(); point; point = point->NextConst()) {
        const unsigned int id = point->GetId();
        if (findSource.Find(id) != point || !findControl.Find(id)) AddCleared(loneSources, *point);
    }
}

eRobustStatus ZoTrafo3d::RobustCalcAndCheckByControlPoints(const ZoSortHelper<ZoPoint>& controls, ZoPointList* list,
                                                           double limitSq, int minPoints) {
    if (!CalcByControlPoints(controls, list, minPoints, false)) return eRobustCalcFailed;
    return RobustCheckTransformQuality(controls, list, limitSq);
}

eRobustStatus ZoTrafo3d::RobustCheckTransformQuality(const ZoSortHelper<ZoPoint>& controls, ZoPointList* list,
                                                     double limitSq) {
    const ZoMatrix m = GetAsMatrix();
    ClearResiduals();
    double worstSq = 0.0;
    ControlLookup lookup(controls);
    for (ZoPoint* point = list->First(); point; point = point->Next()) {
        const ZoPoint* control = lookup.Find(point->GetId());
        const ZoVector3d residual = control ? Residual(m, *point, *control) : ZoVector3d();
        point->dx = residual.x();
        point->dy = residual.y();
        point->dz = residual.z();
        if (const double squared = residual.dot(residual); squared > worstSq) {
            worstSq = squared;
            worstPoint = point;
        }
        AddResidual(*point);
    }
    FinishResiduals();
    const double rmsSq = rmsX * rmsX + rmsY * rmsY + rmsZ * rmsZ;
    // What is not a number is beyond any limit.
    const bool isRmsExceeded = !(rmsSq <= limitSq);
    if (worstSq <= limitSq) return isRmsExceeded ? eRobustRmsExceeded : eRobustOk;
    return isRmsExceeded ? eRobustBothExceeded : eRobustWorstExceeded;
}

void ZoTrafo3d::RobustTryAndAddPoints(std::set<unsigned int>& good, std::set<unsigned int>& bad, double limitSq,
                                      const ZoSortHelper<ZoPoint>& controls, const ZoPointList& list) {
    const ZoMatrix m = GetAsMatrix();
    ControlLookup lookup(controls);
    for (const ZoPoint* point = list.First(); point; point = point->NextConst()) {
        const ZoPoint* control = lookup.Find(point->GetId());
        if (!control) continue;
        const ZoVector3d residual = Residual(m, *point, *control);
        std::set<unsigned int>& set = residual.dot(residual) <= limitSq ? good : bad;
        set.insert(set.end(), point->GetId());
    }
}

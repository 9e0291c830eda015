#include <algorithm>
#include <cmath>
#include <iterator>

#include "zorv/math/region.h"
#include "zorv/orientation/partner_finder.h"
#include "zorv/orientation/planar_fit.h"

namespace {

/// Mean squares of residuals on their way.
struct ResidualSums {
    void Add(double rx, double ry) {
        x += rx * rx;
        y += ry * ry;
        ++count;
    }
    double RmsX() const { return count > 0 ? std::sqrt(x / count) : 0.0; }
    double RmsY() const { return count > 0 ? std::sqrt(y / count) : 0.0; }

    double x = 0.0;
    double y = 0.0;
    int count = 0;
};

/// Sets the residuals of all points to 0, flags each point that has a partner and gives it to `take`, with what its
/// residuals are.
template <class Take>
ResidualSums WalkResiduals(const ZoTrafo2d& trafo, const ZoPointList& list, ZoPointList* targets, Take take) {
    zorv::detail::PartnerFinder partners(targets);
    ResidualSums sums;
    for (ZoPoint* point = list.First(); point; point = point->Next()) {
        point->residualX = 0.0;
        point->residualY = 0.0;
        const auto partner = partners.Find(*point);
        if (!partner) continue;
        double x = point->x;
        double y = point->y;
        trafo.Transform(&x, &y);
        const double rx = x - partner->x;
        const double ry = y - partner->y;
        sums.Add(rx, ry);
        point->SetFlag(ZoCalcTrafo2D::kHasResidual);
        take(*point, rx, ry);
    }
    return sums;
}

}  // namespace

bool ZoCalcTrafo2D::CalcResiduals(ZoPointList* list) {
    const ZoPointList* points = list ? list : actList;
    double greatest = 0.0;
    unsigned int worst = 0;
    const ResidualSums sums = WalkResiduals(*this, *points, ppList, [&](ZoPoint& point, double rx, double ry) {
        point.residualX = rx;
        point.residualY = ry;
        const double squared = rx * rx + ry * ry;
        if (squared > greatest) {
            greatest = squared;
            worst = point.GetId();
        }
    });
    residualX = sums.RmsX();
    residualY = sums.RmsY();
    maxError = worst;
    return true;
}

void ZoCalcTrafo2D::CalcResiduals(double& maxX, double& maxY, int& countWithin, double limit, const ZoPointList* list) {
    const ZoPointList* points = list ? list : actList;
    double greatest = 0.0;
    maxX = 0.0;
    maxY = 0.0;
    countWithin = 0;
    const ResidualSums sums = WalkResiduals(*this, *points, ppList, [&](const ZoPoint&, double rx, double ry) {
        const double squared = rx * rx + ry * ry;
        if (squared > greatest) {
            greatest = squared;
            maxX = rx;
            maxY = ry;
        }
        if (squared < limit * limit) ++countWithin;
    });
    residualX = sums.RmsX();
    residualY = sums.RmsY();
}

eZoTrafo2DType ZoCalcTrafo2D::SuggestTrafoByPointsNbr(ZoPointList* list) {
    constexpr int kFewestOfPolynomial = 10;
    const ZoPointList* points = list ? list : actList;
    const int count = points->Count();
    if (count < 2) return eTrafo2DNone;
    if (count == 2) return eTrafo2DHelmert;
    if (count == 3) return eTrafo2DAffin;
    return count < kFewestOfPolynomial ? eTrafo2DProjektiv : eTrafo2DPolynomial;
}

eZoTrafo2DType ZoCalcTrafo2D::SuggestTrafoByDistrib(const ZoRegion& region, ZoPointList* list) {
    constexpr int kFewestOfPolynomial = 13;
    const eZoTrafo2DType byNumber = SuggestTrafoByPointsNbr(list);
    if (byNumber != eTrafo2DProjektiv && byNumber != eTrafo2DPolynomial) return byNumber;

    double l = 0.0;
    double b = 0.0;
    double r = 0.0;
    double t = 0.0;
    region.Get(l, b, r, t);
    const double w = region.Width();
    const double h = region.Height();
    const double middleX = l + w / 2.0;
    const double middleY = b + h / 2.0;
    const ZoRegion parts[] = {
        ZoRegion(l + w / 3.0, b + h / 3.0, r - w / 3.0, t - h / 3.0),  // centre
        ZoRegion(middleX, b, r, middleY),                              // right lower
        ZoRegion(l, middleY, middleX, t),                              // left upper
        ZoRegion(middleX, middleY, r, t),                              // right upper
        ZoRegion(l, b, middleX, middleY),                              // left lower
    };
    bool marked[std::size(parts)] = {};
    int count = 0;
    const ZoPointList* points = list ? list : actList;
    for (const ZoPoint* point = points->First(); point; point = point->NextConst(), ++count) {
        // A point on a border counts for the first of the parts alone.
        const auto* part = std::find_if(std::begin(parts), std::end(parts),
                                        [&](const ZoRegion& each) { return each.Overlap(*point); });
        if (part != std::end(parts)) marked[part - std::begin(parts)] = true;
    }
    if (!std::all_of(std::begin(marked), std::end(marked), [](bool each) { return each; })) return eTrafo2DAffin;
    return count < kFewestOfPolynomial ? eTrafo2DProjektiv : eTrafo2DPolynomial;
}

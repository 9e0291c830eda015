#include "registration.h"

#include <algorithm>
#include <cmath>
#include <set>

#include "drawing.h"

namespace {

constexpr double kThreshold = 0.020;  // metres, longest residual of a good point
constexpr int kSmallestFit = 3;
constexpr double kGonOfRadian = 200.0 / 3.14159265358979323846;
const char* const kGood = "#008055";
const char* const kWrong = "#b10027";

std::string Millimetres(double metres) {
    return StringPrintf("%.1f", metres * 1000);
}

double Length(const ZoPoint& point) {
    return std::hypot(point.dx, point.dy, point.dz);
}

}  // namespace

Registration::Registration(const ZoPointList& firstCampaign, const SecondCampaign& secondCampaign)
    : first(firstCampaign), second(secondCampaign) {}

bool Registration::Run() {
    if (!direct.CalcByControlPoints(&first, &second.points, kSmallestFit, false)) return false;
    direct.Transform(directPoints, second.points, &first, true);
    const eTrafo3DStatus status = robust.RobustCalcByControlPointsAndTransform(
        &accepted, &rejected, nullptr, first, second.points, kThreshold, true, 0.0, kSmallestFit, false, 2, 0);
    accepted.SortById();
    return status == eTrafo3DOk;
}

bool Registration::FoundAllBlunders() const {
    std::set<unsigned int> found;
    for (const ZoPoint* point = rejected.First(); point; point = point->NextConst())
        found.insert(point->GetId());
    return found == second.blunders;
}

double Registration::RotationError(const ZoTrafo3d& trafo) const {
    ZoMatrix back(second.rotation);
    back.Invert();
    const ZoMatrix difference = back * trafo.rotation;
    const double cosine = (difference[1][1] + difference[2][2] + difference[3][3] - 1.0) / 2.0;
    return std::acos(std::clamp(cosine, -1.0, 1.0)) * kGonOfRadian * 1000;
}

std::string Registration::DirectPicture() const {
    return Picture(directPoints, "Direct fit of all common points");
}

std::string Registration::RobustPicture() const {
    ZoPointList all(accepted);
    rejected.CopyTo(&all);
    return Picture(all, "Robust fit");
}

std::string Registration::Picture(const ZoPointList& points, const char* title) const {
    constexpr double kArrowPixels = 60;
    std::vector<Place> places;
    for (const ZoPoint* point = points.First(); point; point = point->NextConst())
        places.push_back({point->x, point->y});
    const Extent extent = ExtentOf(places);
    Drawing drawing(860, 640);
    drawing.ShowTrue(extent.low, extent.high);
    drawing.Grid();
    // Arrows show residuals in plan; those of blunders, which would cross the page, are cut to the longest.
    const double enlarge = kArrowPixels / drawing.PixelsPerUnit() / (2 * kThreshold);
    const double longest = kArrowPixels / drawing.PixelsPerUnit();
    for (const ZoPoint* point = points.First(); point; point = point->NextConst()) {
        const bool wrong = second.blunders.contains(point->GetId());
        const Place place{point->x, point->y};
        drawing.Dot(place, wrong ? kWrong : kGood);
        const double plan = std::hypot(point->dx, point->dy) * enlarge;
        const double factor = plan > longest ? enlarge * longest / plan : enlarge;
        drawing.Arrow(place, {point->x + factor * point->dx, point->y + factor * point->dy}, wrong ? kWrong : kGood);
        if (wrong) drawing.Label(place, std::to_string(point->GetId()));
    }
    drawing.Legend({{"good point", kGood}, {"planted blunder", kWrong}});
    drawing.Title(
        StringPrintf("%s: residuals %.0f times enlarged, at most %.0f mm", title, enlarge, longest / enlarge * 1000));
    drawing.ScaleBar("m");
    drawing.NorthArrow();
    return drawing.Svg();
}

std::vector<std::vector<std::string>> Registration::ResidualTable() const {
    ZoPointList byRobust(accepted);
    rejected.CopyTo(&byRobust);
    const ZoSortHelper<ZoPoint> robustPoints(&byRobust);
    ZoPointList controls(first);
    const ZoSortHelper<ZoPoint> controlPoints(&controls);
    std::vector<std::vector<std::string>> rows{
        {"Point", "direct dx", "dy", "dz", "robust dx", "dy", "dz", "length", "verdict"}};
    for (const ZoPoint* point = directPoints.First(); point; point = point->NextConst()) {
        const ZoPoint* const other = robustPoints.Find(point->GetId());
        if (!point->IsFlagSet(ZoTrafo3d::kHasResidual) || !other || !controlPoints.Find(point->GetId())) continue;
        const bool out = other->IsFlagSet(ZoTrafo3d::kRejected) != 0;
        rows.push_back({std::to_string(point->GetId()), Millimetres(point->dx), Millimetres(point->dy),
                        Millimetres(point->dz), Millimetres(other->dx), Millimetres(other->dy), Millimetres(other->dz),
                        Millimetres(Length(*other)), out ? "rejected" : "accepted"});
    }
    return rows;
}

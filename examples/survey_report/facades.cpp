#include "facades.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <numbers>

#include "survey_plan.h"

namespace {

constexpr unsigned int kGroupSize = 100;
constexpr double kGon = 200 / std::numbers::pi;
constexpr double kFlat = 0.050;  // metres; points that scatter more are no facade

/// Passes the points of one group of a hundred ids.
class GroupFilter : public ZoFilter {
  public:
    explicit GroupFilter(unsigned int first) : firstId(first) {}
    unsigned int Test(const ZoObject* object) const override {
        return object->GetId() >= firstId && object->GetId() < firstId + kGroupSize ? 1 : 0;
    }

  private:
    unsigned int firstId;
};

/// Copies of the points with these ids, in this order; fewer when the survey lacks one.
ZoPointList Chosen(const ZoPointList& survey, std::initializer_list<unsigned int> ids) {
    ZoPointList chosen;
    for (const unsigned int id : ids) {
        if (const ZoPoint* point = survey.ZoPointList::Find(id, 0, nullptr)) chosen.Add(*point);
    }
    return chosen;
}

double Millimetres(double metres) {
    return metres * 1000;
}

double Residual(const ZoPoint& point) {
    return std::hypot(point.dx, point.dy, point.dz);
}

double LargestResidual(const ZoPointList& points) {
    double largest = 0;
    for (const ZoPoint* p = points.First(); p; p = p->NextConst())
        largest = std::max(largest, Residual(*p));
    return largest;
}

}  // namespace

bool Facades::Fit(const ZoPointList& survey) {
    for (Facade& facade : facades) {
        ZoPointList points(survey);
        facade.fit.SetCooFilter(std::make_unique<GroupFilter>(facade.firstId).release());
        if (!facade.fit.CalcPlaneFromFilteredPoints(&points, true, false)) return false;
        if (facade.fit.GetZoPlaneSigma0() > kFlat) return false;
    }
    return facades[0].fit.GetPlane().CalcIntersection(cornerPoint, cornerDirection, facades[1].fit.GetPlane());
}

bool Facades::WriteFiles(const std::wstring& planeFile, const std::wstring& logFile) {
    ZoPlaneList planes;
    for (Facade& facade : facades) {
        ZoPlane plane(facade.fit.GetPlane());
        plane.SetId(facade.firstId);
        plane.SetName(L"Facade " + string2wstring(facade.name));
        planes.Add(plane);
        facade.fit.WriteLogfile(logFile);
    }
    if (planes.WriteFile(planeFile) != planes.Count()) return false;
    const ZoPlaneList back(planeFile);
    return back.Count() == planes.Count() && back.First()->CalcAngle(*planes.First()) < 1e-12;
}

void Facades::Construct(const ZoPointList& survey) {
    const ZoPointList eaves = Chosen(survey, {117, 118, 119});
    const ZoCadBalancedLine line(&eaves);
    if (line.IsValid()) {
        constructions.push_back(
            {"Line along the eaves, points 117 to 119",
             StringPrintf("%.3f m long, points off by up to %.1f mm", line.GetStart().Distance(line.GetEnd()),
                          Millimetres(line.GetMaxDeviation()))});
    }
    const ZoPointList ground = Chosen(survey, {305, 306, 308});
    const ZoCadArc arc(&ground);
    if (arc.IsOk()) {
        constructions.push_back(
            {"Arc on the ground through 305, 306, 308", StringPrintf("radius %.3f m about %.3f, %.3f", arc.GetRadius(),
                                                                     arc.GetCenterWCS().x, arc.GetCenterWCS().y)});
    }
    const ZoPointList corners = Chosen(survey, {103, 102, 122});
    const ZoCadRectangle rectangle(&corners, 0.05);
    if (rectangle.IsOk()) {
        constructions.push_back({"Rectangle on 103, 102, 122",
                                 StringPrintf("%.3f m by %.3f m, measured angle %.3f gon", rectangle.GetSideALength(),
                                              rectangle.GetSideBLength(), rectangle.GetAngle() * kGon)});
    }
}

double Facades::Angle() const {
    const double angle = facades[0].fit.GetPlane().CalcAngle(facades[1].fit.GetPlane()) * kGon;
    return std::min(angle, 200 - angle);
}

void Facades::Print() const {
    for (const Facade& facade : facades) {
        std::printf("  facade %s: %d points, sigma0 %.1f mm, largest residual %.1f mm\n", facade.name,
                    facade.fit.GetUsedPoints().Count(), Millimetres(facade.fit.GetZoPlaneSigma0()),
                    Millimetres(LargestResidual(facade.fit.GetUsedPoints())));
    }
    std::printf("  they meet at %.3f gon in a line through %.3f %.3f %.3f\n", Angle(), cornerPoint[1], cornerPoint[2],
                cornerPoint[3]);
    for (const Construction& each : constructions)
        std::printf("  %s: %s\n", each.what.c_str(), each.result.c_str());
}

void Facades::AddTo(ReportPage& page, const std::wstring& picture) const {
    page.Section("Facades");
    std::vector<std::vector<std::string>> rows{{"Facade", "Points", "sigma0 [mm]", "largest [mm]", "Normal"}};
    for (const Facade& facade : facades) {
        const ZoPlane& plane = facade.fit.GetPlane();
        rows.push_back({facade.name, std::to_string(facade.fit.GetUsedPoints().Count()),
                        StringPrintf("%.1f", Millimetres(facade.fit.GetZoPlaneSigma0())),
                        StringPrintf("%.1f", Millimetres(LargestResidual(facade.fit.GetUsedPoints()))),
                        StringPrintf("%.5f %.5f %.5f", plane.A(), plane.B(), plane.C())});
    }
    page.Table(rows);
    rows = {{"Construction", "Result"}};
    rows.push_back({"Angle between the facades", StringPrintf("%.3f gon", Angle())});
    rows.push_back({"Corner of the house at height 0", StringPrintf("%.3f, %.3f", cornerPoint[1], cornerPoint[2])});
    for (const Construction& each : constructions)
        rows.push_back({each.what, each.result});
    page.Table(rows);

    // The facade from the front: its points turned into the plane, coloured by their distance from it.
    static const std::vector<Mark> marks{
        {"up to 2 mm off the plane", "#008055"}, {"up to 4 mm", "#d08a00"}, {"more", "#b10027"}};
    const ZoPointList& used = facades[0].fit.GetUsedPoints();
    ZoPointList front;
    if (!ZoProjectPointListTo2d(&front, used)) return;
    std::vector<PlanPoint> points;
    const ZoPoint* flat = front.First();
    for (const ZoPoint* p = used.First(); p && flat; p = p->NextConst(), flat = flat->NextConst()) {
        const double off = Millimetres(Residual(*p));
        points.push_back({flat->x, flat->y, std::to_string(p->GetId()), off <= 2 ? 0u : off <= 4 ? 1u : 2u});
    }
    page.Picture(picture, DrawPlan(points, marks, 900, 700, PlanView::kWall), L"Facade A from the front", 900, 700);
}

#include "survey_plan.h"

#include <algorithm>

std::string DrawPlan(const std::vector<PlanPoint>& points, const std::vector<Mark>& marks, int width, int height,
                     PlanView view) {
    std::vector<Place> places;
    places.reserve(points.size());
    for (const PlanPoint& point : points)
        places.push_back({point.x, point.y});
    auto [low, high] = ExtentOf(places);
    high = {std::max(high.x, low.x + 1.0), std::max(high.y, low.y + 1.0)};

    Drawing plan(width, height);
    plan.ShowTrue(low, high);
    plan.Grid();
    for (const PlanPoint& point : points) {
        plan.Dot({point.x, point.y}, marks[point.mark].colour);
        plan.Label({point.x, point.y}, point.name);
    }
    plan.Legend(marks);
    plan.ScaleBar("m");
    if (view == PlanView::kGround) plan.NorthArrow();
    return plan.Svg();
}

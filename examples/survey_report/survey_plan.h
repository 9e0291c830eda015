#pragma once

#include <string>

#include <zorv/zorv.h>

/// How a point of the plan is drawn.
struct PlanMark {
    const char* label;   ///< text of the legend
    const char* colour;  ///< CSS colour
};

/// A point of the plan: metres, x to the east, y to the north, and its kind as an index into the marks.
struct PlanPoint {
    double x = 0;
    double y = 0;
    std::string name;
    std::size_t mark = 0;
};

/// What the drawing shows: the ground from above, north up, or a wall from the front, without a north arrow.
enum class PlanView { kGround, kWall };

/// A plan to scale as SVG text with a grid of round coordinates, a scale bar and a legend. Labels that would cover each
/// other are left out. Points without finite coordinates are not drawn.
std::string DrawPlan(const std::vector<PlanPoint>& points, const std::vector<PlanMark>& marks, int width, int height,
                     PlanView view = PlanView::kGround);

#pragma once

#include <string>
#include <vector>

#include "drawing.h"

/// A point of the plan: metres, x to the east, y to the north, and its kind as an index into the marks.
struct PlanPoint {
    double x = 0;
    double y = 0;
    std::string name;
    std::size_t mark = 0;
};

/// What the drawing shows: the ground from above, north up, or a wall from the front, without a north arrow.
enum class PlanView { kGround, kWall };

/// A plan to scale as SVG text with a grid of round coordinates, a scale bar and a legend.
std::string DrawPlan(const std::vector<PlanPoint>& points, const std::vector<Mark>& marks, int width, int height,
                     PlanView view = PlanView::kGround);

#include "survey_plan.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace {

constexpr double kMargin = 60;
constexpr double kLegendHeight = 34;

/// printf into a string.
template <class... Values>
std::string Text(const char* format, Values... values) {
    char text[400];
    std::snprintf(text, sizeof text, format, values...);
    return text;
}

/// The largest of 1, 2, 5 times a power of ten that divides the extent into about eight parts.
double GridStep(double extent) {
    const double rough = extent / 8;
    const double power = std::pow(10.0, std::floor(std::log10(rough)));
    for (const double factor : {1.0, 2.0, 5.0}) {
        if (factor * power >= rough) return factor * power;
    }
    return 10 * power;
}

/// Maps metres to picture coordinates, y down.
struct Frame {
    double x0 = 0, y0 = 0;        // lower left corner in metres
    double scale = 1;             // picture units a metre
    double left = 0, bottom = 0;  // the same corner in the picture

    double X(double x) const { return left + (x - x0) * scale; }
    double Y(double y) const { return bottom - (y - y0) * scale; }
};

/// Rectangles that are taken already by labels.
class Occupied {
  public:
    bool Take(double x, double y, double width, double height) {
        for (const Box& box : boxes) {
            if (x < box.x + box.width && box.x < x + width && y < box.y + box.height && box.y < y + height)
                return false;
        }
        boxes.push_back({x, y, width, height});
        return true;
    }

  private:
    struct Box {
        double x, y, width, height;
    };
    std::vector<Box> boxes;
};

std::string Grid(const Frame& frame, double xmax, double ymax, double step) {
    std::string svg = "<g stroke=\"#ddd\" fill=\"#777\" font-size=\"10\">\n";
    const double top = frame.Y(ymax);
    const double right = frame.X(xmax);
    for (double x = std::ceil(frame.x0 / step) * step; x <= xmax; x += step) {
        svg +=
            Text("<line x1=\"%.1f\" y1=\"%.1f\" x2=\"%.1f\" y2=\"%.1f\"/>", frame.X(x), frame.bottom, frame.X(x), top);
        svg += Text("<text x=\"%.1f\" y=\"%.1f\" text-anchor=\"middle\" stroke=\"none\">%.10g</text>\n", frame.X(x),
                    frame.bottom + 14, x);
    }
    for (double y = std::ceil(frame.y0 / step) * step; y <= ymax; y += step) {
        svg +=
            Text("<line x1=\"%.1f\" y1=\"%.1f\" x2=\"%.1f\" y2=\"%.1f\"/>", frame.left, frame.Y(y), right, frame.Y(y));
        svg += Text("<text x=\"%.1f\" y=\"%.1f\" text-anchor=\"end\" stroke=\"none\">%.10g</text>\n", frame.left - 5,
                    frame.Y(y) + 3, y);
    }
    return svg + "</g>\n";
}

std::string ScaleBar(const Frame& frame, double step, double x, double y) {
    const double length = step * frame.scale;
    return Text("<path d=\"M%.1f %.1f v5 h%.1f v-5\" fill=\"none\" stroke=\"#000\"/>", x - length, y, length) +
           Text("<text x=\"%.1f\" y=\"%.1f\" font-size=\"11\" text-anchor=\"middle\">%g m</text>\n", x - length / 2, y,
                step);
}

}  // namespace

std::string DrawPlan(const std::vector<PlanPoint>& points, const std::vector<PlanMark>& marks, int width, int height,
                     PlanView view) {
    std::vector<const PlanPoint*> drawn;
    for (const PlanPoint& point : points) {
        if (std::isfinite(point.x) && std::isfinite(point.y)) drawn.push_back(&point);
    }
    std::string svg = Text(
        "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"%d\" height=\"%d\" viewBox=\"0 0 %d %d\" "
        "font-family=\"sans-serif\">\n<rect width=\"100%%\" height=\"100%%\" fill=\"#fff\"/>\n",
        width, height, width, height);
    if (drawn.empty()) return svg + "<text x=\"20\" y=\"30\">no points</text>\n</svg>\n";

    const auto byX = [](const PlanPoint* a, const PlanPoint* b) { return a->x < b->x; };
    const auto byY = [](const PlanPoint* a, const PlanPoint* b) { return a->y < b->y; };
    const auto [west, east] = std::minmax_element(drawn.begin(), drawn.end(), byX);
    const auto [south, north] = std::minmax_element(drawn.begin(), drawn.end(), byY);
    const double extentX = std::max((*east)->x - (*west)->x, 1.0);
    const double extentY = std::max((*north)->y - (*south)->y, 1.0);
    const double step = GridStep(std::max(extentX, extentY));

    Frame frame;
    const double roomX = width - 2 * kMargin;
    const double roomY = height - 2 * kMargin - kLegendHeight;
    frame.scale = std::min(roomX / extentX, roomY / extentY);
    frame.x0 = (*west)->x;
    frame.y0 = (*south)->y;
    frame.left = kMargin + (roomX - extentX * frame.scale) / 2;
    frame.bottom = height - kMargin - (roomY - extentY * frame.scale) / 2;
    svg += Grid(frame, (*east)->x, (*north)->y, step);

    Occupied occupied;
    for (const PlanPoint* point : drawn) {
        const double x = frame.X(point->x);
        const double y = frame.Y(point->y);
        svg += Text("<circle cx=\"%.1f\" cy=\"%.1f\" r=\"2.5\" fill=\"%s\"/>", x, y, marks[point->mark].colour);
        const double labelWidth = 6.5 * static_cast<double>(point->name.size());
        if (occupied.Take(x + 4, y - 12, labelWidth, 11)) {
            svg += Text("<text x=\"%.1f\" y=\"%.1f\" font-size=\"10\">", x + 4, y - 3) + point->name + "</text>";
        }
        svg += '\n';
    }

    double x = kMargin;
    for (const PlanMark& mark : marks) {
        svg += Text("<circle cx=\"%.1f\" cy=\"22\" r=\"4\" fill=\"%s\"/>", x, mark.colour);
        svg += Text("<text x=\"%.1f\" y=\"26\" font-size=\"12\">%s</text>\n", x + 9, mark.label);
        x += 30 + 7.0 * static_cast<double>(std::char_traits<char>::length(mark.label));
    }
    svg += ScaleBar(frame, step, width - kMargin - 30, 22);
    if (view == PlanView::kGround) {
        svg += Text("<path d=\"M%d 34 v-24 l-4 8 h8 l-4 -8\" fill=\"#000\" stroke=\"#000\"/>", width - 45);
        svg += Text("<text x=\"%d\" y=\"26\" font-size=\"11\">N</text>\n", width - 38);
    }
    return svg + "</svg>\n";
}

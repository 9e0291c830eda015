#include "drawing.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <limits>

#include "report_page.h"

namespace {

constexpr double kMargin = 60;
constexpr double kHeadHeight = 34;  // legend, title, scale bar and north arrow stand here

/// printf into a string.
template <class... Values>
std::string Text(const char* format, Values... values) {
    char text[400];
    std::snprintf(text, sizeof text, format, values...);
    return text;
}

/// The smallest of 1, 2, 5 times a power of ten that divides the extent into at most eight parts.
double GridStep(double extent) {
    const double rough = extent / 8;
    const double power = std::pow(10.0, std::floor(std::log10(rough)));
    for (const double factor : {1.0, 2.0, 5.0}) {
        if (factor * power >= rough) return factor * power;
    }
    return 10 * power;
}

/// The first multiple of the step at or above a value, and the values from there.
std::vector<double> RoundValues(double low, double high, double step) {
    std::vector<double> values;
    for (double n = std::ceil(low / step); n * step <= high; ++n)
        values.push_back(n * step + 0.0);
    return values;
}

bool Finite(Place place) {
    return std::isfinite(place.x) && std::isfinite(place.y);
}

}  // namespace

double RoundBelow(double value) {
    const double power = std::pow(10.0, std::floor(std::log10(value)));
    for (const double factor : {5.0, 2.0}) {
        if (factor * power <= value) return factor * power;
    }
    return power;
}

Extent ExtentOf(const std::vector<Place>& places) {
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    Extent extent{{kInfinity, kInfinity}, {-kInfinity, -kInfinity}};
    for (const Place& place : places) {
        if (!Finite(place)) continue;
        extent.low = {std::min(extent.low.x, place.x), std::min(extent.low.y, place.y)};
        extent.high = {std::max(extent.high.x, place.x), std::max(extent.high.y, place.y)};
    }
    return Finite(extent.low) ? extent : Extent{{-0.5, -0.5}, {0.5, 0.5}};
}

Drawing::Drawing(int width, int height) : pageWidth(width), pageHeight(height) {
    ShowTrue({0, 0}, {1, 1});
}

void Drawing::Show(Place low, Place high, double pixelsX, double pixelsY) {
    lowest = low;
    highest = high;
    scaleX = pixelsX;
    scaleY = pixelsY;
    left = (pageWidth - (high.x - low.x) * pixelsX) / 2;
    const double roomY = pageHeight - 2 * kMargin - kHeadHeight;
    bottom = pageHeight - kMargin - (roomY - (high.y - low.y) * pixelsY) / 2;
}

void Drawing::ShowTrue(Place low, Place high) {
    const double extentX = std::max(high.x - low.x, 1e-9);
    const double extentY = std::max(high.y - low.y, 1e-9);
    const double scale =
        std::min((pageWidth - 2 * kMargin) / extentX, (pageHeight - 2 * kMargin - kHeadHeight) / extentY);
    Show(low, high, scale, scale);
}

void Drawing::ShowStretched(Place low, Place high) {
    const double extentX = std::max(high.x - low.x, 1e-9);
    const double extentY = std::max(high.y - low.y, 1e-9);
    Show(low, high, (pageWidth - 2 * kMargin) / extentX, (pageHeight - 2 * kMargin - kHeadHeight) / extentY);
}

void Drawing::Grid() {
    const bool sameScale = scaleX == scaleY;
    const double wide = highest.x - lowest.x;
    const double high = highest.y - lowest.y;
    const double stepX = GridStep(sameScale ? std::max(wide, high) : wide);
    const double stepY = GridStep(sameScale ? std::max(wide, high) : high);
    body += "<g stroke=\"#ddd\" fill=\"#777\" font-size=\"10\">\n";
    for (const double x : RoundValues(lowest.x, highest.x, stepX)) {
        body += Text("<line x1=\"%.1f\" y1=\"%.1f\" x2=\"%.1f\" y2=\"%.1f\"/>", X(x), bottom, X(x), Y(highest.y));
        body += Text("<text x=\"%.1f\" y=\"%.1f\" text-anchor=\"middle\" stroke=\"none\">%.10g</text>\n", X(x),
                     bottom + 14, x);
    }
    for (const double y : RoundValues(lowest.y, highest.y, stepY)) {
        body += Text("<line x1=\"%.1f\" y1=\"%.1f\" x2=\"%.1f\" y2=\"%.1f\"/>", left, Y(y), X(highest.x), Y(y));
        body += Text("<text x=\"%.1f\" y=\"%.1f\" text-anchor=\"end\" stroke=\"none\">%.10g</text>\n", left - 5,
                     Y(y) + 3, y);
    }
    body += "</g>\n";
}

void Drawing::AxisNames(const std::string& x, const std::string& y) {
    const double right = X(highest.x);
    body += Text("<text x=\"%.1f\" y=\"%.1f\" font-size=\"11\" text-anchor=\"end\">", right, bottom + 30) + Escape(x) +
            "</text>\n";
    const double beside = left - 44;
    const double middle = (bottom + Y(highest.y)) / 2;
    body +=
        Text("<text x=\"%.1f\" y=\"%.1f\" font-size=\"11\" text-anchor=\"middle\" transform=\"rotate(-90 %.1f %.1f)\">",
             beside, middle, beside, middle) +
        Escape(y) + "</text>\n";
}

void Drawing::Title(const std::string& text) {
    body += Text("<text x=\"%.1f\" y=\"46\" font-size=\"13\">", kMargin) + Escape(text) + "</text>\n";
}

void Drawing::Legend(const std::vector<Mark>& marks) {
    double x = kMargin;
    for (const Mark& mark : marks) {
        body += Text("<circle cx=\"%.1f\" cy=\"22\" r=\"4\" fill=\"%s\"/>", x, mark.colour);
        body += Text("<text x=\"%.1f\" y=\"26\" font-size=\"12\">%s</text>\n", x + 9, mark.label);
        x += 30 + 7.0 * static_cast<double>(std::char_traits<char>::length(mark.label));
    }
}

void Drawing::ScaleBar(const std::string& unit) {
    const double step = GridStep(std::max(highest.x - lowest.x, highest.y - lowest.y));
    const double length = step * scaleX;
    const double right = pageWidth - kMargin - 30;
    body += Text("<path d=\"M%.1f 22 v5 h%.1f v-5\" fill=\"none\" stroke=\"#000\"/>", right - length, length);
    body += Text("<text x=\"%.1f\" y=\"22\" font-size=\"11\" text-anchor=\"middle\">%g ", right - length / 2, step) +
            Escape(unit) + "</text>\n";
}

void Drawing::ScaleArrow(double length, const std::string& meaning, const char* colour) {
    constexpr double kRow = 42;
    const double right = highest.x;
    const double row = highest.y + (Y(highest.y) - kRow) / scaleY;
    Arrow({right - length, row}, {right, row}, colour);
    body += Text("<text x=\"%.1f\" y=\"%.1f\" font-size=\"11\" text-anchor=\"end\">", X(right - length) - 8, kRow + 4) +
            Escape(meaning) + "</text>\n";
}

void Drawing::NorthArrow() {
    body += Text("<path d=\"M%d 34 v-24 l-4 8 h8 l-4 -8\" fill=\"#000\" stroke=\"#000\"/>", pageWidth - 45);
    body += Text("<text x=\"%d\" y=\"26\" font-size=\"11\">N</text>\n", pageWidth - 38);
}

void Drawing::Dot(Place place, const char* colour, double radius) {
    if (!Finite(place)) return;
    body += Text("<circle cx=\"%.1f\" cy=\"%.1f\" r=\"%.1f\" fill=\"%s\"/>\n", X(place.x), Y(place.y), radius, colour);
}

void Drawing::Line(Place from, Place to, const char* colour, double width) {
    Polyline({from, to}, colour, width);
}

void Drawing::Polyline(const std::vector<Place>& places, const char* colour, double width) {
    std::string points;
    for (const Place& place : places) {
        if (Finite(place)) points += Text("%.1f,%.1f ", X(place.x), Y(place.y));
    }
    body += "<polyline points=\"" + points +
            Text("\" fill=\"none\" stroke=\"%s\" stroke-width=\"%.1f\"/>\n", colour, width);
}

void Drawing::Arrow(Place from, Place to, const char* colour) {
    if (!Finite(from) || !Finite(to)) return;
    const double x = X(to.x);
    const double y = Y(to.y);
    const double length = std::hypot(x - X(from.x), y - Y(from.y));
    if (length < 0.5) return;
    // The head: two strokes at 25 degrees, at most 6 pixels long.
    const double head = std::min(6.0, 0.4 * length);
    const double back = std::atan2(Y(from.y) - y, X(from.x) - x);
    body += Text("<path d=\"M%.1f %.1f L%.1f %.1f", X(from.x), Y(from.y), x, y);
    for (const double turn : {-0.44, 0.44})
        body += Text(" M%.1f %.1f l%.1f %.1f", x, y, head * std::cos(back + turn), head * std::sin(back + turn));
    body += Text("\" fill=\"none\" stroke=\"%s\"/>\n", colour);
}

void Drawing::Bar(double from, double to, double value, const char* colour) {
    if (!std::isfinite(value)) return;
    const double top = Y(std::max(value, 0.0));
    body += Text("<rect x=\"%.1f\" y=\"%.1f\" width=\"%.1f\" height=\"%.1f\" fill=\"%s\"/>\n", X(from), top,
                 X(to) - X(from), Y(std::min(value, 0.0)) - top, colour);
}

bool Drawing::TakeRoom(const Box& label) {
    for (const Box& box : labels) {
        if (label.x < box.x + box.width && box.x < label.x + label.width && label.y < box.y + box.height &&
            box.y < label.y + label.height)
            return false;
    }
    labels.push_back(label);
    return true;
}

void Drawing::Label(Place place, const std::string& text) {
    if (!Finite(place)) return;
    const double x = X(place.x) + 4;
    const double y = Y(place.y) - 3;
    if (!TakeRoom({x, y - 9, 6.5 * static_cast<double>(text.size()), 11})) return;
    body += Text("<text x=\"%.1f\" y=\"%.1f\" font-size=\"10\">", x, y) + Escape(text) + "</text>\n";
}

std::string Drawing::Svg() const {
    return Text(
               "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"%d\" height=\"%d\" viewBox=\"0 0 %d %d\" "
               "font-family=\"sans-serif\">\n<rect width=\"100%%\" height=\"100%%\" fill=\"#fff\"/>\n",
               pageWidth, pageHeight, pageWidth, pageHeight) +
           body + "</svg>\n";
}

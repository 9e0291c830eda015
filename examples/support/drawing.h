#pragma once

#include <string>
#include <vector>

/// A place on the ground of a drawing, y upwards.
struct Place {
    double x = 0;
    double y = 0;
};

/// A line of the legend.
struct Mark {
    const char* label;
    const char* colour;  ///< CSS colour
};

/// An SVG picture whose frame maps a ground (metres, millimetres, numbers of a graph) onto the page. Sizes in pixels.
/// Places that are not finite are not drawn.
class Drawing {
  public:
    Drawing(int width, int height);

    /// The rectangle that the drawing shows; the same scale on both axes.
    void ShowTrue(Place low, Place high);
    /// The rectangle that the drawing shows; each axis fills the page.
    void ShowStretched(Place low, Place high);

    /// Lines at round coordinates with their values.
    void Grid();
    /// What the axes of the grid are, with their units.
    void AxisNames(const std::string& x, const std::string& y);
    void Title(const std::string& text);
    void Legend(const std::vector<Mark>& marks);
    /// One step of the grid long.
    void ScaleBar(const std::string& unit);
    /// Shows how long an arrow of that many ground units is; for arrows that are not drawn in the scale of the ground.
    void ScaleArrow(double length, const std::string& meaning, const char* colour);
    void NorthArrow();

    void Dot(Place place, const char* colour, double radius = 2.5);
    void Line(Place from, Place to, const char* colour, double width = 1);
    void Arrow(Place from, Place to, const char* colour);
    void Polyline(const std::vector<Place>& places, const char* colour, double width = 1.5);
    void Bar(double left, double right, double value, const char* colour);
    /// Beside a place; left out where it would cover an earlier label.
    void Label(Place place, const std::string& text);

    /// Length of a ground unit on the page, along x.
    double PixelsPerUnit() const { return scaleX; }

    std::string Svg() const;

  private:
    struct Box {
        double x, y, width, height;
    };

    void Show(Place low, Place high, double pixelsX, double pixelsY);
    double X(double x) const { return left + (x - lowest.x) * scaleX; }
    double Y(double y) const { return bottom - (y - lowest.y) * scaleY; }
    bool TakeRoom(const Box& label);

    int pageWidth;
    int pageHeight;
    Place lowest;
    Place highest;
    double scaleX = 1;
    double scaleY = 1;
    double left = 0;
    double bottom = 0;
    std::vector<Box> labels;
    std::string body;
};

/// The largest of 1, 2, 5 times a power of ten that is not above a positive value.
double RoundBelow(double value);

/// The smallest rectangle around all finite places; one unit square around the origin when there are none.
struct Extent {
    Place low;
    Place high;
};
Extent ExtentOf(const std::vector<Place>& places);

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>

#include "zorv/cloud/histogram.h"

namespace ZorvMath {

namespace {

constexpr int kMargin = 5;
constexpr unsigned char kGround = 255;
constexpr unsigned char kZeroLine = 128;
constexpr unsigned char kPeak = 160;
constexpr unsigned char kValue = 0;

/// Sets a pixel, given by its column and the place of its row, if it lies inside.
void SetPixel(ValArray2DXY<unsigned char>& image, std::ptrdiff_t x, double y, unsigned char value) {
    if (x < 0 || x >= image.width || !(y > -1.0 && y < image.height)) return;
    image(static_cast<int>(x), static_cast<int>(y)) = value;
}

/// A level line from the left edge to a column, of dots of that length with gaps of the same.
void DrawDots(ValArray2DXY<unsigned char>& image, std::ptrdiff_t end, double y, std::ptrdiff_t dot) {
    end = std::min<std::ptrdiff_t>(end, image.width - 1);
    for (std::ptrdiff_t x = 0; x <= end; ++x) {
        if (x / dot % 2 == 0) SetPixel(image, x, y, kZeroLine);
    }
}

}  // namespace

void PlotHistogram(ValArray2DXY<unsigned char>& image, const std::vector<double>& values, const std::vector<int>& peaks,
                   double scale) {
    image.Set(0, 0);
    double min = 0.0;
    double max = 0.0;
    if (!values.empty()) {
        const auto [lowest, highest] = std::minmax_element(values.begin(), values.end());
        min = *lowest;
        max = *highest;
    }
    constexpr double kLargest = std::numeric_limits<std::int32_t>::max();
    const double height = (max - min) * scale + 2 * kMargin;
    const auto count = static_cast<std::ptrdiff_t>(values.size());
    if (!(height >= 1.0 && height <= kLargest) || static_cast<double>(count) > kLargest - 2 * kMargin) return;
    image.Set(static_cast<int>(count + 2 * kMargin), static_cast<int>(height));
    image.Fill(kGround);

    if (min < 0.0 && max > 0.0) {
        DrawDots(image, count + 2 * kMargin, kMargin - min * scale, 1);
    } else {
        DrawDots(image, count + kMargin, kMargin, 2);
    }
    for (std::ptrdiff_t i = 0; i < count; ++i)
        SetPixel(image, i + kMargin, (values[static_cast<std::size_t>(i)] - min) * scale + kMargin, kValue);
    for (const int peak : peaks) {
        for (int y = 0; y < kMargin; ++y)
            SetPixel(image, std::ptrdiff_t{peak} + kMargin, y, kPeak);
    }
}

}  // namespace ZorvMath

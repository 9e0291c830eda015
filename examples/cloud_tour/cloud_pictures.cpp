#include "cloud_pictures.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "drawing.h"

namespace {

constexpr int kLargestView = 420;  // cells
constexpr double kNothing = -std::numeric_limits<double>::infinity();

std::uint32_t Shaded(std::uint32_t colour, double light) {
    std::uint32_t shaded = 0;
    for (int shift = 0; shift < 24; shift += 8) {
        const double channel = static_cast<double>(colour >> shift & 0xff) * light;
        shaded |= static_cast<std::uint32_t>(std::clamp(channel, 0.0, 255.0)) << shift;
    }
    return shaded;
}

std::uint32_t Grey(int value) {
    return static_cast<std::uint32_t>(value) * 0x010101U;
}

}  // namespace

Raster TopView(const ZoPointCloud& cloud) {
    const ZoBoundingBox3d& box = cloud.GetBox();
    const double wide = std::max(box.Xmax() - box.Xmin(), 1e-6);
    const double high = std::max(box.Ymax() - box.Ymin(), 1e-6);
    // As many cells as points, so that few stay empty.
    const double cell =
        std::max(std::sqrt(wide * high / static_cast<double>(cloud.Size())) * 1.8, std::max(wide, high) / kLargestView);
    const int columns = static_cast<int>(wide / cell) + 1;
    const int rows = static_cast<int>(high / cell) + 1;
    const std::size_t size = static_cast<std::size_t>(columns) * static_cast<std::size_t>(rows);
    std::vector<double> top(size, kNothing);
    Raster view(columns, rows);
    for (const ZoScanPoint3d& point : cloud.GetPoints()) {
        const int column = static_cast<int>((point.x() - box.Xmin()) / cell);
        const int row = rows - 1 - static_cast<int>((point.y() - box.Ymin()) / cell);
        if (column < 0 || row < 0 || column >= columns || row >= rows) continue;
        double& height =
            top[static_cast<std::size_t>(row) * static_cast<std::size_t>(columns) + static_cast<std::size_t>(column)];
        if (point.z() <= height) continue;
        height = point.z();
        view.At(column, row) = point.GetColor() != 0 ? point.GetColor() : Grey(std::max(point.GetIntensity(), 160));
    }
    const auto heightAt = [&](int column, int row) {
        return top[static_cast<std::size_t>(row) * static_cast<std::size_t>(columns) +
                   static_cast<std::size_t>(column)];
    };
    for (int row = 1; row < rows; ++row) {
        for (int column = 1; column < columns; ++column) {
            const double own = heightAt(column, row);
            const double towardsLight = heightAt(column - 1, row - 1);
            if (own == kNothing || towardsLight == kNothing) continue;
            const double slope = (own - towardsLight) / (cell * 1.4);
            view.At(column, row) = Shaded(view.At(column, row), 1.0 - 0.35 * std::clamp(slope, -1.0, 1.0));
        }
    }
    return view;
}

HeightHistogram::HeightHistogram(const ZoPointCloud& cloud) {
    constexpr int kClasses = 60;
    const double high = cloud.GetBox().Zmax();
    low = cloud.GetBox().Zmin();
    step = std::max((high - low) / kClasses, 1e-9);
    counts.assign(kClasses, 0.0);
    for (const ZoScanPoint3d& point : cloud.GetPoints()) {
        const int index = static_cast<int>((point.z() - low) / step);
        if (index >= 0) ++counts[static_cast<std::size_t>(std::min(index, kClasses - 1))];
    }
    ZorvMath::FindHistogramPeaks(counts, peaks);
}

std::string HeightHistogram::Svg() const {
    const double most = *std::max_element(counts.begin(), counts.end());
    Drawing drawing(860, 400);
    drawing.ShowStretched({low, 0.0}, {low + step * static_cast<double>(counts.size()), std::max(most, 1.0)});
    drawing.Grid();
    for (std::size_t i = 0; i < counts.size(); ++i) {
        const bool peak = std::find(peaks.begin(), peaks.end(), static_cast<int>(i)) != peaks.end();
        const double left = low + step * static_cast<double>(i);
        drawing.Bar(left, left + 0.9 * step, counts[i], peak ? "#b10027" : "#7a9cc6");
    }
    drawing.Legend({{"points at a height", "#7a9cc6"}, {"peak", "#b10027"}});
    drawing.Title("Height [m]");
    return drawing.Svg();
}

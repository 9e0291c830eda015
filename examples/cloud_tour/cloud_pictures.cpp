#include "cloud_pictures.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

#include "drawing.h"

namespace {

constexpr int kViewWidth = 800;    // pixels
constexpr int kLargestView = 400;  // cells
constexpr int kLargestHole = 4;    // half the width of what is closed, cells
constexpr double kNothing = -std::numeric_limits<double>::infinity();

std::uint32_t Grey(int value) {
    return static_cast<std::uint32_t>(value) * 0x010101U;
}

/// Square cells over the cloud, each with the height and the colour of its highest point.
class CellGrid {
  public:
    explicit CellGrid(const ZoPointCloud& cloud) {
        const ZoBoundingBox3d& box = cloud.GetBox();
        const double wide = std::max(box.Xmax() - box.Xmin(), 1e-6);
        const double high = std::max(box.Ymax() - box.Ymin(), 1e-6);
        // About as many cells as points.
        cell =
            std::max(std::sqrt(wide * high / static_cast<double>(cloud.Size())), std::max(wide, high) / kLargestView);
        columns = static_cast<int>(wide / cell) + 1;
        rows = static_cast<int>(high / cell) + 1;
        cells.resize(static_cast<std::size_t>(columns) * static_cast<std::size_t>(rows));
        for (const ZoScanPoint3d& point : cloud.GetPoints()) {
            const int column = static_cast<int>((point.x() - box.Xmin()) / cell);
            const int row = rows - 1 - static_cast<int>((point.y() - box.Ymin()) / cell);
            if (!Inside(column, row) || point.z() <= At(column, row).height) continue;
            const std::uint32_t colour =
                point.GetColor() != 0 ? point.GetColor() : Grey(std::max(point.GetIntensity(), 160));
            At(column, row) = {point.z(), {Channel(colour, 0), Channel(colour, 8), Channel(colour, 16)}};
        }
    }

    /// An empty cell between others, with three of its eight neighbours at least, becomes their mean.
    void CloseHoles() {
        const CellGrid before = *this;
        for (int row = 0; row < rows; ++row) {
            for (int column = 0; column < columns; ++column) {
                if (before.At(column, row).height == kNothing) At(column, row) = before.MeanOfNeighbours(column, row);
            }
        }
    }

    /// What faces the light is bright, what turns away from it dark.
    Raster Shaded() const {
        Raster view(columns, rows);
        for (int row = 0; row < rows; ++row) {
            for (int column = 0; column < columns; ++column) {
                const Cell& own = At(column, row);
                if (own.height == kNothing) continue;
                const double towardsLight = At(std::max(column - 1, 0), std::max(row - 1, 0)).height;
                const double slope = towardsLight == kNothing ? 0.0 : (own.height - towardsLight) / (cell * 1.4);
                const double light = 1.0 + 0.35 * std::clamp(slope, -1.0, 1.0);
                std::uint32_t& pixel = view.At(column, row) = 0;
                for (unsigned int i = 0; i < 3; ++i)
                    pixel |= static_cast<std::uint32_t>(std::clamp(own.colour[i] * light, 0.0, 255.0)) << 8 * i;
            }
        }
        return view;
    }

  private:
    struct Cell {
        double height = kNothing;
        std::array<double, 3> colour{};  // red, green, blue
    };

    static double Channel(std::uint32_t colour, int shift) { return static_cast<double>(colour >> shift & 0xff); }
    bool Inside(int column, int row) const { return column >= 0 && row >= 0 && column < columns && row < rows; }
    std::size_t Place(int column, int row) const {
        return static_cast<std::size_t>(row) * static_cast<std::size_t>(columns) + static_cast<std::size_t>(column);
    }
    Cell& At(int column, int row) { return cells[Place(column, row)]; }
    const Cell& At(int column, int row) const { return cells[Place(column, row)]; }

    Cell MeanOfNeighbours(int column, int row) const {
        Cell sum{0.0};
        int count = 0;
        for (int y = row - 1; y <= row + 1; ++y) {
            for (int x = column - 1; x <= column + 1; ++x) {
                if (!Inside(x, y) || At(x, y).height == kNothing) continue;
                ++count;
                sum.height += At(x, y).height;
                for (std::size_t i = 0; i < 3; ++i)
                    sum.colour[i] += At(x, y).colour[i];
            }
        }
        if (count < 3) return {};
        sum.height /= count;
        for (double& channel : sum.colour)
            channel /= count;
        return sum;
    }

    double cell = 1;  // metres
    int columns = 1;
    int rows = 1;
    std::vector<Cell> cells;
};

}  // namespace

Raster TopView(const ZoPointCloud& cloud) {
    CellGrid grid(cloud);
    for (int i = 0; i < kLargestHole; ++i)
        grid.CloseHoles();
    const Raster view = grid.Shaded();
    return view.Enlarged(std::max(1, (kViewWidth + view.Width() / 2) / view.Width()));
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

#include "zorv/photo/inverse_table.h"

#include <algorithm>
#include <cmath>
#include <limits>

#ifdef _OPENMP
#include <omp.h>
#endif

#include "zorv/photo/camera.h"
#include "zorv/photo/classic_distortion.h"

namespace {

constexpr double kClassicReach = 30.0;    // mm
constexpr double kInstrumentReach = 8.0;  // mm

double ReachOf(const ZoCamera& camera) {
    if (camera.rmax != 0.0) return std::fabs(camera.rmax);
    if (camera.IsOldZorv()) return kClassicReach;
    return camera.IsTs15() ? kInstrumentReach : 0.0;
}

[[maybe_unused]] int Processors() {
#ifdef _OPENMP
    return omp_get_num_procs();
#else
    return 1;
#endif
}

/// -1 when the value is below the interval, 1 when it is above. Not-a-number is on no side.
template <class Interval>
int SideOf(double value, const Interval& interval) {
    if (interval.low > value) return -1;
    return value > interval.high ? 1 : 0;
}

/// The part of `all` on a side of `own`, or with 0 within it.
template <int side, class Interval>
Interval Part(Interval all, Interval own) {
    if (side >= 0) all.low = std::max(all.low, side > 0 ? own.high : own.low);
    if (side <= 0) all.high = std::min(all.high, side < 0 ? own.low : own.high);
    return all;
}

template <class Interval>
bool IsSome(Interval interval) {
    return interval.low < interval.high;
}

// The core of a cell is told by the strips around it, in 1/128 of the cell: with seven bits a byte, four comparisons
// make one subtraction.
constexpr int kCoreParts = 128;
constexpr std::uint32_t kNoCore = 0x7f7f7f7f;
constexpr std::uint32_t kHighBits = 0x80808080;

/// The strip in whole parts, more than it is rather than less. `scale` is parts per mm.
std::uint32_t Strip(double width, double scale) {
    constexpr double kRounding = 1e-6;
    if (width == 0.0) return 0;
    const double parts = width * scale + kRounding;
    return parts < kCoreParts - 1 ? static_cast<std::uint32_t>(parts) + 1 : kCoreParts - 1;
}

std::uint32_t FourBytes(std::uint32_t b0, std::uint32_t b1, std::uint32_t b2, std::uint32_t b3) {
    return b0 | b1 << 8 | b2 << 16 | b3 << 24;
}

/// The tables of the process, freed at its end.
std::vector<std::unique_ptr<ZoInvAdjustTable>> tables;

}  // namespace

const ZoInvAdjustTable* ZoInvAdjustTable::For(const ZoCamera& camera) {
    for (const auto& table : tables) {
        if (table->cameraId == camera.id && table->c == camera.c) return table.get();
    }
    const double reach = ReachOf(camera);
    if (std::isnan(camera.c) || !std::isfinite(reach)) return nullptr;
    return tables.emplace_back(std::make_unique<ZoInvAdjustTable>(camera, reach)).get();
}

void ZoInvAdjustTable::DeleteAll() {
    std::vector<std::unique_ptr<ZoInvAdjustTable>>().swap(tables);
}

ZoInvAdjustTable::ZoInvAdjustTable(const ZoCamera& camera, double reach)
    : cameraId(camera.id),
      c(camera.c),
      halfSide(reach),
      distortion(camera.IsOldZorv() || camera.IsTs15() ? camera : ZoCamera()) {
    constexpr double kMiddle = 0.5 * kLastCell;
    ZoMatrix scale(3, 3);
    ZoMatrix shift(3, 3);
    scale.SetIdent();
    shift.SetIdent();
    step = 2.0 * reach / kLastCell;
    scale[1][1] = step;
    scale[2][2] = step;
    shift[1][3] = -kMiddle;
    shift[2][3] = -kMiddle;
    gridToImage = scale * shift;
    origin = gridToImage[1][3];
    if (reach == 0.0) return;
    for (int line = 0; line < kNodes; ++line) {
        // The same as gridToImage.PTrans2D, whose other elements are 0 and 1.
        const double at = step * line + origin;
        columns.push_back(distortion.ColumnAt(at));
        rows.push_back(distortion.RowAt(at));
    }
    FillCores();
    FillSquares();
}

inline ZoInvAdjustTable::Extents ZoInvAdjustTable::ExtentsOf(Cell cell) const {
    const Line* const column = &columns[static_cast<std::size_t>(cell.i)];
    const Line* const row = &rows[static_cast<std::size_t>(cell.j)];
    const double dr = distortion.RelativeAt(*column, *row);
    return {{column[-1].Adjusted(distortion.RelativeAt(column[-1], *row)), column->Adjusted(dr)},
            {row[-1].Adjusted(distortion.RelativeAt(*column, row[-1])), row->Adjusted(dr)}};
}

inline ZoInvAdjustTable::Place ZoInvAdjustTable::PlaceIn(Cell cell, double x, double y) const {
    const Extents extents = ExtentsOf(cell);
    return {(x - extents.x.low) / (extents.x.high - extents.x.low),
            (y - extents.y.low) / (extents.y.high - extents.y.low)};
}

void ZoInvAdjustTable::FillCores() {
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    cores.assign(static_cast<std::size_t>(kNodes) * kNodes, kNoCore);
#pragma omp parallel num_threads(Processors())
#pragma omp single
    Follow<false, false>(Bounds(), {-kInfinity, kInfinity}, {-kInfinity, kInfinity});
}

// A stage of the bisection: the points within x and y come here with every decision right. It settles at its middle
// cell for some of them and goes on for the others. Each cell is the middle of at most one stage, so that no two
// threads meet.
template <bool settledX, bool settledY>
void ZoInvAdjustTable::Follow(Bounds bounds, Interval x, Interval y) {
    const Cell middle = bounds.Middle();
    const auto [extentX, extentY] = ExtentsOf(middle);
    const Interval withinX = Part<0>(x, extentX);
    const Interval withinY = Part<0>(y, extentY);
    if (IsSome(withinX) && IsSome(withinY)) {
        const double scaleX = kCoreParts / (extentX.high - extentX.low);
        const double scaleY = kCoreParts / (extentY.high - extentY.low);
        cores[Index(middle)] =
            FourBytes(Strip(withinX.low - extentX.low, scaleX), Strip(extentX.high - withinX.high, scaleX),
                      Strip(withinY.low - extentY.low, scaleY), Strip(extentY.high - withinY.high, scaleY));
    }
    if constexpr (!settledX) {
        FollowOn<-1, 0>(bounds, middle, Part<-1>(x, extentX), withinY);
        FollowOn<1, 0>(bounds, middle, Part<1>(x, extentX), withinY);
    }
    if constexpr (!settledY) {
        FollowOn<0, -1>(bounds, middle, withinX, Part<-1>(y, extentY));
        FollowOn<0, 1>(bounds, middle, withinX, Part<1>(y, extentY));
    }
    if constexpr (!settledX && !settledY) {
        FollowOn<-1, -1>(bounds, middle, Part<-1>(x, extentX), Part<-1>(y, extentY));
        FollowOn<-1, 1>(bounds, middle, Part<-1>(x, extentX), Part<1>(y, extentY));
        FollowOn<1, -1>(bounds, middle, Part<1>(x, extentX), Part<-1>(y, extentY));
        FollowOn<1, 1>(bounds, middle, Part<1>(x, extentX), Part<1>(y, extentY));
    }
}

template <int sideX, int sideY>
void ZoInvAdjustTable::FollowOn(Bounds bounds, Cell middle, Interval x, Interval y) {
    constexpr int kTaskSize = 90;  // cells to a side
    bounds.Narrow(middle, sideX, sideY);
    if (!bounds.AreOpen() || !IsSome(x) || !IsSome(y)) return;
    if (sideX != 0 && sideY != 0 && bounds.hiI - bounds.loI > kTaskSize && bounds.hiJ - bounds.loJ > kTaskSize) {
#pragma omp task
        Follow<sideX == 0, sideY == 0>(bounds, x, y);
    } else {
        Follow<sideX == 0, sideY == 0>(bounds, x, y);
    }
}

void ZoInvAdjustTable::FillSquares() {
    constexpr int kCorners = kCoarse + 1;
    coarseScale = kCoarse / (2.0 * halfSide);
    if (!std::isfinite(coarseScale)) coarseScale = 0.0;  // all points are in the first square
    squares = std::make_unique<Square[]>(static_cast<std::size_t>(kCorners) * kCorners);
#pragma omp parallel for schedule(static) num_threads(Processors())
    for (int column = 0; column < kCorners; ++column) {
        for (int row = 0; row < kCorners; ++row) {
            const double x = column / coarseScale - halfSide;
            const double y = row / coarseScale - halfSide;
            const Bounds bounds = BoundsOfSquare(column, row);
            const Cell cell = Walk(Bisect(bounds, x, y), x, y);
            const Place place = PlaceIn(cell, x, y);
            squares[SquareIndex(column, row)] = {static_cast<float>(cell.i - 1 + place.x),
                                                 static_cast<float>(cell.j - 1 + place.y), bounds};
        }
    }
}

// All points of the square take the same way while its corners do: the side on which a coordinate falls of a cell only
// grows with it.
ZoInvAdjustTable::Bounds ZoInvAdjustTable::BoundsOfSquare(int column, int row) const {
    constexpr double kRounding = 1e-3;  // squares; far more than a point can be off
    const auto edge = [this](double square) { return square / coarseScale - halfSide; };
    const Interval x{edge(column - kRounding), edge(column + 1 + kRounding)};
    const Interval y{edge(row - kRounding), edge(row + 1 + kRounding)};
    Bounds bounds;
    for (;;) {
        const Cell middle = bounds.Middle();
        const Extents extents = ExtentsOf(middle);
        const int sideX = SideOf(x.low, extents.x);
        const int sideY = SideOf(y.low, extents.y);
        if (sideX != SideOf(x.high, extents.x) || sideY != SideOf(y.high, extents.y)) return bounds;
        Bounds narrower = bounds;
        narrower.Narrow(middle, sideX, sideY);
        if (!narrower.AreOpen() || (sideX == 0 && sideY == 0)) return bounds;
        bounds = narrower;
    }
}

inline void ZoInvAdjustTable::Bounds::Narrow(Cell middle, int sideX, int sideY) {
    if (sideX < 0) hiI = static_cast<std::int16_t>(middle.i - 1);
    if (sideX > 0) loI = static_cast<std::int16_t>(middle.i + 1);
    if (sideY < 0) hiJ = static_cast<std::int16_t>(middle.j - 1);
    if (sideY > 0) loJ = static_cast<std::int16_t>(middle.j + 1);
}

ZoInvAdjustTable::Cell ZoInvAdjustTable::Bisect(Bounds bounds, double x, double y) const {
    for (;;) {
        const Cell middle = bounds.Middle();
        const Extents extents = ExtentsOf(middle);
        const int sideX = SideOf(x, extents.x);
        const int sideY = SideOf(y, extents.y);
        bounds.Narrow(middle, sideX, sideY);
        if (!bounds.AreOpen() || (sideX == 0 && sideY == 0)) return middle;
    }
}

ZoInvAdjustTable::Cell ZoInvAdjustTable::Walk(Cell cell, double x, double y) const {
    constexpr int kSteps = 60;
    for (int taken = 0; taken < kSteps; ++taken) {
        const Extents extents = ExtentsOf(cell);
        const int sideX = SideOf(x, extents.x);
        int sideY = SideOf(y, extents.y);
        if (sideX == 0 && sideY == 0) break;
        cell.i = std::clamp(cell.i + sideX, 1, kLastCell);
        if (sideX != 0) sideY = SideOf(y, ExtentsOf(cell).y);
        cell.j = std::clamp(cell.j + sideY, 1, kLastCell);
    }
    return cell;
}

/// The cell from which a point of the square comes, by what its corners come from. Any cell where they tell nothing.
inline ZoInvAdjustTable::Cell ZoInvAdjustTable::Guess(const Square* square, float inColumn, float inRow) const {
    const Square* low = square;
    const Square* high = square + kCoarse + 1;
    const float lowI = low[0].i + inRow * (low[1].i - low[0].i);
    const float lowJ = low[0].j + inRow * (low[1].j - low[0].j);
    const float i = lowI + inColumn * (high[0].i + inRow * (high[1].i - high[0].i) - lowI);
    const float j = lowJ + inColumn * (high[0].j + inRow * (high[1].j - high[0].j) - lowJ);
    if (!(i >= 0.0F && i < kLastCell && j >= 0.0F && j < kLastCell)) return {1, 1};
    return {static_cast<int>(i) + 1, static_cast<int>(j) + 1};
}

inline bool ZoInvAdjustTable::IsCore(Cell cell, Place place) const {
    if (!(place.x > 0.0 && place.x < 1.0 && place.y > 0.0 && place.y < 1.0)) return false;
    const auto partX = static_cast<std::uint32_t>(place.x * kCoreParts);
    const auto partY = static_cast<std::uint32_t>(place.y * kCoreParts);
    const std::uint32_t room = FourBytes(partX, kCoreParts - 1 - partX, partY, kCoreParts - 1 - partY);
    // A high bit stays where no borrow comes from below, that is, where the room is enough.
    return (((room | kHighBits) - cores[Index(cell)]) & kHighBits) == kHighBits;
}

bool ZoInvAdjustTable::Invert(double* x, double* y) const {
    if (!(std::fabs(*x) < halfSide) || !(std::fabs(*y) < halfSide)) return false;
    const double u = (*x + halfSide) * coarseScale;
    const double v = (*y + halfSide) * coarseScale;
    const int column = std::min(static_cast<int>(u), kCoarse - 1);
    const int row = std::min(static_cast<int>(v), kCoarse - 1);
    const Square* square = &squares[SquareIndex(column, row)];

    Cell cell = Guess(square, static_cast<float>(u - column), static_cast<float>(v - row));
    Place place = PlaceIn(cell, *x, *y);
    if (!IsCore(cell, place)) {
        cell = Walk(Bisect(square->bounds, *x, *y), *x, *y);
        place = PlaceIn(cell, *x, *y);
        if (!std::isfinite(place.x) || !std::isfinite(place.y)) return false;
    }
    *x = step * (cell.i - 1 + place.x) + origin;
    *y = step * (cell.j - 1 + place.y) + origin;
    return true;
}

#include "zorv/photo/inverse_table.h"

#include <algorithm>
#include <cmath>

#ifdef _OPENMP
#include <omp.h>
#endif

#include "zorv/photo/camera.h"
#include "zorv/photo/classic_distortion.h"

namespace {

constexpr double kClassicReach = 30.0;    // mm
constexpr double kInstrumentReach = 8.0;  // mm

/// The tables of the process; freed at its end.
std::vector<std::unique_ptr<ZoInvAdjustTable>>& Tables() {
    static std::vector<std::unique_ptr<ZoInvAdjustTable>> tables;
    return tables;
}

double ReachOf(const ZoCamera& camera) {
    if (camera.rmax != 0.0) return std::fabs(camera.rmax);
    if (camera.IsOldZorv()) return kClassicReach;
    return camera.IsTs15() ? kInstrumentReach : 0.0;
}

int Processors() {
#ifdef _OPENMP
    return omp_get_num_procs();
#else
    return 1;
#endif
}

/// -1 when the value is below the interval, 1 when it is above. Not-a-number is on no side.
int SideOf(double value, double low, double high) {
    if (low > value) return -1;
    return value > high ? 1 : 0;
}

}  // namespace

const ZoInvAdjustTable* ZoInvAdjustTable::For(const ZoCamera& camera) {
    for (const auto& table : Tables()) {
        if (table->cameraId == camera.id && table->c == camera.c) return table.get();
    }
    const double reach = ReachOf(camera);
    if (std::isnan(camera.c) || !std::isfinite(reach)) return nullptr;
    return Tables().emplace_back(std::make_unique<ZoInvAdjustTable>(camera, reach)).get();
}

void ZoInvAdjustTable::DeleteAll() {
    std::vector<std::unique_ptr<ZoInvAdjustTable>>().swap(Tables());
}

ZoInvAdjustTable::ZoInvAdjustTable(const ZoCamera& camera, double reach)
    : cameraId(camera.id), c(camera.c), halfSide(reach) {
    constexpr double kMiddle = kLastCell / 2;
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
    if (reach == 0.0) return;
    FillNodes(camera);
    FillBins();
}

void ZoInvAdjustTable::FillNodes(const ZoCamera& camera) {
    nodes = std::make_unique_for_overwrite<Node[]>(static_cast<std::size_t>(kNodes) * kNodes);
    const bool hasFormula = camera.IsOldZorv() || camera.IsTs15();
    const zorv::detail::ClassicDistortion distortion(camera);
#pragma omp parallel for schedule(static) num_threads(Processors())
    for (int i = 0; i < kNodes; ++i) {
        Node* row = nodes.get() + static_cast<std::size_t>(i) * kNodes;
        for (int j = 0; j < kNodes; ++j) {
            Node node{static_cast<double>(i), static_cast<double>(j)};
            gridToImage.PTrans2D(&node.x, &node.y);
            if (hasFormula) distortion.Adjust(node.x, node.y);
            row[j] = node;
        }
    }
}

void ZoInvAdjustTable::FillBins() {
    constexpr int kParts = 8;  // to a side
    constexpr int kSize = kBins / kParts;
    binScale = kBins / (2.0 * halfSide);
    if (!std::isfinite(binScale)) binScale = 0.0;  // one bin serves all
    bins = std::make_unique_for_overwrite<Bounds[]>(static_cast<std::size_t>(kBins) * kBins);
#pragma omp parallel for schedule(static) num_threads(Processors())
    for (int part = 0; part < kParts * kParts; ++part)
        FillBins({part / kParts * kSize, part % kParts * kSize, kSize}, Bounds());
}

// All points of the square take the same way while its corners do: the side on which a coordinate falls only grows with
// it. Where they part, the square is divided.
void ZoInvAdjustTable::FillBins(Square square, Bounds bounds) {
    constexpr double kRounding = 1e-3;  // bins, more than Bin() can be off
    const auto edge = [this](double bin) { return bin / binScale - halfSide; };
    const double lowX = edge(square.column - kRounding);
    const double highX = edge(square.column + square.size + kRounding);
    const double lowY = edge(square.row - kRounding);
    const double highY = edge(square.row + square.size + kRounding);
    for (;;) {
        const Cell middle = bounds.Middle();
        const int sideX = SideX(middle, lowX);
        const int sideY = SideY(middle, lowY);
        if (sideX != SideX(middle, highX) || sideY != SideY(middle, highY)) break;
        Bounds narrower = bounds;
        narrower.Narrow(middle, sideX, sideY);
        if (!narrower.AreOpen() || (sideX == 0 && sideY == 0)) break;
        bounds = narrower;
    }
    if (square.size == 1) {
        bins[static_cast<std::size_t>(square.column) * kBins + static_cast<std::size_t>(square.row)] = bounds;
        return;
    }
    const int half = square.size / 2;
    for (const int column : {square.column, square.column + half}) {
        for (const int row : {square.row, square.row + half})
            FillBins({column, row, half}, bounds);
    }
}

void ZoInvAdjustTable::Bounds::Narrow(Cell middle, int sideX, int sideY) {
    if (sideX < 0) hiI = static_cast<std::int16_t>(middle.i - 1);
    if (sideX > 0) loI = static_cast<std::int16_t>(middle.i + 1);
    if (sideY < 0) hiJ = static_cast<std::int16_t>(middle.j - 1);
    if (sideY > 0) loJ = static_cast<std::int16_t>(middle.j + 1);
}

inline int ZoInvAdjustTable::SideX(Cell cell, double x) const {
    return SideOf(x, At(cell.i - 1, cell.j).x, At(cell.i, cell.j).x);
}

inline int ZoInvAdjustTable::SideY(Cell cell, double y) const {
    return SideOf(y, At(cell.i, cell.j - 1).y, At(cell.i, cell.j).y);
}

inline int ZoInvAdjustTable::Bin(double coordinate) const {
    return std::min(static_cast<int>((coordinate + halfSide) * binScale), kBins - 1);
}

ZoInvAdjustTable::Cell ZoInvAdjustTable::Bisect(double x, double y) const {
    Bounds bounds = bins[static_cast<std::size_t>(Bin(x)) * kBins + static_cast<std::size_t>(Bin(y))];
    for (;;) {
        const Cell middle = bounds.Middle();
        const int sideX = SideX(middle, x);
        const int sideY = SideY(middle, y);
        bounds.Narrow(middle, sideX, sideY);
        if (!bounds.AreOpen() || (sideX == 0 && sideY == 0)) return middle;
    }
}

ZoInvAdjustTable::Cell ZoInvAdjustTable::Walk(Cell cell, double x, double y) const {
    constexpr int kSteps = 60;
    for (int taken = 0; taken < kSteps; ++taken) {
        const int sideX = SideX(cell, x);
        if (sideX == 0 && SideY(cell, y) == 0) break;
        cell.i = std::clamp(cell.i + sideX, 1, kLastCell);
        cell.j = std::clamp(cell.j + SideY(cell, y), 1, kLastCell);
    }
    return cell;
}

bool ZoInvAdjustTable::Invert(double* x, double* y) const {
    if (!(std::fabs(*x) < halfSide) || !(std::fabs(*y) < halfSide)) return false;
    const Cell cell = Walk(Bisect(*x, *y), *x, *y);
    const Node& corner = At(cell.i, cell.j);
    const double lowX = At(cell.i - 1, cell.j).x;
    const double lowY = At(cell.i, cell.j - 1).y;
    const double inX = (*x - lowX) / (corner.x - lowX);
    const double inY = (*y - lowY) / (corner.y - lowY);
    if (!std::isfinite(inX) || !std::isfinite(inY)) return false;
    *x = cell.i - 1 + inX;
    *y = cell.j - 1 + inY;
    return gridToImage.PTrans2D(x, y);
}

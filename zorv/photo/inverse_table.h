#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "zorv/math/matrix.h"

class ZoCamera;

/// What Adjust makes of a square grid of raw image coordinates, by which InvAdjust finds the way back: the cell of the
/// grid that holds the corrected point, and the place within it. Tables are kept for the whole process by camera id and
/// constant, and never change.
///
/// The search bisects both axes at once and then walks from cell to cell; it takes the adjusted coordinates to grow
/// along the grid, and ends in any case.
class ZoInvAdjustTable {
  public:
    static constexpr int kNodes = 781;  ///< to a side

    /// The table of the camera's id and c, made if there is none; null when c or the reach is not a number. Owned by
    /// the process.
    static const ZoInvAdjustTable* For(const ZoCamera& camera);
    static void DeleteAll();

    /// `reach` in mm to each side. With a reach of 0 every point is outside.
    ZoInvAdjustTable(const ZoCamera& camera, double reach);

    /// From corrected to raw image coordinates. False, and nothing changes, for a point that is not within the reach
    /// and for a cell without extent.
    bool Invert(double* x, double* y) const;

    std::uint32_t cameraId = 0;
    double c = 0.0;
    double halfSide = 0.0;  ///< mm
    ZoMatrix gridToImage{3, 3};

  private:
    static constexpr int kLastCell = kNodes - 1;  // cells are named by their upper nodes, from 1
    static constexpr int kBins = 256;             // to a side

    struct Node {
        double x;
        double y;
    };
    struct Cell {
        int i;
        int j;
    };
    /// The bounds of the bisection.
    struct Bounds {
        std::int16_t loI = 1;
        std::int16_t hiI = kLastCell;
        std::int16_t loJ = 1;
        std::int16_t hiJ = kLastCell;

        bool AreOpen() const { return loI <= hiI && loJ <= hiJ; }
        Cell Middle() const { return {(loI + hiI) / 2, (loJ + hiJ) / 2}; }
        /// Narrows by the sides of the point in the middle cell.
        void Narrow(Cell middle, int sideX, int sideY);
    };
    struct Square {
        int column;
        int row;
        int size;
    };

    void FillNodes(const ZoCamera& camera);
    void FillBins();
    void FillBins(Square bins, Bounds bounds);

    const Node& At(int i, int j) const {
        return nodes[static_cast<std::size_t>(i) * kNodes + static_cast<std::size_t>(j)];
    }
    /// -1 when x is below the cell, 1 when it is above, else 0.
    int SideX(Cell cell, double x) const;
    int SideY(Cell cell, double y) const;
    int Bin(double coordinate) const;
    Cell Bisect(double x, double y) const;
    Cell Walk(Cell cell, double x, double y) const;

    double step = 0.0;      // of the grid, mm
    double binScale = 0.0;  // bins per mm
    std::unique_ptr<Node[]> nodes;
    // Where the bisection stands when it has decided all that it decides alike for the points of a bin.
    std::unique_ptr<Bounds[]> bins;
};

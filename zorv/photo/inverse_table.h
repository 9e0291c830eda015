#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "zorv/core/large_block_allocator.h"
#include "zorv/math/matrix.h"
#include "zorv/photo/classic_distortion.h"

/// What Adjust makes of a square grid of raw image coordinates, by which InvAdjust finds the way back: the cell of the
/// grid that holds the corrected point, and the place within it. Tables are kept for the whole process by camera id and
/// constant, and never change.
///
/// The search bisects both axes at once and then walks from cell to cell. It takes the adjusted coordinates to grow
/// along the grid; where they do not, it ends all the same, with some cell. Most points need no search: a coarse map
/// guesses their cell, and the core of the cell, all of whose points the search would lead there, proves the guess.
///
/// The adjusted coordinates themselves are not kept: to work out those of a cell again takes half the time in which
/// memory finds them.
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
    static constexpr int kCoarse = 64;            // squares to a side

    using Line = zorv::detail::ClassicDistortion::Line;
    struct Cell {
        int i;
        int j;
    };
    /// The cells that the bisection has not ruled out.
    struct Bounds {
        std::int16_t loI = 1;
        std::int16_t hiI = kLastCell;
        std::int16_t loJ = 1;
        std::int16_t hiJ = kLastCell;

        bool AreOpen() const { return loI <= hiI && loJ <= hiJ; }
        Cell Middle() const { return {(loI + hiI) / 2, (loJ + hiJ) / 2}; }
        /// Narrows by the sides on which the point lies of the middle cell.
        void Narrow(Cell middle, int sideX, int sideY);
    };
    struct Interval {
        double low;
        double high;
    };
    struct Extents {
        Interval x;
        Interval y;
    };
    /// Of a point between the ends of a cell, from 0 to 1 inside.
    struct Place {
        double x;
        double y;
    };
    /// The part of a cell whose points the bisection leads there: from below and above in x, then in y, the strips to
    /// leave out, a byte each.
    using Core = std::uint32_t;

    /// What is known of the points of a coarse square beforehand.
    struct Square {
        float i;        // where its lowest corner comes from, in steps of the grid
        float j;        //
        Bounds bounds;  // where the bisection stands when it has decided all that it decides alike for them
    };

    void FillCores();
    template <bool settledX, bool settledY>
    void Follow(Bounds bounds, Interval x, Interval y);
    template <int sideX, int sideY>
    void FollowOn(Bounds bounds, Cell middle, Interval x, Interval y);
    void FillSquares();
    Bounds BoundsOfSquare(int column, int row) const;

    std::size_t Index(Cell cell) const {
        return static_cast<std::size_t>(cell.i) * kNodes + static_cast<std::size_t>(cell.j);
    }
    static std::size_t SquareIndex(int column, int row) {
        return static_cast<std::size_t>(column) * (kCoarse + 1) + static_cast<std::size_t>(row);
    }
    Extents ExtentsOf(Cell cell) const;
    Place PlaceIn(Cell cell, double x, double y) const;
    Cell Bisect(Bounds bounds, double x, double y) const;
    Cell Walk(Cell cell, double x, double y) const;
    Cell Guess(const Square* square, float inColumn, float inRow) const;
    bool IsCore(Cell cell, Place place) const;

    zorv::detail::ClassicDistortion distortion;
    double step = 0.0;          // of the grid in mm
    double origin = 0.0;        // of the grid in mm, in x and y
    double coarseScale = 0.0;   // squares per mm
    std::vector<Line> columns;  // of the grid
    std::vector<Line> rows;
    std::vector<Core, zorv::detail::LargeBlockAllocator<Core>> cores;
    std::unique_ptr<Square[]> squares;  // with one more to a side for the corners
};

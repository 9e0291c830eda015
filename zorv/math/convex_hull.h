#pragma once

#include <vector>

#include "zorv/export.h"
#include "zorv/math/point2d.h"

/// The convex hull of a set of points after T. Chan, "Optimal output-sensitive convex hull algorithms in two and three
/// dimensions", Discrete & Computational Geometry 16 (1996), 361-368.
///
/// The result runs clockwise (y up) from the lowest point and does not repeat it. The turn of three points is the cross
/// product truncated to an integer: values below 1 count as collinear, so coordinates should be on a scale where one
/// unit is small against the shape, such as pixels or millimetres; a smaller shape loses vertices. Points without
/// finite coordinates are left out. Empty for no points.
ZORV_API std::vector<ZoPoint2d> ChansConvexHullAlgorithm(const std::vector<ZoPoint2d>& points);

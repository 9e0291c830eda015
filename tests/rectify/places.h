#pragma once

#include <initializer_list>

#include <gtest/gtest.h>

#include "zorv/math/matrix.h"
#include "zorv/points/point.h"

inline ZoMatrix Matrix(int size, std::initializer_list<double> values) {
    return {values.begin(), size, size};
}

/// Coordinates of some hundred at most carry a rounding far below 1e-12.
inline void ExpectAt(const ZoPoint& point, double x, double y, double z, double tolerance = 1e-12) {
    EXPECT_LT(point.Distance(ZoPoint(0, x, y, z, 0)), tolerance) << point.x << ' ' << point.y << ' ' << point.z;
}

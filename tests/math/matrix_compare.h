#pragma once

#include <algorithm>
#include <cmath>

#include "zorv/math/matrix.h"

/// Over the elements that the second matrix has.
inline double LargestDifference(const ZoMatrix& a, const ZoMatrix& b) {
    double largest = 0.0;
    for (int r = 1; r <= b.rows; ++r) {
        for (int c = 1; c <= b.cols; ++c) {
            const double difference = std::fabs(a[r][c] - b[r][c]);
            if (!std::isnan(largest) && !(difference <= largest)) largest = difference;
        }
    }
    return largest;
}

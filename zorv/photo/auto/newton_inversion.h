#pragma once

#include <algorithm>
#include <cmath>
#include <limits>

namespace zorv::detail {

inline constexpr double kNewtonEpsilon = std::numeric_limits<double>::epsilon();
inline constexpr double kNewtonSmallestStep = 1e-10;  // squared
inline constexpr int kNewtonPasses = 100;

/// Solves p + D(p) = q for `lanes` points at once, from q as the first guess, with derivatives by central differences.
/// In: q, out: p. `distortion.Distort(x, y, dx, dy)` gives D.
///
/// The points are independent; running them side by side lets the compiler put them into vector registers. Each stops
/// for itself: with a squared step below 1e-10, or with its last finite pair where the next one would not be.
template <int lanes, class Distortion>
void InvertByNewton(const Distortion& distortion, double (&x)[lanes], double (&y)[lanes]) {
    constexpr double kRelativeStep = 1e-6;
    constexpr int kStencil = 5;  // centre, right, left, above, below
    constexpr int right = lanes, left = 2 * lanes, above = 3 * lanes, below = 4 * lanes;

    double qx[lanes], qy[lanes];
    bool isOpen[lanes];
    for (int i = 0; i < lanes; ++i) {
        qx[i] = x[i];
        qy[i] = y[i];
        isOpen[i] = true;
    }
    for (int pass = 0; pass < kNewtonPasses; ++pass) {
        double hx[lanes], hy[lanes];
        double px[kStencil * lanes], py[kStencil * lanes], dx[kStencil * lanes], dy[kStencil * lanes];
        for (int i = 0; i < lanes; ++i) {
            hx[i] = std::max(std::fabs(x[i]) * kRelativeStep, kNewtonEpsilon);
            hy[i] = std::max(std::fabs(y[i]) * kRelativeStep, kNewtonEpsilon);
        }
        for (int i = 0; i < lanes; ++i) {
            px[i] = px[above + i] = px[below + i] = x[i];
            py[i] = py[right + i] = py[left + i] = y[i];
            px[right + i] = x[i] + hx[i];
            px[left + i] = x[i] - hx[i];
            py[above + i] = y[i] + hy[i];
            py[below + i] = y[i] - hy[i];
        }
        for (int k = 0; k < kStencil * lanes; ++k)
            distortion.Distort(px[k], py[k], dx[k], dy[k]);
        double sx[lanes], sy[lanes];
        for (int i = 0; i < lanes; ++i) {
            const double j11 = 1.0 + (dx[right + i] - dx[left + i]) / (2.0 * hx[i]);
            const double j12 = (dx[above + i] - dx[below + i]) / (2.0 * hy[i]);
            const double j21 = (dy[right + i] - dy[left + i]) / (2.0 * hx[i]);
            const double j22 = 1.0 + (dy[above + i] - dy[below + i]) / (2.0 * hy[i]);
            const double gx = x[i] + dx[i] - qx[i];
            const double gy = y[i] + dy[i] - qy[i];
            const double det = j11 * j22 - j12 * j21;
            sx[i] = (j22 * gx - j12 * gy) / det;
            sy[i] = (j11 * gy - j21 * gx) / det;
        }
        bool anyOpen = false;
        for (int i = 0; i < lanes; ++i) {
            isOpen[i] = isOpen[i] && std::isfinite(x[i] - sx[i]) && std::isfinite(y[i] - sy[i]);
            if (!isOpen[i]) continue;
            x[i] -= sx[i];
            y[i] -= sy[i];
            isOpen[i] = !(sx[i] * sx[i] + sy[i] * sy[i] < kNewtonSmallestStep);
            anyOpen |= isOpen[i];
        }
        if (!anyOpen) return;
    }
}

/// The same for a distortion that only depends on the angle to the axis and keeps directions: its iteration never
/// leaves the line through the centre, so that one unknown is left, the radius. Pass by pass both ways take the same
/// steps but for the rounding of the differences, and end at the same pass: their answers agree to 1e-10 of the radius
/// even with enormous coefficients. What does not settle in a few passes, where rounding could lead astray, goes the
/// general way from the beginning.
///
/// `distortion.DistortRadius(r, atan(r), distorted, slope)` gives the radius at which r is seen, and its derivative.
template <int lanes, class Distortion>
void InvertByRadialNewton(const Distortion& distortion, double (&x)[lanes], double (&y)[lanes]) {
    constexpr int kFewPasses = 8;
    double q[lanes], r[lanes];
    bool isOpen[lanes];
    for (int i = 0; i < lanes; ++i) {
        r[i] = q[i] = std::sqrt(x[i] * x[i] + y[i] * y[i]);
        isOpen[i] = true;
    }
    bool anyOpen = true;
    for (int pass = 0; pass < kFewPasses && anyOpen; ++pass) {
        double theta[lanes], step[lanes];
        for (int i = 0; i < lanes; ++i)
            theta[i] = std::atan(r[i]);
        for (int i = 0; i < lanes; ++i) {
            double distorted, slope;
            distortion.DistortRadius(r[i], theta[i], distorted, slope);
            step[i] = (distorted - q[i]) / slope;
        }
        anyOpen = false;
        for (int i = 0; i < lanes; ++i) {
            if (!isOpen[i]) continue;
            r[i] -= step[i];
            isOpen[i] = !(step[i] * step[i] < kNewtonSmallestStep);
            anyOpen |= isOpen[i];
        }
    }
    for (int i = 0; i < lanes; ++i) {
        if (isOpen[i]) {
            double singleX[1] = {x[i]};
            double singleY[1] = {y[i]};
            InvertByNewton(distortion, singleX, singleY);
            x[i] = singleX[0];
            y[i] = singleY[0];
        } else if (q[i] > kNewtonEpsilon) {
            const double scale = r[i] / q[i];
            x[i] *= scale;
            y[i] *= scale;
        }
    }
}

}  // namespace zorv::detail

#include "zorv/orientation/affine_constraint.h"

#include <cmath>
#include <limits>

#include "zorv/orientation/affine_constraint_log.h"

double ZoAffineConstraint::GetK(const ZoVector3d& v) {
    return v.x() == 0.0 ? std::numeric_limits<double>::lowest() : -v.y() / v.x();
}

void ZoAffineConstraint::WriteDbgLog(const char* /*prefix*/) const {
    std::string line;
    zorv::detail::AppendLogLine(line, {centerX, centerY, radius});
    zorv::detail::AppendToLog(L"c:\\AffinConstraint.txt", line);
}

// A line that goes k along x where it goes 1 along y has the true direction (k - alpha, beta) / beta. Seen from
// (alpha, beta), the points (p, 0) and (q, 0) therefore enclose the angle of the lines: an inscribed angle.
ZoKnownAngleConstraint::ZoKnownAngleConstraint(const ZoVector3d& d1, const ZoVector3d& d2, double angle) {
    if (angle == 0.0) return;
    const double p = GetK(d1);
    const double q = GetK(d2);
    centerX = (p + q) / 2.0;
    centerY = (p - q) / (2.0 * std::tan(angle));
    radius = std::fabs((p - q) / (2.0 * std::sin(angle)));
    valid = true;
    WriteDbgLog("KnownAngle-");
}

ZoUnknownAngleConstraint::ZoUnknownAngleConstraint(const ZoVector3d& d1, const ZoVector3d& d2, const ZoVector3d& d3,
                                                   const ZoVector3d& d4) {
    const double p = GetK(d1);
    const double q = GetK(d2);
    const double r = GetK(d3);
    const double s = GetK(d4);
    const double divisor = p - q - r + s;
    centerX = (s * p - r * q) / divisor;
    radius = std::sqrt(std::fabs(centerX * centerX + (q * p - s * r) * (p - q) / divisor - q * p));
    valid = true;
    WriteDbgLog("UnknownAngle-");
}

ZoLenghtRatioConstraint::ZoLenghtRatioConstraint(const ZoVector3d& d1, const ZoVector3d& d2, double ratio) {
    const double squared = ratio * ratio;
    const double divisor = d1.y() * d1.y() - squared * d2.y() * d2.y();
    centerX = (d1.x() * d1.y() - squared * d2.x() * d2.y()) / divisor;
    radius = std::fabs((ratio * d2.x() * d1.y() - d1.x() * d2.y()) / divisor);
    valid = true;
    WriteDbgLog("LenghtRatio-");
}

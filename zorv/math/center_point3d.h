#pragma once

#include <algorithm>
#include <cstdint>
#include <limits>

#include "zorv/export.h"
#include "zorv/math/point3d.h"

/// Running mean of points.
///
/// The mean is updated by (count mean + n value) / (count + n) and carries a rounding from each update. For coordinates
/// around 5,000,000 that adds up to less than 1e-6 over a hundred thousand points, but to some 1e-5 over a million. For
/// more points add differences to a point nearby and Move the result.
class ZORV_API ZoCenterPoint3d {
  public:
    /// Takes in n points at that place, or takes them out when n is negative. Nothing added to an empty mean leaves it
    /// alone; when no point is left the mean is reset.
    void Add(double x, double y, double z, int n = 1) {
        const std::int64_t sum = std::int64_t{m_iCount} + n;
        if (sum == 0) {
            if (n != 0) Reset();
            return;
        }
        const auto count = static_cast<double>(m_iCount);
        const auto added = static_cast<double>(n);
        const auto total = static_cast<double>(sum);
        m_x = (count * m_x + added * x) / total;
        m_y = (count * m_y + added * y) / total;
        m_z = (count * m_z + added * z) / total;
        m_iCount = Saturated(sum);
    }
    void Add(const ZoPoint3d& point, int n = 1) { Add(point.x(), point.y(), point.z(), n); }
    /// The common mean of both. Two empty ones give the mean (0, 0, 0) with count 1.
    void Add(const ZoCenterPoint3d& other);
    /// Takes one point out. A mean of one point or none is reset to (0, 0, 0).
    void Subtract(double x, double y, double z);
    void Subtract(const ZoPoint3d& point) { Subtract(point.x(), point.y(), point.z()); }
    /// Sets the mean; the count becomes 0.
    void Reset(double x = 0.0, double y = 0.0, double z = 0.0);
    /// Shifts the mean, unless the count is 0.
    void Move(double dx, double dy, double dz);

    ZoPoint3d Point() const { return {m_x, m_y, m_z}; }
    int GetCount() const { return m_iCount; }
    void DbgPrintf() const;

    double m_x = 0.0;
    double m_y = 0.0;
    double m_z = 0.0;
    std::int32_t m_iCount = 0;  ///< number of points that the mean stands for

  private:
    static std::int32_t Saturated(std::int64_t count) {
        using Limits = std::numeric_limits<std::int32_t>;
        return static_cast<std::int32_t>(std::clamp<std::int64_t>(count, Limits::min(), Limits::max()));
    }
};

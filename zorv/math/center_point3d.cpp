#include "zorv/math/center_point3d.h"

#include "zorv/core/debug_output.h"

void ZoCenterPoint3d::Add(const ZoCenterPoint3d& other) {
    std::int64_t sum = std::int64_t{m_iCount} + other.m_iCount;
    if (sum == 0) sum = 1;
    const auto count = static_cast<double>(m_iCount);
    const auto otherCount = static_cast<double>(other.m_iCount);
    const auto total = static_cast<double>(sum);
    m_x = (otherCount * other.m_x + count * m_x) / total;
    m_y = (otherCount * other.m_y + count * m_y) / total;
    m_z = (otherCount * other.m_z + count * m_z) / total;
    m_iCount = Saturated(sum);
}

void ZoCenterPoint3d::Subtract(double x, double y, double z) {
    if (m_iCount <= 1) {
        Reset();
        return;
    }
    const auto count = static_cast<double>(m_iCount);
    const double rest = count - 1.0;
    m_x = (count * m_x - x) / rest;
    m_y = (count * m_y - y) / rest;
    m_z = (count * m_z - z) / rest;
    --m_iCount;
}

void ZoCenterPoint3d::Reset(double x, double y, double z) {
    m_x = x;
    m_y = y;
    m_z = z;
    m_iCount = 0;
}

void ZoCenterPoint3d::Move(double dx, double dy, double dz) {
    if (m_iCount == 0) return;
    m_x += dx;
    m_y += dy;
    m_z += dz;
}

void ZoCenterPoint3d::DbgPrintf() const {
    dbgprintf("m_iCount: %d, m_x %f, m_y %f, m_z %f", static_cast<int>(m_iCount), m_x, m_y, m_z);
}

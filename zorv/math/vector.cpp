#include "zorv/math/vector.h"

#include <utility>

#include "zorv/points/point.h"

constinit const ZoVector ZoVector::kXaxis2D(1.0, 0.0);
constinit const ZoVector ZoVector::kYaxis2D(0.0, 1.0);
constinit const ZoVector ZoVector::kXaxis3D(1.0, 0.0, 0.0);
constinit const ZoVector ZoVector::kYaxis3D(0.0, 1.0, 0.0);
constinit const ZoVector ZoVector::kZaxis3D(0.0, 0.0, 1.0);

ZoVector::ZoVector(const ZoPoint& point, eZoVectorType type)
    : elements{point.x, point.y}, size(type == eZoVectorXYZ0 ? 4 : 3) {
    if (type == eZoVectorXY1) elements[2] = 1.0;
    if (type == eZoVectorXYZ || type == eZoVectorXYZ0) elements[2] = point.z;
}

ZoVector::ZoVector(ZoVector&& other) noexcept : size(std::exchange(other.size, 0)), block(std::move(other.block)) {
    std::copy_n(other.elements, kInlineSize, elements);
    if (block) data = block.get();
    std::fill_n(other.elements, kInlineSize, 0.0);
    other.data = other.elements;
}

void ZoVector::MakeBlock() {
    block = std::make_unique<double[]>(static_cast<std::size_t>(size));
    data = block.get();
}

void ZoVector::Reshape(int count) {
    if (count == size) return Clear();
    ZoVector fresh(count);
    size = fresh.size;
    block = std::move(fresh.block);
    data = block ? block.get() : elements;
    std::fill_n(elements, kInlineSize, 0.0);
}

bool ZoVector::IsNormalized(double eps) const {
    const double norm = Abs();
    return 1.0 - eps <= norm && norm <= 1.0 + eps;
}

void ZoVector::ChangeType(eZoVectorType type) {
    if (size == 3 && type == eZoVectorXYZ0) {
        size = 4;
        data[3] = 1.0;
    } else if (size == 4 && (type == eZoVectorXY0 || type == eZoVectorXY1 || type == eZoVectorXYZ)) {
        if (type != eZoVectorXYZ) data[2] = type == eZoVectorXY1 ? 1.0 : 0.0;
        data[3] = 0.0;
        size = 3;
    }
}

ZoPoint ZoVector::GetAsZoPoint() const {
    return ZoPoint(0, data[0], data[1], data[2], 0);
}

bool CalcArbitaryAlg(ZoVector* xAxis, ZoVector* yAxis, const ZoVector& normal) {
    constexpr double kNearPole = 1.0 / 64.0;
    const bool nearPole = std::fabs(normal[1]) < kNearPole && std::fabs(normal[2]) < kNearPole;
    ZoVector x = (nearPole ? ZoVector::kYaxis3D : ZoVector::kZaxis3D) % normal;
    x.Normalize();
    ZoVector y = normal % x;
    y.Normalize();
    *xAxis = x;
    *yAxis = y;
    return true;
}

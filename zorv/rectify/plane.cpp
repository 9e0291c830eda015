#include "zorv/rectify/plane.h"

#include <algorithm>
#include <cmath>
#include <ostream>

#include "zorv/core/archive.h"
#include "zorv/core/lenient_number.h"
#include "zorv/core/number_format.h"
#include "zorv/core/reader_object.h"
#include "zorv/core/record_text.h"
#include "zorv/core/shaped_value.h"
#include "zorv/core/text_writer.h"

namespace {

constexpr double kParallelAngle = 4.0000000001150227e-7;  // radians
constexpr double kNormalAngle = 0.7853977633974483;       // radians, 45 degrees less a little

unsigned int PlaneFlag(const ZoObject* object, int mask) {
    return object ? static_cast<unsigned int>(static_cast<const ZoPlane*>(object)->IsFlagSet(mask)) : 0;
}

}  // namespace

void ZoPlane::Get(double* a, double* b, double* c, double* distance) const {
    *a = A();
    *b = B();
    *c = C();
    *distance = d;
}

void ZoPlane::Get(ZoVector* normal, double* distance) const {
    *normal = norm;
    *distance = d;
}

double ZoPlane::Dist(const ZoPlane& other) const {
    return IsParallel(other) ? d - other.d : 0.0;
}

double ZoPlane::CalcAngle(const ZoPlane& other) const {
    ZoVector n1(norm);
    ZoVector n2(other.norm);
    const double cosine = n1.Normalize() * n2.Normalize();
    return cosine >= 1.0 ? 0.0 : std::acos(std::max(cosine, -1.0));
}

bool ZoPlane::IsParallel(const ZoPlane& other) const {
    return CalcAngle(other) <= kParallelAngle;
}

bool ZoPlane::IsNormal(const ZoPlane& other) const {
    return CalcAngle(other) >= kNormalAngle;
}

bool ZoPlane::CalcIntersection(ZoVector& point, ZoVector& direction, const ZoPlane& other) const {
    if (IsParallel(other)) return false;
    direction = (norm % other.norm).Normalize();
    const double determinant = A() * other.B() - other.A() * B();
    if (determinant == 0.0) return false;
    point[1] = (B() * other.d - other.B() * d) / determinant;
    point[2] = (other.A() * d - A() * other.d) / determinant;
    point[3] = 0.0;
    return true;
}

bool ZoPlane::ProjectPoint(ZoPoint* result, const ZoPoint& p) const {
    if (!result || !IsValid()) return false;
    const double distance = Dist(p);
    result->x = p.x - distance * A();
    result->y = p.y - distance * B();
    result->z = p.z - distance * C();
    return true;
}

void ZoPlane::MirrorNormal() {
    norm *= -1.0;
    d = -d;
}

ZoVector ZoPlane::CalcPlaneVectorForSip() const {
    if (!IsValid()) return {0.0, 0.0, 0.0};
    const double a = std::fabs(A());
    const double b = std::fabs(B());
    const double c = std::fabs(C());
    if (a > b && a > c) return {-d / A(), 0.0, 0.0};
    if (b > a && b > c) return {0.0, -d / B(), 0.0};
    return {0.0, 0.0, -d / C()};
}

int ZoPlane::Read(ZoReaderObject* object) {
    ZoObject::Read(object);
    ZoStreamParser in = object->GetStreamParser();
    for (double* coefficient : {&A(), &B(), &C(), &D()})
        *coefficient = zorv::detail::TakeLenientNumber(in);
    return 1;
}

std::ostream& ZoPlane::Write(std::ostream& stream) const {
    ZoObject::Write(stream);
    constexpr int kDigits = 16;
    zorv::detail::RecordText text;
    for (const double coefficient : {A(), B(), C(), D()})
        text.Field(zorv::detail::FieldWidth::w16, zorv::detail::FiniteOrZero(coefficient), kDigits);
    text.WriteTo(stream << p16);
    return stream;
}

void ZoPlane::ReadV9(CZipWrapper* archive) {
    ZoObject::ReadV9(archive);
    ZoFlag::ReadV9(archive);
    zorv::detail::ReadShaped(norm, archive);
    archive->ReadValue(d);
}

void ZoPlane::WriteV9(CZipWrapper* archive) const {
    ZoObject::WriteV9(archive);
    ZoFlag::WriteV9(archive);
    norm.WriteV9(archive);
    archive->WriteValue(d);
}

unsigned int IsPlaneFlagGuiCheckActive(const ZoObject* plane) {
    return PlaneFlag(plane, ZoPlane::kActive);
}

unsigned int IsPlaneFlagGuiSelect(const ZoObject* plane) {
    return PlaneFlag(plane, ZoPlane::kGuiSelected);
}

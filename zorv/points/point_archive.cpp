#include <cstddef>
#include <cstdint>
#include <cstring>

#include "zorv/core/archive_list.h"
#include "zorv/core/bulk_change.h"
#include "zorv/points/point_list.h"

namespace {

/// The part of a point's record behind id and name, byte for byte.
constexpr std::size_t kFixedBytes = 3 * 4 + 2 + 9 * 8 + 3 * 4 + 2 * 2 + 4;

/// A record without a name: its id and the terminator of the name come first.
constexpr std::size_t kSmallestRecord = 4 + 2 + kFixedBytes;

/// Calls `visit` with each field of the fixed part, in the order of the record.
template <class Point, class Visit>
void ForEachField(Point& point, Visit visit) {
    visit(point.flags);
    visit(point.photoId);
    visit(point.cameraId);
    visit(point.controlFlags);
    for (auto* real : {&point.x, &point.y, &point.z, &point.dx, &point.dy, &point.dz, &point.residualX,
                       &point.residualY, &point.residualZ})
        visit(*real);
    for (auto* single : {&point.vx, &point.vy, &point.vz})
        visit(*single);
    visit(point.spare3);
    visit(point.imoCount);
    visit(point.color);
}

}  // namespace

void ZoPoint::ReadV9(CZipWrapper* archive) {
    ZoObject::ReadV9(archive);
    char bytes[kFixedBytes];
    const char* at = bytes;
    const char* const end = bytes + archive->Read(bytes, sizeof bytes);
    // Fields that are cut off stay as they are.
    ForEachField(*this, [&](auto& field) {
        if (static_cast<std::size_t>(end - at) >= sizeof field) {
            std::memcpy(&field, at, sizeof field);
            at += sizeof field;
        } else {
            at = end;
        }
    });
}

void ZoPoint::WriteV9(CZipWrapper* archive) const {
    ZoObject::WriteV9(archive);
    char bytes[kFixedBytes];
    char* at = bytes;
    ForEachField(*this, [&](const auto& field) {
        std::memcpy(at, &field, sizeof field);
        at += sizeof field;
    });
    archive->AddZipData(bytes, sizeof bytes);
}

void ZoPointList::ReadV9(CZipWrapper* archive) {
    zorv::detail::BulkChange(*this, [&] { zorv::detail::ReadRecords(*this, archive, kSmallestRecord); });
}

void ZoPointList::WriteV9(CZipWrapper* archive) const {
    zorv::detail::WriteRecords(*this, archive);
}

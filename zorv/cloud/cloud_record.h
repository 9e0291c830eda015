#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>

#include "zorv/cloud/scan_info.h"
#include "zorv/cloud/scan_point.h"

/// The records of a native cloud file: little-endian, packed, each with a marker in front.
namespace zorv::detail {

static_assert(std::endian::native == std::endian::little, "values lie in memory as they do in the file");

inline constexpr std::uint32_t kCloudFileMarker = 0xBABEF00D;
inline constexpr std::uint32_t kCloudMarker = 0xBABEBEEB;
inline constexpr std::uint32_t kScanInfoMarker = 0xCEFFCEFF;
inline constexpr std::uint32_t kScanPointMarker = 0xBABEBABE;

inline constexpr std::size_t kScanInfoRecord = 472;
inline constexpr std::size_t kScanPointRecord = 58;

/// False, with the point as it was, for a wrong marker.
inline bool DecodeScanPoint(const unsigned char* record, ZoScanPoint3d& point) {
    std::uint32_t marker;
    std::memcpy(&marker, record, 4);
    if (marker != kScanPointMarker) return false;
    std::memcpy(point.asDblArray(), record + 4, 24);
    point[3] = 1.0;
    std::memcpy(point.extra, record + 28, 12);
    std::memcpy(point.normal, record + 40, 12);
    point.nbrMeasurements = record[52];
    point.flags = record[53];
    std::memcpy(&point.color, record + 54, 4);
    point.falseColor = point.color;
    return true;
}

inline void EncodeScanPoint(const ZoScanPoint3d& point, unsigned char* record) {
    std::memcpy(record, &kScanPointMarker, 4);
    std::memcpy(record + 4, point.asDblArray(), 24);
    std::memcpy(record + 28, point.extra, 12);
    std::memcpy(record + 40, point.normal, 12);
    record[52] = point.nbrMeasurements;
    record[53] = point.flags;
    std::memcpy(record + 54, &point.color, 4);
}

/// Appends the kScanInfoRecord bytes of the record.
void AppendScanInfo(std::string& bytes, const ScanDataInfo& info);

}  // namespace zorv::detail

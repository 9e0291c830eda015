#include "zorv/cloud/las/las_header.h"

#include <array>
#include <cstring>

namespace zorv::las {

namespace {

using detail::ByteView;
using detail::NumberAt;

constexpr char kSignature[] = "LASF";
constexpr unsigned int kSmallestHeader = 227;  // of versions 1.0 to 1.2
constexpr unsigned int kHeaderOf14 = 375;      // the first one with 64-bit counts
constexpr unsigned int kCompressedMark = 0x80;

struct RecordShape {
    std::uint8_t length;
    std::uint8_t color;
};

// Formats 0 to 5 grow from 20 bytes, 6 to 10 from 30; time, colours, infrared and waveform follow each other.
constexpr std::array<RecordShape, 11> kShapes{{
    {20, 0},
    {28, 0},
    {26, 20},
    {34, 28},
    {57, 0},
    {63, 28},  // up to version 1.3
    {30, 0},
    {36, 30},
    {38, 30},
    {59, 0},
    {67, 30},  // of version 1.4
}};

}  // namespace

unsigned int PointRecordLength(unsigned int format) {
    return format < kShapes.size() ? kShapes[format].length : 0;
}

unsigned int ColorOffset(unsigned int format) {
    return format < kShapes.size() ? kShapes[format].color : 0;
}

bool ReadHeader(ByteView file, LASheader& header) {
    if (file.size() < kSmallestHeader || std::memcmp(file.data(), kSignature, 4) != 0) return false;
    const auto major = NumberAt<std::uint8_t>(file, 24);
    header.version_minor = NumberAt<std::uint8_t>(file, 25);
    header.header_size = NumberAt<std::uint16_t>(file, 94);
    header.offset_to_point_data = NumberAt<std::uint32_t>(file, 96);
    header.number_of_variable_length_records = NumberAt<std::uint32_t>(file, 100);
    const auto format = NumberAt<std::uint8_t>(file, 104);
    header.compressed = (format & kCompressedMark) != 0;
    header.point_data_format = static_cast<std::uint8_t>(format & ~kCompressedMark);
    header.point_data_record_length = NumberAt<std::uint16_t>(file, 105);
    header.number_of_point_records = NumberAt<std::uint32_t>(file, 107);

    double* const fields[] = {&header.x_scale_factor, &header.y_scale_factor, &header.z_scale_factor,
                              &header.x_offset,       &header.y_offset,       &header.z_offset};
    std::uint64_t at = 131;
    for (double* field : fields) {
        *field = NumberAt<double>(file, at);
        at += sizeof(double);
    }
    if (header.version_minor >= 4 && header.header_size >= kHeaderOf14) {
        const auto count = NumberAt<std::uint64_t>(file, 247);
        if (count > 0) header.number_of_point_records = count;
    }
    const unsigned int shortest = PointRecordLength(header.point_data_format);
    return major == 1 && header.header_size >= kSmallestHeader && shortest > 0 &&
           header.point_data_record_length >= shortest && header.offset_to_point_data >= header.header_size &&
           header.offset_to_point_data <= file.size();
}

}  // namespace zorv::las

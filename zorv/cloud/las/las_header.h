#pragma once

#include <cstdint>

#include "zorv/core/byte_view.h"

namespace zorv::las {

/// The fixed fields of a LAS file that its points need. The names are those that LASlib gives them.
struct LASheader {
    double x_scale_factor = 0;
    double y_scale_factor = 0;
    double z_scale_factor = 0;
    double x_offset = 0;
    double y_offset = 0;
    double z_offset = 0;
    std::uint8_t version_minor = 0;
    std::uint8_t point_data_format = 0;          ///< 0 to 10, without the mark of compression
    std::uint16_t point_data_record_length = 0;  ///< bytes
    std::uint16_t header_size = 0;               ///< bytes
    std::uint32_t offset_to_point_data = 0;      ///< bytes from the beginning of the file
    std::uint32_t number_of_variable_length_records = 0;
    std::uint64_t number_of_point_records = 0;  ///< as the file says, from the 64-bit field where there is one
    bool compressed = false;
};

/// Bytes of a record of that format without extra bytes; the formats are 0 to 10.
unsigned int PointRecordLength(unsigned int format);

/// Where the red channel lies in a record of that format, or 0 for a format without colours.
unsigned int ColorOffset(unsigned int format);

/// Reads the header of versions 1.0 to 1.4. False when the bytes are no LAS file, the format is unknown, its records
/// are longer than the stated length, or the points begin inside the header or behind the end of the file.
bool ReadHeader(detail::ByteView file, LASheader& header);

}  // namespace zorv::las

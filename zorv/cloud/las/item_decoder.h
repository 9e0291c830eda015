#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

#include "zorv/cloud/las/arithmetic_decoder.h"
#include "zorv/cloud/las/las_point.h"

namespace zorv::las {

/// One group of fields of a record in formats 0 to 5. All groups of a record lie in one stream, so each is decoded to
/// its end; what nobody asks for is then dropped.
class ItemDecoder {
  public:
    virtual ~ItemDecoder() = default;

    /// Begins anew with the group's bytes in the first record, which is not compressed.
    virtual void Start(const std::uint8_t* raw, LASpoint& point) = 0;
    /// Decodes the group of the next record. `point` holds the record before it.
    virtual void Next(ArithmeticDecoder& decoder, LASpoint& point) = 0;
};

/// Coordinates, intensity, returns, classification, scan angle, user data, source: versions 1 and 2.
std::unique_ptr<ItemDecoder> MakePoint10Decoder(unsigned int version);
/// GPS time, dropped: versions 1 and 2.
std::unique_ptr<ItemDecoder> MakeGpsTimeDecoder(unsigned int version);
/// Colours: versions 1 and 2.
std::unique_ptr<ItemDecoder> MakeColorDecoder(unsigned int version);
/// The reference to a waveform, dropped: version 1.
std::unique_ptr<ItemDecoder> MakeWavePacketDecoder();
/// Extra bytes, dropped: versions 1 and 2.
std::unique_ptr<ItemDecoder> MakeExtraByteDecoder(unsigned int version, std::size_t bytes);

}  // namespace zorv::las

#include "zorv/cloud/las/arithmetic_decoder.h"

namespace zorv::las {

std::uint32_t ArithmeticDecoder::AheadAtEnd(const std::uint8_t* bytes, std::size_t size, std::size_t next) {
    std::uint32_t four = 0;
    for (std::size_t i = 0; i < 4; ++i)
        four = four << 8 | (next < size && i < size - next ? bytes[next + i] : 0u);
    return four;
}

}  // namespace zorv::las

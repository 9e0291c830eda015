#pragma once

#include <cstdint>
#include <cstdio>

#include "zorv/export.h"

class ZoFileBuffMemoryMap;

/// What a scanner tells of a cloud. It travels with the cloud; of its fields only the time stamps mean something here,
/// the others belong to the host.
struct ZORV_API ScanDataInfo {
    /// Reads a record of a native cloud file. False, with all fields as they were, when it does not begin with its
    /// marker, which is passed over, or is cut off, which leaves nothing to read behind it.
    bool Read(ZoFileBuffMemoryMap& buffer);
    /// Writes the record, 472 bytes. Null does nothing.
    void Write(std::FILE* file) const;

    std::uint32_t firstWord = 0;
    std::int64_t timeStart = 0;  ///< seconds since 1970: of a new cloud now, of an imported one its file's last write
    std::int64_t timeEnd = 0;
    std::int64_t timeStart2 = 0;
    std::int64_t timeEnd2 = 0;
    std::uint64_t words[2] = {};
    std::uint8_t blocks[4][16] = {};
    double triple1[3] = {0.0, 0.0, 0.0};
    double triple2[3] = {0.0, 0.0, 0.0};
    double triple3[3] = {1.0, 1.0, 1.0};
    std::uint8_t lastBlock[16] = {};
    char texts[3][30] = {};
    std::uint64_t middleWords[3] = {};
    char lastText[30] = {};
    std::uint64_t fiveWords[5] = {};
    std::uint64_t tenWords[10] = {};
};

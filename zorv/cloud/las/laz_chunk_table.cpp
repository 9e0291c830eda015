#include "zorv/cloud/las/laz_chunk_table.h"

#include "zorv/cloud/las/integer_decoder.h"

namespace zorv::las {

namespace {

using detail::ByteView;
using detail::NumberAt;

constexpr std::uint64_t kTableHeader = 8;  // version, number of chunks

std::uint64_t TableOffset(ByteView file, std::uint64_t points) {
    const auto offset = NumberAt<std::int64_t>(file, points);
    // A writer that could not go back left the offset at the end of the file.
    const std::int64_t given = offset == -1 ? NumberAt<std::int64_t>(file, file.size() - 8) : offset;
    return given > 0 ? static_cast<std::uint64_t>(given) : 0;
}

}  // namespace

std::optional<std::vector<LazChunk>> ReadChunkTable(ByteView file, const LASheader& header, const LazLayout& layout) {
    const std::uint64_t first = header.offset_to_point_data + kChunkTablePointer;
    const std::uint64_t table = TableOffset(file, header.offset_to_point_data);
    if (table < first || table > file.size() || file.size() - table < kTableHeader) return std::nullopt;
    const auto version = NumberAt<std::uint32_t>(file, table);
    const auto count = NumberAt<std::uint32_t>(file, table + 4);
    // Each chunk begins with a whole record.
    if (version != 0 || count > (table - first) / header.point_data_record_length) return std::nullopt;

    std::vector<LazChunk> chunks(count);
    ArithmeticDecoder decoder(detail::BytesFrom(file, table + kTableHeader));
    IntegerDecoder numbers(32, 2);
    std::int32_t points = 0;
    std::int32_t size = 0;
    std::uint64_t offset = first;
    for (LazChunk& chunk : chunks) {
        if (layout.HasVariableChunks()) points = numbers.Decode(decoder, points, 0);
        size = numbers.Decode(decoder, size, 1);
        chunk = {offset, static_cast<std::uint32_t>(size),
                 layout.HasVariableChunks() ? static_cast<std::uint32_t>(points) : layout.chunkSize};
        if (chunk.size > table - offset || decoder.IsExhausted()) return std::nullopt;
        offset += chunk.size;
    }
    return chunks;
}

}  // namespace zorv::las

#include <algorithm>
#include <limits>
#include <vector>

#include "zorv/cloud/las/chunk_decoder.h"
#include "zorv/cloud/las/laz_chunk_table.h"
#include "zorv/cloud/las/laz_layout.h"
#include "zorv/cloud/las/point_source.h"

namespace zorv::las {

namespace {

using detail::ByteView;

// Once the statistics know a cloud of equal points, a point takes the share that its four or more symbols leave to
// the others: 1/32768 for each of them, some 0.0075 bits in all.
constexpr std::uint64_t kMostPointsPerByte = 1200;
constexpr std::uint64_t kUnlimited = std::numeric_limits<std::uint64_t>::max();

/// Walks from chunk to chunk: by the table where there is one, else each chunk begins where the last one ended.
class CompressedPoints final : public PointSource {
  public:
    CompressedPoints(ByteView file, std::uint64_t firstChunk, std::size_t pointRecordLength, const LazLayout& lazLayout,
                     std::optional<std::vector<LazChunk>> table)
        : bytes(file),
          next(firstChunk),
          recordLength(pointRecordLength),
          layout(lazLayout),
          hasTable(table.has_value()) {
        if (table) chunks = std::move(*table);
        capacity = bytes.size() - std::min<std::uint64_t>(bytes.size(), next);
        capacity *= kMostPointsPerByte;
        if (!hasTable) return;
        std::uint64_t told = 0;
        for (const LazChunk& chunk : chunks)
            told += chunk.points;
        capacity = std::min(capacity, told);
    }

    std::size_t Read(std::span<LASpoint> points) override {
        std::size_t count = 0;
        while (count < points.size() && !ended) {
            if (left == 0) {
                ended = !BeginChunk();
                continue;
            }
            const auto wanted = static_cast<std::size_t>(std::min<std::uint64_t>(points.size() - count, left));
            const std::size_t got = decoder->Next(points.subspan(count, wanted));
            count += got;
            left -= got;
            ended = got < wanted;
        }
        return count;
    }
    std::uint64_t Capacity() const override { return capacity; }

  private:
    bool BeginChunk() {
        if (hasTable) {
            if (index == chunks.size()) return false;
            const LazChunk& chunk = chunks[index++];
            left = chunk.points;
            return left == 0 || Decode(detail::BytesAt(bytes, chunk.offset, chunk.size));
        }
        if (decoder) next += decoder->Used();
        if (!Decode(detail::BytesFrom(bytes, next))) return false;
        left =
            layout.compressor == LazLayout::kPointWise ? kUnlimited : decoder->Announced().value_or(layout.chunkSize);
        return left > 0;
    }

    bool Decode(ByteView chunk) {
        // Before anything is made for records of a length that is perhaps a lie.
        if (chunk.size() < recordLength) return false;
        if (!decoder) decoder = layout.IsLayered() ? MakeLayeredDecoder(layout) : MakePointWiseDecoder(layout);
        return decoder->Begin(chunk);
    }

    ByteView bytes;
    std::uint64_t next;        // where the next chunk begins, without a table
    std::size_t recordLength;  // bytes
    LazLayout layout;
    std::unique_ptr<ChunkDecoder> decoder;
    bool hasTable;
    std::vector<LazChunk> chunks;
    std::size_t index = 0;
    std::uint64_t capacity = 0;
    std::uint64_t left = 0;  // points of the present chunk
    bool ended = false;
};

}  // namespace

std::unique_ptr<PointSource> OpenCompressedPoints(ByteView file, const LASheader& header) {
    LazLayout layout;
    if (!ReadLazLayout(file, header, layout)) return nullptr;
    if (layout.compressor == LazLayout::kNone) return OpenPlainPoints(file, header);
    std::uint64_t first = header.offset_to_point_data;
    std::optional<std::vector<LazChunk>> table;
    if (layout.compressor != LazLayout::kPointWise) {
        table = ReadChunkTable(file, header, layout);
        first += kChunkTablePointer;
        // Only a layered chunk tells itself how many points it has.
        if (!table && layout.HasVariableChunks() && !layout.IsLayered()) return nullptr;
    }
    return std::make_unique<CompressedPoints>(file, first, header.point_data_record_length, layout, std::move(table));
}

}  // namespace zorv::las

// Compressed points that an encoder of the tests' own has made, where no real file is at hand.

#include "tests/support/las_bytes.h"
#include "tests/support/laz_encoder.h"
#include <gtest/gtest.h>

#include "zorv/cloud/las/las_header.h"
#include "zorv/cloud/las/point_source.h"

namespace {

using las_bytes::Append;
using las_bytes::Items;
using las_bytes::LazHeader;
using las_bytes::Put;
using zorv::las::LASpoint;

std::unique_ptr<zorv::las::PointSource> Open(const std::string& bytes) {
    const zorv::detail::ByteView view(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
    zorv::las::LASheader header;
    if (!zorv::las::ReadHeader(view, header)) return nullptr;
    return zorv::las::OpenCompressedPoints(view, header);
}

/// At most a thousand points.
std::vector<LASpoint> Read(const std::string& bytes) {
    std::vector<LASpoint> points(1000);
    const auto source = Open(bytes);
    points.resize(source ? source->Read(points) : 0);
    return points;
}

using Records = std::vector<laz::Record>;

bool IsBeginningOf(const std::vector<LASpoint>& points, const Records& records) {
    return points.size() <= records.size() &&
           std::equal(points.begin(), points.end(), records.begin(), [](const LASpoint& a, const laz::Record& record) {
               const LASpoint& b = record.point;
               return a.X == b.X && a.Y == b.Y && a.Z == b.Z && a.intensity == b.intensity &&
                      std::equal(a.rgb, a.rgb + 3, b.rgb);
           });
}

/// Points of several scanner channels and returns, with small steps and the largest ones that there are.
Records MakeRecords(std::size_t count, bool colors) {
    Records records(count);
    std::uint32_t random = 12345;
    const auto next = [&](std::uint32_t below) {
        random = random * 1664525 + 1013904223;
        return (random >> 8) % below;
    };
    for (std::size_t i = 0; i < count; ++i) {
        LASpoint& point = records[i].point;
        point.X = static_cast<std::int32_t>(next(1000));
        point.Y = i % 17 == 0 ? (i % 2 == 0 ? INT32_MAX : INT32_MIN) : static_cast<std::int32_t>(10 * i);
        point.Z = static_cast<std::int32_t>(next(40)) - 20;
        point.intensity = static_cast<std::uint16_t>(next(65536));
        for (unsigned int c = 0; c < 3 && colors; ++c)
            point.rgb[c] = static_cast<std::uint16_t>(next(2) * 255 + 257 * i + c);
        records[i].returnNumber = next(16);
        records[i].channel = next(3) == 0 ? next(4) : (i > 0 ? records[i - 1].channel : 2);
    }
    return records;
}

struct Format {
    unsigned int number;
    laz::Groups groups;
};

/// All layered formats, one of them with extra bytes.
std::vector<Format> Formats(std::uint16_t version) {
    return {{6, {{{10, 30, version}}, 9, false}},
            {7, {{{10, 30, version}, {11, 6, version}, {14, 4, version}}, 14, true}},
            {8, {{{10, 30, version}, {12, 8, version}}, 11, true}},
            {9, {{{10, 30, version}, {13, 29, version}}, 10, false}},
            {10, {{{10, 30, version}, {12, 8, version}, {13, 29, version}}, 12, true}}};
}

enum class Table { kInPlace, kAtEnd, kMissing };

/// A layered file of chunks with 100, 1 and the remaining points.
std::string LayeredFile(const Format& format, const Records& records, Table where) {
    std::string bytes = LazHeader(4, format.number, records.size(), 3, 0xffffffffu, format.groups.items);
    const std::size_t pointer = bytes.size();
    Append(bytes, std::int64_t{-1});
    std::vector<std::pair<std::uint32_t, std::uint32_t>> chunks;
    const auto begin = records.begin();
    for (const auto& [from, to] :
         {std::pair{begin, begin + 100}, {begin + 100, begin + 101}, {begin + 101, records.end()}}) {
        const std::string chunk = laz::Chunk(format.groups, {from, to});
        chunks.emplace_back(to - from, chunk.size());
        bytes += chunk;
    }
    if (where == Table::kMissing) return bytes;
    const auto table = static_cast<std::int64_t>(bytes.size());
    bytes += laz::ChunkTable(chunks);
    if (where == Table::kInPlace) Put(bytes, pointer, table);
    if (where == Table::kAtEnd) Append(bytes, table);
    return bytes;
}

TEST(LazChunk, LayeredFormatsGiveTheirPointsWithAndWithoutATable) {
    for (const std::uint16_t version : {3, 4}) {
        for (const Format& format : Formats(version)) {
            const auto records = MakeRecords(300, format.groups.hasColors);
            for (const Table table : {Table::kInPlace, Table::kAtEnd, Table::kMissing}) {
                const auto points = Read(LayeredFile(format, records, table));
                EXPECT_EQ(points.size(), 300u);
                EXPECT_TRUE(IsBeginningOf(points, records))
                    << "format " << format.number << " version " << version << " table " << static_cast<int>(table);
            }
        }
    }
}

/// Single returns of format 4 in one stream, whose times stand still and whose waveforms and three extra bytes move.
std::string PointWiseFile(int count, bool chunked) {
    const Items items{{6, 20, 2}, {7, 8, 2}, {9, 29, 1}, {0, 3, 2}};
    std::string bytes = LazHeader(3, 4, static_cast<std::uint64_t>(count), chunked ? 2 : 1, 50000, items);
    if (chunked) Append(bytes, std::int64_t{0});
    bytes += std::string(14, '\0') + '\x09' + std::string(45, '\x05');

    laz::ArithmeticEncoder code;
    zorv::las::AdaptiveSymbols<64> changed(64);
    laz::IntegerEncoder x(32, 2), y(32, 22), z(32, 20), offset(32, 1), size(32, 1), returnPoint(32, 1), axes(32, 3);
    zorv::las::AdaptiveSymbols<6> still(6);
    zorv::las::AdaptiveSymbols<256> descriptor(256);
    std::vector<zorv::las::AdaptiveSymbols<4>> kinds(4, zorv::las::AdaptiveSymbols<4>(4));
    std::vector<zorv::las::AdaptiveSymbols<256>> extras(3, descriptor);
    zorv::las::RunningMedian steps;
    for (int i = 1; i < count; ++i) {
        code.Symbol(changed, 0);
        const unsigned int xBits = x.Encode(code, steps.Get(), 3, 1);
        const unsigned int yBits = y.Encode(code, steps.Get(), 3, 1 + xBits / 2 * 2);
        steps.Add(3);
        z.Encode(code, 1 - i, -i, 1 + (xBits + yBits) / 2 / 2 * 2);
        code.Symbol(still, 0);
        const auto number = static_cast<std::uint32_t>(i);
        code.Symbol(descriptor, number % 3);
        code.Symbol(kinds[(number - 1) % 4], number % 4);
        if (i % 4 == 2) offset.Encode(code, 0, 1000 * i, 0);
        for (int word = 0; word < 2 && i % 4 == 3; ++word)
            code.Bits(32, 0x12345678);
        size.Encode(code, 0, 256 + i, 0);
        returnPoint.Encode(code, 0, -i, 0);
        for (unsigned int axis = 0; axis < 3; ++axis)
            axes.Encode(code, 0, 1 << i % 31, axis);
        for (auto& extra : extras)
            code.Symbol(extra, number % 256);
    }
    return bytes + code.Finish();
}

/// Its points: (3 i, 3 i, -i).
Records PointWiseRecords(int count) {
    Records records;
    for (int i = 0; i < count; ++i)
        records.push_back({{3 * i, 3 * i, -i}});
    return records;
}

TEST(LazChunk, WaveformsAndExtraBytesArePassedOverInOneStream) {
    for (const bool chunked : {false, true}) {
        const auto points = Read(PointWiseFile(200, chunked));
        EXPECT_EQ(points.size(), 200u) << chunked;
        EXPECT_TRUE(IsBeginningOf(points, PointWiseRecords(200))) << chunked;
    }
}

TEST(LazChunk, ATruncatedFileGivesABeginningOfItsPoints) {
    const auto records = MakeRecords(150, true);
    const auto layered = LayeredFile(Formats(3)[1], records, Table::kInPlace);
    for (std::size_t size = 0; size < layered.size(); ++size)
        ASSERT_TRUE(IsBeginningOf(Read(layered.substr(0, size)), records)) << size;
    const auto pointWise = PointWiseFile(100, true);
    for (std::size_t size = 0; size < pointWise.size(); ++size)
        ASSERT_TRUE(IsBeginningOf(Read(pointWise.substr(0, size)), PointWiseRecords(100))) << size;
    // All but the table is enough.
    EXPECT_EQ(Read(layered.substr(0, layered.size() - 10)).size(), 150u);
}

TEST(LazChunk, DamagedBytesDoNoHarm) {
    const auto layered = LayeredFile(Formats(4)[4], MakeRecords(120, true), Table::kAtEnd);
    for (const std::string& file : {layered, PointWiseFile(60, true)}) {
        for (std::size_t at = 227; at < file.size(); ++at) {
            std::string damaged = file;
            damaged[at] = static_cast<char>(damaged[at] ^ (at % 2 == 0 ? 0x01 : 0xff));
            const auto source = Open(damaged);
            std::vector<LASpoint> points(500);
            EXPECT_LE(source ? source->Read(points) : 0, source ? source->Capacity() : 0) << at;
        }
    }
}

TEST(LazChunk, CapacityIsBoundedByTheBytesWhateverTheTableSays) {
    for (const Table table : {Table::kInPlace, Table::kAtEnd}) {
        const auto source = Open(LayeredFile(Formats(3)[0], MakeRecords(200, false), table));
        ASSERT_TRUE(source);
        EXPECT_EQ(source->Capacity(), 200u);
    }
    std::string bytes = LazHeader(4, 6, 0xffffffffffffu, 3, 0xffffffffu, {{10, 30, 3}});
    Append(bytes, static_cast<std::int64_t>(bytes.size() + 8 + 100));
    bytes.append(100, '\x07');
    bytes += laz::ChunkTable({{0xffffffffu, 60}, {0xffffffffu, 40}});
    const auto lying = Open(bytes);
    ASSERT_TRUE(lying);
    EXPECT_LT(lying->Capacity(), 1200u * bytes.size());
    EXPECT_EQ(Read(bytes).size(), 0u);
}

TEST(LazChunk, CompressorsThatNobodyWritesAreRefused) {
    const Items point10{{6, 20, 2}};
    const auto opens = [](unsigned int format, std::uint16_t compressor, std::uint32_t chunkSize, const Items& items) {
        return Open(LazHeader(4, format, 0, compressor, chunkSize, items)) != nullptr;
    };
    EXPECT_TRUE(opens(0, 2, 50000, point10) && opens(0, 1, 0, point10) && opens(6, 3, 0xffffffffu, {{10, 30, 3}}));
    EXPECT_FALSE(opens(0, 4, 50000, point10)) << "compressor";
    EXPECT_FALSE(opens(0, 2, 0, point10)) << "chunks of no points";
    EXPECT_FALSE(opens(0, 2, 0xffffffffu, point10)) << "chunks of unknown length and no table";
    EXPECT_FALSE(opens(0, 3, 50000, point10)) << "layers of a group without layers";
    EXPECT_FALSE(opens(6, 2, 50000, {{10, 30, 3}})) << "one stream of a group with layers";
    EXPECT_FALSE(opens(0, 2, 50000, {{6, 20, 3}})) << "version";
    EXPECT_FALSE(opens(0, 2, 50000, {{6, 20, 2}, {8, 7, 2}})) << "size of a group";
    EXPECT_FALSE(opens(0, 2, 50000, {{6, 20, 2}, {0, 3, 1}, {0, 3, 1}})) << "a group twice";
    EXPECT_FALSE(opens(2, 2, 50000, {{8, 6, 2}, {6, 20, 2}})) << "order";
    EXPECT_FALSE(opens(0, 2, 50000, {})) << "no groups";

    std::string bytes = LazHeader(2, 1, 0, 2, 50000, {{6, 20, 2}, {7, 8, 2}});
    EXPECT_TRUE(Open(bytes));
    Put(bytes, 105, std::uint16_t{29});
    EXPECT_FALSE(Open(bytes)) << "groups do not fill the record";
}

}  // namespace

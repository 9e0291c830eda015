// Compressed points that an encoder of the tests' own has made, where no real file is at hand.

#include "tests/support/las_bytes.h"
#include "tests/support/laz_encoder.h"
#include <gtest/gtest.h>

#include "zorv/cloud/las/las_header.h"
#include "zorv/cloud/las/point_source.h"

namespace {

using las_bytes::LazHeader;
using las_bytes::Put;
using zorv::las::LASpoint;

zorv::detail::ByteView View(const std::string& bytes) {
    return {reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()};
}

bool operator==(const LASpoint& a, const LASpoint& b) {
    return a.X == b.X && a.Y == b.Y && a.Z == b.Z && a.intensity == b.intensity && std::equal(a.rgb, a.rgb + 3, b.rgb);
}

std::unique_ptr<zorv::las::PointSource> Open(const std::string& bytes) {
    zorv::las::LASheader header;
    if (!zorv::las::ReadHeader(View(bytes), header)) return nullptr;
    return zorv::las::OpenCompressedPoints(View(bytes), header);
}

/// At most a thousand points.
std::vector<LASpoint> Read(const std::string& bytes) {
    std::vector<LASpoint> points(1000);
    const auto source = Open(bytes);
    points.resize(source ? source->Read(points) : 0);
    return points;
}

bool IsBeginningOf(const std::vector<LASpoint>& some, const std::vector<LASpoint>& all) {
    return some.size() <= all.size() && std::equal(some.begin(), some.end(), all.begin(),
                                                   [](const LASpoint& a, const LASpoint& b) { return a == b; });
}

/// Points of several scanner channels and returns, with small steps and the largest ones that there are.
std::vector<laz::Record> Records(std::size_t count, bool colors) {
    std::vector<laz::Record> records(count);
    std::uint32_t random = 12345;
    const auto next = [&](std::uint32_t below) {
        random = random * 1664525 + 1013904223;
        return (random >> 8) % below;
    };
    for (laz::Record& record : records) {
        const std::size_t i = static_cast<std::size_t>(&record - records.data());
        record.point.X = static_cast<std::int32_t>(next(1000));
        record.point.Y = i % 17 == 0 ? (i % 2 == 0 ? INT32_MAX : INT32_MIN) : static_cast<std::int32_t>(10 * i);
        record.point.Z = static_cast<std::int32_t>(next(40)) - 20;
        record.point.intensity = static_cast<std::uint16_t>(next(65536));
        for (unsigned int c = 0; c < 3 && colors; ++c)
            record.point.rgb[c] = static_cast<std::uint16_t>(next(2) * 255 + 257 * i + c);
        record.channel = next(3) == 0 ? next(4) : (i > 0 ? records[i - 1].channel : 2);
        record.returns = 1 + next(15);
        record.returnNumber = next(16);
        record.newTime = next(2) == 0;
    }
    return records;
}

std::vector<LASpoint> PointsOf(const std::vector<laz::Record>& records) {
    std::vector<LASpoint> points;
    for (const laz::Record& record : records)
        points.push_back(record.point);
    return points;
}

struct Format {
    unsigned int number;
    laz::Groups groups;
    std::vector<las_bytes::Item> items;
};

/// All layered formats, one of them with extra bytes.
std::vector<Format> Formats(std::uint16_t version) {
    return {{6, {}, {{10, 30, version}}},
            {7, {6, 4, 4}, {{10, 30, version}, {11, 6, version}, {14, 4, version}}},
            {8, {8, 0, 0}, {{10, 30, version}, {12, 8, version}}},
            {9, {0, 29, 1}, {{10, 30, version}, {13, 29, version}}},
            {10, {8, 29, 1}, {{10, 30, version}, {12, 8, version}, {13, 29, version}}}};
}

enum class Table { kInPlace, kAtEnd, kMissing };

/// A layered file of chunks with 100, 1 and the remaining points.
std::string LayeredFile(const Format& format, unsigned int version, const std::vector<laz::Record>& records,
                        Table where) {
    std::string bytes = LazHeader(4, format.number, records.size(), 3, 0xffffffffu, format.items);
    const std::size_t pointer = bytes.size();
    laz::Append(bytes, std::int64_t{-1});
    std::vector<std::pair<std::uint32_t, std::uint32_t>> chunks;
    for (std::size_t at = 0; at < records.size();) {
        const std::size_t count = at == 0 ? 100 : (at == 100 ? 1 : records.size() - at);
        const auto first = records.begin() + static_cast<std::ptrdiff_t>(at);
        const std::string chunk =
            laz::Chunk(version, format.groups, {first, first + static_cast<std::ptrdiff_t>(count)});
        chunks.emplace_back(count, chunk.size());
        bytes += chunk;
        at += count;
    }
    if (where == Table::kMissing) return bytes;
    const auto table = static_cast<std::int64_t>(bytes.size());
    bytes += laz::ChunkTable(chunks, true);
    if (where == Table::kInPlace) Put(bytes, pointer, table);
    if (where == Table::kAtEnd) laz::Append(bytes, table);
    return bytes;
}

TEST(LazChunk, LayeredFormatsGiveTheirPointsWithAndWithoutATable) {
    for (const std::uint16_t version : {3, 4}) {
        for (const Format& format : Formats(version)) {
            const auto records = Records(300, format.groups.colorBytes > 0);
            for (const Table table : {Table::kInPlace, Table::kAtEnd, Table::kMissing}) {
                const auto points = Read(LayeredFile(format, version, records, table));
                EXPECT_EQ(points.size(), 300u);
                EXPECT_TRUE(IsBeginningOf(points, PointsOf(records)))
                    << "format " << format.number << " version " << version << " table " << static_cast<int>(table);
            }
        }
    }
}

/// A chunk of single returns in formats 0 and 4, whose times stand still and whose waveforms and extra bytes move.
std::string PointWiseFile(bool waves, std::size_t extra, int count, bool chunked) {
    std::vector<las_bytes::Item> items{{6, 20, 2}};
    if (waves) items.insert(items.end(), {{7, 8, 2}, {9, 29, 1}});
    if (extra > 0) items.push_back({0, static_cast<std::uint16_t>(extra), 2});
    std::string bytes = LazHeader(3, waves ? 4 : 0, static_cast<std::uint64_t>(count), chunked ? 2 : 1, 50000, items);
    if (chunked) laz::Append(bytes, std::int64_t{0});
    std::string first(20 + (waves ? 37 : 0) + extra, '\x05');
    first.replace(0, 14, std::string(14, '\0'));
    first[14] = 9;

    laz::ArithmeticEncoder code;
    zorv::las::AdaptiveSymbols<64> changed(64);
    laz::IntegerEncoder x(32, 2), y(32, 22), z(32, 20), offset(32, 1), size(32, 1), returnPoint(32, 1), axes(32, 3);
    zorv::las::AdaptiveSymbols<6> still(6);
    zorv::las::AdaptiveSymbols<256> descriptor(256);
    std::vector<zorv::las::AdaptiveSymbols<4>> kinds(4, zorv::las::AdaptiveSymbols<4>(4));
    std::vector<zorv::las::AdaptiveSymbols<256>> extras(extra, zorv::las::AdaptiveSymbols<256>(256));
    unsigned int kind = 0;
    // The median step after the first few is the step itself.
    zorv::las::RunningMedian steps;
    for (int i = 1; i < count; ++i) {
        code.Symbol(changed, 0);
        x.Encode(code, steps.Get(), 3, 1);
        y.Encode(code, steps.Get(), 3, 1 + x.bits / 2 * 2);
        steps.Add(3);
        z.Encode(code, 1 - i, -i, 1 + (x.bits + y.bits) / 2 / 2 * 2);
        if (waves) {
            code.Symbol(still, 0);
            code.Symbol(descriptor, static_cast<std::uint32_t>(i % 3));
            const unsigned int before = kind;
            kind = static_cast<unsigned int>(i % 4);
            code.Symbol(kinds[before], kind);
            if (kind == 2) offset.Encode(code, 0, 1000 * i, 0);
            for (int word = 0; word < 2 && kind == 3; ++word)
                code.Bits(32, 0x12345678);
            size.Encode(code, 0, 256 + i, 0);
            returnPoint.Encode(code, 0, -i, 0);
            for (unsigned int axis = 0; axis < 3; ++axis)
                axes.Encode(code, 0, 1 << i % 31, axis);
        }
        for (std::size_t b = 0; b < extra; ++b)
            code.Symbol(extras[b], static_cast<std::uint32_t>(i + static_cast<int>(b)) % 256);
    }
    return bytes + first + code.Finish();
}

TEST(LazChunk, WaveformsAndExtraBytesArePassedOverInOneStream) {
    for (const bool waves : {false, true}) {
        for (const std::size_t extra : {0, 1, 40}) {
            for (const bool chunked : {false, true}) {
                const auto points = Read(PointWiseFile(waves, extra, 200, chunked));
                ASSERT_EQ(points.size(), 200u) << waves << extra << chunked;
                for (int i = 0; i < 200; ++i) {
                    EXPECT_EQ(points[static_cast<std::size_t>(i)].X, 3 * i);
                    EXPECT_EQ(points[static_cast<std::size_t>(i)].Y, 3 * i);
                    EXPECT_EQ(points[static_cast<std::size_t>(i)].Z, -i);
                }
            }
        }
    }
}

TEST(LazChunk, ATruncatedFileGivesABeginningOfItsPoints) {
    const auto records = Records(150, true);
    const auto layered = LayeredFile(Formats(3)[1], 3, records, Table::kInPlace);
    const auto pointWise = PointWiseFile(true, 3, 100, true);
    const auto allPointWise = Read(pointWise);
    for (std::size_t size = 0; size < layered.size(); ++size)
        ASSERT_TRUE(IsBeginningOf(Read(layered.substr(0, size)), PointsOf(records))) << size;
    for (std::size_t size = 0; size < pointWise.size(); ++size)
        ASSERT_TRUE(IsBeginningOf(Read(pointWise.substr(0, size)), allPointWise)) << size;
    // All but the table is enough.
    EXPECT_EQ(Read(layered.substr(0, layered.size() - 10)).size(), 150u);
}

TEST(LazChunk, DamagedBytesDoNoHarm) {
    const auto layered = LayeredFile(Formats(4)[4], 4, Records(120, true), Table::kAtEnd);
    const auto pointWise = PointWiseFile(true, 2, 60, true);
    for (const std::string& file : {layered, pointWise}) {
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
    const auto source = Open(LayeredFile(Formats(3)[0], 3, Records(200, false), Table::kInPlace));
    ASSERT_TRUE(source);
    EXPECT_EQ(source->Capacity(), 200u);
    std::string bytes = LazHeader(4, 6, 0xffffffffffffu, 3, 0xffffffffu, {{10, 30, 3}});
    laz::Append(bytes, static_cast<std::int64_t>(bytes.size() + 8 + 100));
    bytes.append(100, '\x07');
    bytes += laz::ChunkTable({{0xffffffffu, 60}, {0xffffffffu, 40}}, true);
    const auto lying = Open(bytes);
    ASSERT_TRUE(lying);
    EXPECT_LT(lying->Capacity(), 1200u * bytes.size());
    EXPECT_EQ(Read(bytes).size(), 0u);
}

TEST(LazChunk, CompressorsThatNobodyWritesAreRefused) {
    const std::vector<las_bytes::Item> point10{{6, 20, 2}};
    const auto opens = [](unsigned int format, std::uint16_t compressor, std::uint32_t chunkSize,
                          const std::vector<las_bytes::Item>& items) {
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

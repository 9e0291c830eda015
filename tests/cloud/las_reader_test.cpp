#include "zorv/cloud/las/las_reader.h"

#include "tests/support/las_bytes.h"
#include "tests/support/temp_folder.h"
#include <gtest/gtest.h>

namespace {

using las_bytes::Header;
using las_bytes::LazHeader;
using las_bytes::Put;
using zorv::las::LASpoint;
using zorv::las::LASreader;
using zorv::las::LASreadOpener;

const std::filesystem::path kClouds = std::filesystem::path(ZORV_TEST_DATA) / "las";

std::unique_ptr<LASreader> OpenFile(const std::filesystem::path& path) {
    LASreadOpener opener;
    opener.set_file_name(path.c_str());
    return opener.open();
}

std::unique_ptr<LASreader> OpenBytes(const TempFolder& folder, const std::string& bytes) {
    folder.Write("cloud.las", bytes);
    return OpenFile(folder.path / "cloud.las");
}

std::string Bytes(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

/// Count, sums of all fields and a number that tells their order.
struct Digest {
    std::int64_t count = 0;
    std::array<std::int64_t, 7> sums{};
    std::uint64_t fold = 0;

    bool operator==(const Digest&) const = default;
};

Digest DigestOf(LASreader& reader) {
    Digest digest;
    while (reader.read_point()) {
        const LASpoint& p = reader.point;
        const std::int64_t fields[] = {p.X, p.Y, p.Z, p.intensity, p.rgb[0], p.rgb[1], p.rgb[2]};
        for (std::size_t i = 0; i < digest.sums.size(); ++i) {
            digest.sums[i] += fields[i];
            digest.fold = digest.fold * 31 + static_cast<std::uint64_t>(fields[i]);
        }
        ++digest.count;
    }
    return digest;
}

const Digest kSimple{1065, {67872102297, 90658075849, 46231420, 81361, 129567, 118582, 134764}, 0x3d7046f1955e2674};
const Digest kAutzen{
    110000, {7002010454461, 9340603643128, 4733712773, 11220547, 12255922, 13168529, 10938029}, 0x2a2dfddea6d09565};
const Digest kOnePoint{1, {47069244, 460288890, 1600, 0, 0, 0, 0}, 0x00c33a610abcaa42};
const Digest kOneColor{1, {47069244, 460288890, 1600, 0, 255, 12, 234}, 0x00c33a610ac069df};

// The digests come from a script that unpacks the records, those of the files without a twin from another decoder.
TEST(LasReader, RealFilesGiveWhatOtherReadersFound) {
    const std::vector<std::pair<const char*, Digest>> files{
        {"simple.las", kSimple},
        {"simple.laz", kSimple},
        {"simple-laszip-compressor-version-1.2r0.laz", kSimple},
        {"1.2-with-color.las", kSimple},
        {"1.2-with-color.copc.laz",
         {1065, {-475503, 3405709, -6643700, 81361, 129567, 118582, 134764}, 0x775f89a3bb371264}},
        {"autzen_trim.laz", kAutzen},
        {"test1_4.las", {1000, {1613657196599, -862277192904, -1747182313999, 38007, 0, 0, 0}, 0x00e6636916f2dbe5}},
        {"bad_vlr_count.las", {10, {289816322, 4320979605, 170679, 2660, 0, 0, 0}, 0x75d0c2cc01092eea}},
        {"no-points.las", {}},
        {"permutations/1.2-no-points.las", {}},
        {"permutations/1.0_0.las", kOnePoint},
        {"permutations/1.0_1.las", kOnePoint},
        {"permutations/1.1_0.las", kOnePoint},
        {"permutations/1.1_1.las", kOnePoint},
        {"permutations/1.2_0.las", kOnePoint},
        {"permutations/1.2_1.las", kOnePoint},
        {"permutations/1.2_2.las", kOneColor},
        {"permutations/1.2_3.las", kOneColor},
    };
    if (!std::filesystem::exists(kClouds)) GTEST_SKIP() << "no " << kClouds;
    for (const auto& [name, expected] : files) {
        SCOPED_TRACE(name);
        const auto reader = OpenFile(kClouds / name);
        ASSERT_TRUE(reader);
        EXPECT_EQ(reader->npoints, expected.count);
        EXPECT_EQ(DigestOf(*reader), expected);
        EXPECT_EQ(reader->p_count, expected.count);
    }
}

/// Records in which every byte differs, and those of the fields are known.
std::string PlainRecords(unsigned int length, unsigned int color, int count) {
    std::string bytes;
    for (int i = 0; i < count; ++i) {
        std::string record(length, static_cast<char>(0x50 + i));
        Put(record, 0, std::int32_t{-100 - i});
        Put(record, 4, std::int32_t{2000000000 + i});
        Put(record, 8, std::int32_t{7 * i});
        Put(record, 12, static_cast<std::uint16_t>(65535 - i));
        for (unsigned int c = 0; c < 3 && color > 0; ++c)
            Put(record, color + 2 * c, static_cast<std::uint16_t>(1000 * (c + 1) + static_cast<unsigned int>(i)));
        bytes += record;
    }
    return bytes;
}

TEST(LasReader, EveryVersionAndFormatIsUnpacked) {
    const struct {
        unsigned int number, length, color;
        int since;
    } formats[] = {{0, 20, 0, 0}, {1, 28, 0, 0},  {2, 26, 20, 2}, {3, 34, 28, 2}, {4, 57, 0, 3},  {5, 63, 28, 3},
                   {6, 30, 0, 4}, {7, 36, 30, 4}, {8, 38, 30, 4}, {9, 59, 0, 4},  {10, 67, 30, 4}};
    const TempFolder folder;
    for (const auto& format : formats) {
        for (int minor = format.since; minor <= 4; ++minor) {
            for (const unsigned int extra : {0u, 5u}) {
                SCOPED_TRACE(testing::Message() << "1." << minor << " format " << format.number << "+" << extra);
                const unsigned int length = format.length + extra;
                const auto reader =
                    OpenBytes(folder, Header(minor, format.number, length, 3) + PlainRecords(length, format.color, 3));
                ASSERT_TRUE(reader);
                EXPECT_EQ(std::tuple(reader->npoints, reader->header.x_scale_factor, reader->header.y_scale_factor),
                          std::tuple(3, 0.01, 0.02));
                EXPECT_EQ(std::tuple(reader->header.x_offset, reader->header.z_offset), std::tuple(1000, -3));
                std::vector<LASpoint> points(4);
                ASSERT_EQ(reader->read_points(points), 3u);
                EXPECT_EQ(std::tuple(points[2].X, points[2].Y, points[2].Z, points[2].intensity, points[2].rgb[0]),
                          std::tuple(-102, 2000000002, 14, 65533, format.color > 0 ? 1002 : 0));
                EXPECT_EQ(points[2].rgb[2], format.color > 0 ? 3002 : 0);
            }
        }
    }
}

TEST(LasReader, LongHeadersAndWhatLiesAroundThePointsArePassedOver) {
    const TempFolder folder;
    std::string bytes = Header(4, 2, 26, 2);
    bytes.resize(500, '\x7f');
    Put(bytes, 94, std::uint16_t{500});
    Put(bytes, 96, std::uint32_t{800});
    Put(bytes, 100, std::uint32_t{4000000000u});
    bytes.resize(800, '\x6f');
    const auto reader = OpenBytes(folder, bytes + PlainRecords(26, 20, 2) + std::string(300, '\x01'));
    ASSERT_TRUE(reader);
    ASSERT_TRUE(reader->read_point());
    EXPECT_EQ(reader->point.Y, 2000000000);
    std::vector<LASpoint> rest(10);
    EXPECT_EQ(reader->read_points(rest), 1u);  // point and block reading share one place in the file
    EXPECT_EQ(rest[0].Y, 2000000001);
    EXPECT_FALSE(reader->read_point());
    EXPECT_EQ(reader->p_count, 2);
}

TEST(LasReader, WithoutANameNothingIsActiveAndAfterCloseNothingIsRead) {
    LASreadOpener opener;
    EXPECT_FALSE(opener.active());
    opener.set_file_name(nullptr);
    EXPECT_FALSE(opener.open());
    const TempFolder folder;
    EXPECT_FALSE(OpenFile(folder.path) || OpenFile(folder.path / "missing.las"));
    EXPECT_FALSE(OpenBytes(folder, ""));
    const auto reader = OpenBytes(folder, Header(2, 0, 20, 2) + PlainRecords(20, 0, 2));
    ASSERT_TRUE(reader && reader->read_point());
    reader->close();
    EXPECT_FALSE(reader->read_point());
}

TEST(LasReader, CountsThatLieAreBoundedByTheBytes) {
    const TempFolder folder;
    std::string bytes = Header(4, 6, 30, ~std::uint64_t{0}) + PlainRecords(30, 0, 3) + "rest";
    auto reader = OpenBytes(folder, bytes);
    ASSERT_TRUE(reader);
    EXPECT_EQ(reader->npoints, 3);
    EXPECT_EQ(DigestOf(*reader).count, 3);
    Put(bytes, 105, std::uint16_t{65535});
    reader = OpenBytes(folder, bytes);
    ASSERT_TRUE(reader);
    EXPECT_EQ(reader->npoints, 0);
    EXPECT_FALSE(reader->read_point());
}

TEST(LasReader, HeadersThatCannotBeAreRefused) {
    const struct {
        const char* what;
        std::size_t at;
        std::uint32_t value;
        std::size_t bytes;
    } damages[] = {{"signature", 0, 0x5a, 1},
                   {"version 2", 24, 2, 1},
                   {"short header", 94, 226, 2},
                   {"points in header", 96, 226, 4},
                   {"points behind the end", 96, 296, 4},
                   {"points far away", 96, 0xffffffff, 4},
                   {"format", 104, 11, 1},
                   {"no record length", 105, 0, 2},
                   {"short records", 105, 33, 2},
                   {"compressed how", 104, 0x83, 1}};
    const TempFolder folder;
    const std::string plain = Header(2, 3, 34, 2) + PlainRecords(34, 28, 2);
    for (const auto& damage : damages) {
        std::string bytes = plain;
        std::memcpy(bytes.data() + damage.at, &damage.value, damage.bytes);
        EXPECT_FALSE(OpenBytes(folder, bytes)) << damage.what;
    }
    for (std::size_t size = 0; size < plain.size(); size += 3) {
        const auto reader = OpenBytes(folder, plain.substr(0, size));
        ASSERT_EQ(reader != nullptr, size >= 227) << size;
        if (!reader) continue;
        EXPECT_EQ(DigestOf(*reader).count, static_cast<std::int64_t>((size - 227) / 34)) << size;
    }
}

TEST(LasReader, RealChunksAreFoundWithoutTheirTable) {
    if (!std::filesystem::exists(kClouds)) GTEST_SKIP() << "no " << kClouds;
    const TempFolder folder;
    std::string bytes = Bytes(kClouds / "autzen_trim.laz");
    std::uint32_t points = 0;
    std::int64_t table = 0;
    std::memcpy(&points, bytes.data() + 96, sizeof points);
    std::memcpy(&table, bytes.data() + points, sizeof table);
    Put(bytes, points, std::int64_t{-1});
    std::string atEnd = bytes;
    atEnd.append(reinterpret_cast<const char*>(&table), sizeof table);
    for (const std::string& file : {bytes.substr(0, static_cast<std::size_t>(table)), atEnd}) {
        const auto reader = OpenBytes(folder, file);
        ASSERT_TRUE(reader);
        EXPECT_EQ(DigestOf(*reader), kAutzen);
    }
    // Of half the file what is there, and not one point more.
    const auto half = OpenBytes(folder, bytes.substr(0, bytes.size() / 2));
    const auto whole = OpenFile(kClouds / "autzen_trim.laz");
    ASSERT_TRUE(half && whole);
    std::vector<LASpoint> some(110000), all(110000);
    some.resize(half->read_points(some));
    all.resize(whole->read_points(all));
    EXPECT_GT(some.size(), 40000u);
    EXPECT_LT(some.size(), 70000u);
    EXPECT_TRUE(std::equal(some.begin(), some.end(), all.begin(), [](const LASpoint& a, const LASpoint& b) {
        return a.X == b.X && a.Y == b.Y && a.Z == b.Z && a.intensity == b.intensity && a.rgb[2] == b.rgb[2];
    }));
}

}  // namespace

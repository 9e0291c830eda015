#include "zorv/cloud/las/las_reader.h"

#include "tests/support/las_bytes.h"
#include "tests/support/temp_folder.h"
#include <gtest/gtest.h>

namespace {

using las_bytes::Header;
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

/// Number of points, and a number that every field of each and their order decide.
using Digest = std::pair<std::int64_t, std::uint64_t>;

Digest DigestOf(LASreader& reader) {
    Digest digest{0, 0};
    while (reader.read_point()) {
        const LASpoint& p = reader.point;
        for (const int field : {p.X, p.Y, p.Z, +p.intensity, +p.rgb[0], +p.rgb[1], +p.rgb[2]})
            digest.second = digest.second * 31 + static_cast<std::uint64_t>(field);
        ++digest.first;
    }
    return digest;
}

const Digest kSimple{1065, 0x3d7046f1955e2674}, kAutzen{110000, 0x2a2dfddea6d09565};
const Digest kOnePoint{1, 0x00c33a610abcaa42}, kOneColor{1, 0x00c33a610ac069df};

// The digests come from a script that unpacks the records, those of the files without a twin from another decoder.
TEST(LasReader, RealFilesGiveWhatOtherReadersFound) {
    const std::pair<const char*, Digest> files[] = {
        {"simple.las", kSimple},
        {"simple.laz", kSimple},
        {"simple-laszip-compressor-version-1.2r0.laz", kSimple},
        {"1.2-with-color.las", kSimple},
        {"1.2-with-color.copc.laz", {1065, 0x775f89a3bb371264}},
        {"autzen_trim.laz", kAutzen},
        {"test1_4.las", {1000, 0x00e6636916f2dbe5}},
        {"bad_vlr_count.las", {10, 0x75d0c2cc01092eea}},
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
        EXPECT_EQ(reader->npoints, expected.first);
        EXPECT_EQ(DigestOf(*reader), expected);
        EXPECT_EQ(reader->p_count, expected.first);
    }
}

TEST(LasReader, RealChunksAreFoundWithoutTheirTable) {
    if (!std::filesystem::exists(kClouds)) GTEST_SKIP() << "no " << kClouds;
    const TempFolder folder;
    std::string bytes = BytesOf(kClouds / "autzen_trim.laz");
    std::uint32_t points = 0;
    std::memcpy(&points, bytes.data() + 96, sizeof points);
    Put(bytes, points, std::int64_t{0});
    const auto reader = OpenBytes(folder, bytes);
    ASSERT_TRUE(reader);
    EXPECT_EQ(DigestOf(*reader), kAutzen);
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
            SCOPED_TRACE(testing::Message() << "1." << minor << " format " << format.number);
            // The later versions with extra bytes.
            const unsigned int length = format.length + (minor > format.since ? 5u : 0u);
            const auto reader =
                OpenBytes(folder, Header(minor, format.number, length, 3) + PlainRecords(length, format.color, 3));
            ASSERT_TRUE(reader);
            EXPECT_EQ(reader->npoints, 3);
            std::vector<LASpoint> points(4);
            ASSERT_EQ(reader->read_points(points), 3u);
            EXPECT_EQ(std::tuple(points[2].X, points[2].Y, points[2].Z, points[2].intensity, points[2].rgb[0]),
                      std::tuple(-102, 2000000002, 14, 65533, format.color > 0 ? 1002 : 0));
            EXPECT_EQ(points[2].rgb[2], format.color > 0 ? 3002 : 0);
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

TEST(LasReader, WithoutAFileAndAfterCloseNothingIsRead) {
    LASreadOpener opener;
    opener.set_file_name(nullptr);
    EXPECT_FALSE(opener.active() || opener.open());
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
    for (const auto& [recordLength, held] : {std::pair{30, 3}, {65535, 0}}) {
        Put(bytes, 105, static_cast<std::uint16_t>(recordLength));
        const auto reader = OpenBytes(folder, bytes);
        ASSERT_TRUE(reader);
        EXPECT_EQ(reader->npoints, held);
        EXPECT_EQ(DigestOf(*reader).first, held);
    }
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
        EXPECT_EQ(DigestOf(*reader).first, static_cast<std::int64_t>((size - 227) / 34)) << size;
    }
}

}  // namespace

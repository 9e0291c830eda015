#include <cmath>
#include <cstring>
#include <functional>
#include <limits>
#include <numbers>
#include <sstream>

#include "tests/support/allocation_count.h"
#include "tests/support/temp_folder.h"
#include <gtest/gtest.h>

#include "zorv/core/archive.h"
#include "zorv/core/platform/host_services.h"
#include "zorv/core/reader.h"
#include "zorv/math/affine_map3d.h"
#include "zorv/math/matrix.h"

namespace {

ZoMatrix Counted(int rows, int cols) {
    ZoMatrix m(rows, cols);
    for (int r = 1; r <= rows; ++r) {
        for (int c = 1; c <= cols; ++c)
            m[r][c] = (10 * r + c) / 7.0;
    }
    return m;
}

ZoMatrix Shape(int rows, int cols, const std::vector<double>& values) {
    return ZoMatrix(values.data(), rows, cols);
}

void ExpectSame(const ZoMatrix& a, const ZoMatrix& b) {
    ASSERT_EQ(a.rows, b.rows);
    ASSERT_EQ(a.cols, b.cols);
    for (int r = 1; r <= a.rows; ++r) {
        for (int c = 1; c <= a.cols; ++c)
            EXPECT_EQ(a[r][c], b[r][c]) << r << ", " << c;
    }
}

/// Reads a record from text. Returns the status that was thrown, or 0; `behind` gets the type of the token at hand.
template <class Record>
int ReadText(Record& record, const std::string& text, eZoTokentype* behind = nullptr) {
    const TempFolder folder;
    ZoReader reader(folder.Write("record.txt", text));
    ZoReaderObject* object = reader.RegisterObject(ZoReaderObject());
    try {
        reader.ParseForToken();
        EXPECT_EQ(record.Read(object), 1);
    } catch (const ZoParserStatus& status) {
        return status.status;
    }
    if (behind) *behind = reader.GetParser().GetToken().GetType();
    return 0;
}

TEST(MatrixRecord, TextComesBackEqual) {
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    const ZoMatrix matrices[] = {Counted(3, 3), Counted(5, 40), ZoMatrix(0, 0), ZoMatrix(2, 0),
                                 Shape(2, 3, {1e-308, -1.7976931348623157e308, 0.1, 5e9, kInfinity, -kInfinity})};
    for (const ZoMatrix& m : matrices) {
        std::ostringstream out;
        m.Write(out) << " }";
        ZoMatrix back(1, 1);
        eZoTokentype behind = eZoTokenOther;
        EXPECT_EQ(ReadText(back, out.str(), &behind), 0);
        ExpectSame(back, m);
        EXPECT_EQ(behind, eZoTokenBlockEnd);
    }
    ZoVector v(20);
    for (int i = 1; i <= 20; ++i)
        v[i] = std::sqrt(i) * 1e6;
    std::ostringstream out;
    v.Write(out);
    ZoVector back(2);
    EXPECT_EQ(ReadText(back, out.str()), 0);
    EXPECT_EQ(back, v);
}

TEST(MatrixRecord, WordsAndTextsAreZeroOtherTokensEndTheRecord) {
    ZoMatrix m(3, 3);
    EXPECT_EQ(ReadText(m, "2 2 1 2.5 ; note\n word \"3\" 9"), 0);
    ExpectSame(m, Shape(2, 2, {1, 2.5, 0, 0}));
    const ZoMatrix before(m);
    const std::pair<const char*, int> refused[] = {
        {"2 2 1 2 3 }", 5}, {"2 2 1 { 3 4", 5},     {"2 2 1 2 3", 1}, {"2.0 2 1 2 3 4", 5},
        {"-1 2 1 2", 5},    {"2 -1 1 2", 5},        {"", 1},          {"65536 65536 1 2", 5},
        {"0 70000 }", 5},   {"2147483647 1 1", 1},  {"word", 5},      {"2 2 1 12x 3 4", 4},
        {"-3 -3 1 2", 5},   {"99999999999 1 1", 5},
    };
    for (const auto& [text, status] : refused) {
        const std::size_t allocations = AllocationCount();
        EXPECT_EQ(ReadText(m, text), status) << text;
        EXPECT_LT(AllocationCount() - allocations, 100u);
        ExpectSame(m, before);
        ZoVector v(1.0, 2.0);
        const int vectorStatus = ReadText(v, std::strchr(text, ' ') ? std::strchr(text, ' ') : "");
        EXPECT_TRUE(vectorStatus == 0 || v == ZoVector(1.0, 2.0));
    }
    ZoVector v(1.0, 2.0);
    EXPECT_EQ(ReadText(v, "-1 4"), 5);
    EXPECT_EQ(ReadText(v, "3 1 2"), 1);
    EXPECT_EQ(v, ZoVector(1.0, 2.0));
}

class Archive : public CZipWrapper {
  public:
    void WriteItem() override { write(this); }
    std::function<void(CZipWrapper*)> write;
};

/// What one pass wrote, then read from the start.
void Pass(const std::function<void(CZipWrapper*)>& write, const std::function<void(CZipWrapper*)>& read) {
    const TempFolder folder;
    const std::wstring file = folder.Name("archive.zip");
    Archive out;
    ASSERT_TRUE(out.SzOpen(file, true));
    out.write = write;
    out.SzAdd(L"record");
    out.SzClose();
    Archive in;
    ASSERT_TRUE(in.SzOpen(file, false));
    ASSERT_NE(in.UnzipItem(L"record", nullptr), nullptr);
    read(&in);
}

TEST(MatrixRecord, ArchiveComesBackEqual) {
    for (const auto& [rows, cols] : {std::pair(3, 3), {2, 9}, {9, 2}, {0, 4}}) {
        const ZoMatrix m = Counted(rows, cols);
        const ZoVector v(1.0, std::numbers::pi, 3.0, -4.0);
        Pass(
            [&](CZipWrapper* archive) {
                m.WriteV9(archive);
                v.WriteV9(archive);
                m.WriteV9(archive);
            },
            [&](CZipWrapper* archive) {
                ZoMatrix back(4, 4);
                back.ReadV9(archive);
                ExpectSame(back, m);
                ZoVector vector(7);
                vector.ReadV9(archive);
                EXPECT_EQ(vector, v);
                back.ReadV9(archive);
                ExpectSame(back, m);
                EXPECT_TRUE(archive->ReadBytesLeft() <= sizeof(std::uint32_t)) << "but for the seal";
            });
    }
}

TEST(MatrixRecord, ArchiveBytesAreShapeThenElements) {
    const auto write = [](CZipWrapper* archive) {
        const double values[] = {1.5, -2.0};
        ZoMatrix(values, 1, 2).WriteV9(archive);
        ZoVector(1).WriteV9(archive);
    };
    Pass(write, [](CZipWrapper* archive) {
        std::string bytes(36, '\0');
        ASSERT_EQ(archive->Read(bytes.data(), bytes.size()), 36u);
        EXPECT_EQ(bytes,
                  std::string("\1\0\0\0\2\0\0\0\0\0\0\0\0\0\xf8\x3f\0\0\0\0\0\0\0\xc0\1\0\0\0\0\0\0\0\0\0\0\0", 36));
    });
}

TEST(MatrixRecord, ArchiveShapesBeyondTheBytesAreRefused) {
    const std::pair<std::int32_t, std::int32_t> shapes[] = {
        {-1, 1}, {1, -1}, {-2, -2}, {0x7fffffff, 0x7fffffff}, {0x10000, 0x10000}, {3, 1}, {0, 0x10000}};
    for (const auto& [rows, cols] : shapes) {
        Pass(
            [&](CZipWrapper* archive) {
                archive->WriteValue(rows);
                archive->WriteValue(cols);
                archive->WriteValue(1.0);
                archive->WriteValue(2.0);
            },
            [&](CZipWrapper* archive) {
                const ZoMatrix before = Counted(2, 2);
                ZoMatrix m(before);
                const std::size_t allocations = AllocationCount();
                m.ReadV9(archive);
                EXPECT_EQ(AllocationCount(), allocations);
                ExpectSame(m, before);
            });
    }
    ZoVector v(1.0, 2.0);
    Pass([](CZipWrapper* archive) { archive->WriteValue(0x7fffffff); },
         [&](CZipWrapper* archive) {
             v.ReadV9(archive);
             v.ReadV9(archive);
         });
    EXPECT_EQ(v, ZoVector(1.0, 2.0));
}

// The lines are worked out by hand from printf's rules.
TEST(MatrixRecord, ShowsItsElements) {
    const ZoMatrix m = Shape(2, 2, {1, -2.5, 12345.678901234, 0});
    const std::string rows[] = {"  1.0000000  -2.5000000 \n", "12345.6789012   0.0000000 \n"};
    EXPECT_EQ(m.AsString(), rows[0] + rows[1]);
    EXPECT_EQ(ZoVector(1.0, -2.0).AsString(), "[  1.000000   -2.000000   ]");
    EXPECT_EQ(ZoVector3d(3.0, -4.0, 12.0).AsString(), "[ 3.00000 -4.00000  12.00000 0.00000] |13.0000|");
    EXPECT_EQ(ZoAffinMap3d::Translate(1.5, 0.0, -2.0).AsString(),
              "[[ 1.00000  0.00000  0.00000  1.50000]\n [ 0.00000  1.00000  0.00000  0.00000]\n"
              " [ 0.00000  0.00000  1.00000 -2.00000]\n [ 0.00000  0.00000  0.00000  1.00000]]");

    std::vector<std::string> shown;
    const ZoHostServices before = ZoGetHostServices();
    ZoHostServices recorder;
    recorder.debugOutput = [&](const char* text) { shown.emplace_back(text); };
    ZoSetHostServices(recorder);
    m.DbgPrintf();
    m.DbgPrintf("%s %d", "matrix", 7);
    ZoVector(3.0, 4.0).DbgPrintf("v");
    ZoVector(1).DbgPrintf();
    ZoAffinMap3d().DbgPrintf();
    ZoSetHostServices(before);
    const std::string mark = "\n[ZoVector::DbgPrintf : 297] ";
    EXPECT_EQ(shown,
              (std::vector<std::string>{rows[0], rows[1], "matrix 7", "\n", rows[0], rows[1], mark,
                                        "v 3.0000000   4.0000000    (5.0000000)", mark, "0.0000000    (0.0000000)"}));
}

}  // namespace

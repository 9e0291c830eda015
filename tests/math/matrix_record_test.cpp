#include <cmath>
#include <limits>
#include <sstream>

#include "tests/math/matrix_compare.h"
#include "tests/support/allocation_count.h"
#include "tests/support/archive_item.h"
#include "tests/support/hex_bytes.h"
#include "tests/support/recorded_host.h"
#include "tests/support/temp_folder.h"
#include "tests/support/written_text.h"
#include <gtest/gtest.h>

#include "zorv/core/reader.h"
#include "zorv/math/affine_map3d.h"

namespace {

/// Shape and elements.
std::vector<double> All(const ZoMatrix& m) {
    std::vector<double> all(m[1] + 1, m[1] + 1 + m.rows * m.cols);
    all.push_back(m.rows);
    all.push_back(m.cols);
    return all;
}

ZoMatrix Make(int rows, int cols) {
    ZoMatrix m(rows, cols);
    for (int r = 1; r <= rows; ++r) {
        for (int c = 1; c <= cols; ++c)
            m[r][c] = (10 * r + c) / 7.0;
    }
    return m;
}

/// Reads a record from text. Returns the status that was thrown, or 0.
template <class Record>
int ReadText(Record& record, const std::string& text) {
    const TempFolder folder;
    ZoReader reader(folder.Write("record.txt", text));
    ZoReaderObject* object = reader.RegisterObject(ZoReaderObject());
    try {
        reader.ParseForToken();
        record.Read(object);
        // The next token is at hand: the block's end, or that of the file.
        EXPECT_GE(reader.GetParser().GetToken().GetType(), eZoTokenBlockEnd);
    } catch (const ZoParserStatus& status) {
        return status.status;
    }
    return 0;
}

TEST(MatrixRecord, TextComesBackEqual) {
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    const double extremes[] = {1e-308, -1.7976931348623157e308, 0.1, 5e9, kInfinity, -kInfinity};
    for (const ZoMatrix& m : {Make(3, 3), Make(5, 40), Make(0, 0), Make(2, 0), ZoMatrix(extremes, 2, 3)}) {
        std::ostringstream out;
        m.Write(out) << " }";
        ZoMatrix back(1, 1);
        EXPECT_EQ(ReadText(back, out.str()), 0);
        EXPECT_EQ(All(back), All(m));
    }
    const std::string out = WrittenText(ZoVector(1.0, -2.5, 1e300));
    ZoVector back(2);
    EXPECT_EQ(ReadText(back, out), 0);
    EXPECT_EQ(back, ZoVector(1.0, -2.5, 1e300));
}

TEST(MatrixRecord, WordsAndTextsAreZeroOtherTokensEndTheRecord) {
    ZoMatrix m(3, 3);
    EXPECT_EQ(ReadText(m, "2 2 1 2.5 ; note\n word \"3\" }"), 0);
    const double expected[] = {1, 2.5, 0, 0};
    const ZoMatrix before(expected, 2, 2);
    EXPECT_EQ(All(m), All(before));
    const std::pair<const char*, int> refused[] = {
        {"2 2 1 2 3 }", 5},   {"2 2 1 { 3 4", 5}, {"2 2 1 2 3", 1},      {"2.0 2 1 2 3 4", 5},
        {"-1 2 1 2", 5},      {"2 -1 1 2", 5},    {"-3 -3 1 2", 5},      {"", 1},
        {"65536 65536 1", 5}, {"0 70000 }", 5},   {"2147483647 1 1", 1}, {"word", 5},
        {"2 2 1 12x 3", 4},
    };
    for (const auto& [text, status] : refused) {
        const std::size_t allocations = AllocationCount();
        EXPECT_EQ(ReadText(m, text), status) << text;
        EXPECT_LT(AllocationCount() - allocations, 100u);
        EXPECT_EQ(All(m), All(before));
    }
    ZoVector v(1.0, 2.0);
    EXPECT_EQ(ReadText(v, "-1 4"), 5);
    EXPECT_EQ(ReadText(v, "3 1 2"), 1);
    EXPECT_EQ(v, ZoVector(1.0, 2.0));
}

TEST(MatrixRecord, ArchiveHoldsShapeThenElements) {
    // A matrix (1.5, -2), a vector (0) and a 2 by 9 matrix.
    const std::string head = HexBytes("01000000 02000000 000000000000f83f 00000000000000c0 01000000 0000000000000000");
    const double values[] = {1.5, -2.0};
    ArchiveItem item(std::string(head.size() + 8 + 18 * 8, '\0'));
    ZoMatrix(values, 1, 2).WriteV9(&item);
    ZoVector(1).WriteV9(&item);
    Make(2, 9).WriteV9(&item);
    EXPECT_EQ(std::string(item.buffer.get(), head.size()), head);
    EXPECT_TRUE(item.Eof());
    item.position = 0;
    ZoMatrix m(4, 4);
    m.ReadV9(&item);
    EXPECT_EQ(All(m), All(ZoMatrix(values, 1, 2)));
    ZoVector v(7);
    v.ReadV9(&item);
    EXPECT_EQ(v, ZoVector(1));
    m.ReadV9(&item);
    EXPECT_EQ(All(m), All(Make(2, 9)));
    EXPECT_TRUE(item.Eof());
}

TEST(MatrixRecord, ArchiveShapesBeyondTheBytesAreRefused) {
    for (const char* shape : {"ffffffff 01000000", "01000000 ffffffff", "feffffff feffffff", "ffffff7f ffffff7f",
                              "00000100 00000100", "03000000 01000000", "00000000 00000100", "0200"}) {
        ArchiveItem item(HexBytes(shape) + std::string(16, '\1'));
        ZoMatrix m = Make(2, 2);
        const std::size_t allocations = AllocationCount();
        m.ReadV9(&item);
        EXPECT_EQ(AllocationCount(), allocations);
        EXPECT_EQ(All(m), All(Make(2, 2)));
    }
    for (const char* size : {"ffffffff", "ffffff7f", "03000000", "0200"}) {
        ArchiveItem item(HexBytes(size) + std::string(size[4] ? 16 : 1, '\1'));
        ZoVector v(1.0, 2.0);
        v.ReadV9(&item);
        EXPECT_EQ(v, ZoVector(1.0, 2.0));
    }
}

// The lines are worked out by hand from printf's rules.
TEST(MatrixRecord, ShowsItsElements) {
    const double values[] = {1, -2.5, 12345.678901234, 0};
    const ZoMatrix m(values, 2, 2);
    const std::string rows[] = {"  1.0000000  -2.5000000 \n", "12345.6789012   0.0000000 \n"};
    EXPECT_EQ(m.AsString(), rows[0] + rows[1]);
    EXPECT_EQ(ZoVector(1.0, -2.0).AsString(), "[  1.000000   -2.000000   ]");
    EXPECT_EQ(ZoVector3d(3.0, -4.0, 12.0).AsString(), "[ 3.00000 -4.00000  12.00000 0.00000] |13.0000|");
    EXPECT_EQ(ZoAffinMap3d::Translate(1.5, 0.0, -2.0).AsString(),
              "[[ 1.00000  0.00000  0.00000  1.50000]\n [ 0.00000  1.00000  0.00000  0.00000]\n"
              " [ 0.00000  0.00000  1.00000 -2.00000]\n [ 0.00000  0.00000  0.00000  1.00000]]");

    const RecordedHost host;
    m.DbgPrintf();
    m.DbgPrintf("%s %d", "matrix", 7);
    ZoVector(3.0, 4.0).DbgPrintf("v");
    ZoVector(1).DbgPrintf();
    ZoAffinMap3d().DbgPrintf();
    const std::string mark = "\n[ZoVector::DbgPrintf : 297] ";
    EXPECT_EQ(host.narrow,
              (std::vector<std::string>{rows[0], rows[1], "matrix 7", "\n", rows[0], rows[1], mark,
                                        "v 3.0000000   4.0000000    (5.0000000)", mark, "0.0000000    (0.0000000)"}));
}

}  // namespace

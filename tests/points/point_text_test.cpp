#include <fstream>
#include <initializer_list>
#include <sstream>

#include "tests/support/temp_folder.h"
#include <gtest/gtest.h>

#include "zorv/core/reader.h"
#include "zorv/core/text_writer.h"
#include "zorv/points/point_list.h"

namespace {

using Table = TZoFormatTable<eZoPointRWMask>;

Table Columns(std::initializer_list<int> kinds) {
    Table table;
    for (int kind : kinds)
        table.columns.Add(eZoPointRWMask(kind));
    return table;
}

ZoPoint FullPoint() {
    ZoPoint point(17, 1.5, -2.0, 3.25, 5);
    point.name = L"Wänd \"2\"\n";
    point.flags = 4294967295U;
    point.photoId = 8;
    point.cameraId = 9;
    point.dx = 3.0;
    point.dy = 4.0;
    point.dz = 12.0;
    point.residualX = 0.1;
    point.vx = 0.5F;
    point.imoCount = 65535;
    point.color = 0xffffffffU;
    return point;
}

std::string Written(const ZoPoint& point, const Table& table) {
    std::ostringstream stream;
    point.Write(stream, table);
    return stream.str();
}

int ReadLine(ZoPoint& point, std::string line, std::initializer_list<int> kinds) {
    return point.Read(line.data(), Columns(kinds));
}

TEST(PointText, EachColumnHasItsWidthAndTitle) {
    const std::tuple<int, const char*, const char*> columns[] = {
        {1, "          #", "         17"},
        {2, "                  Name", " \"W\xC3\xA4nd '2' \"         "},
        {4, "       Flag", "            4294967295"},
        {5, " Code", "   13"},
        {6, " Code", "    5"},
        {7, "         PP", "     0 \"W\xC3\xA4nd '2' \""},
        {8, "      Photo", "          8"},
        {14, "                       dy", "                        4"},
        {16, "                       dS", "                       13"},
        {17, "                     Redu", "                      0.1"},
        {24, "       nImo", "      65535"},
        {28, "", "        0"},
        {29, "               Residual x", "                      0.1"},
        {107, "                       Sz", "                       12"},
        {-1, "", ""},
        {108, "", ""},
    };
    for (const auto& [kind, title, text] : columns) {
        std::ostringstream head;
        head << Columns({kind});
        EXPECT_EQ(head.str(), title) << kind;
        EXPECT_EQ(Written(FullPoint(), Columns({kind})), text) << kind;
    }
    EXPECT_EQ(Written(FullPoint(), Columns({3, 32, 21, 28, 0, 1})), "        0");
}

TEST(PointText, LinesAreCutAtAnyMixOfDelimiters) {
    ZoPoint point;
    EXPECT_EQ(ReadLine(point, "\xEF\xBB\xBF 7;;\t\"Point 1, a\",1.5 ;-2e3 left over\r\n", {1, 2, 10, 11}), 4);
    EXPECT_EQ(std::tuple(point.id, point.name, point.x, point.y), std::tuple(7u, L"Point 1, a", 1.5, -2000.0));
    EXPECT_EQ(ReadLine(point, " ; ,\r\n", {1, 2}), 0);

    ZoPoint odd;
    EXPECT_EQ(ReadLine(odd, "5.9 +1e2 0x10 1e999 junk \"3\" \"open end", {1, 10, 11, 12, 13, 14, 2}), 7);
    EXPECT_EQ(std::tuple(odd.id, odd.x, odd.y, odd.z, odd.dx, odd.dy, odd.name),
              std::tuple(5u, 100.0, 16.0, HUGE_VAL, 0.0, 3.0, L"open end"));
    EXPECT_EQ(ReadLine(odd, "-1 4294967295 99999999999 70000 1e300", {20, 4, 1, 24, 25}), 5);
    EXPECT_EQ(std::tuple(odd.color, odd.flags, odd.id, odd.imoCount, odd.vx),
              std::tuple(0xffffffffU, 4294967295U, 4294967295U, 70000 - 65536, HUGE_VALF));
}

TEST(PointText, IdOrNameTakesDigitsForTheNumber) {
    ZoPoint points[4];
    const char* lines[] = {"Qx12 1.0 2.0", "Qx13 1.0 2.0", "12 1.0 2.0", "0 1.0"};
    for (int i = 0; i < 4; ++i)
        ReadLine(points[i], lines[i], {3, 10, 11});
    EXPECT_EQ(std::tuple(points[0].name, points[1].id, points[2].id, points[2].name, points[3].id, points[3].name),
              std::tuple(L"Qx12", points[0].id + 1, 12u, L"", 0u, L"0"));
}

/// The points of a block `K { text }`, read with the columns; the number of errors follows.
struct TaggedRead : LinkHdl {
    TaggedRead(const std::string& text, const Table& table) : list(table) {
        ZoReader reader(folder.Write("block.txt", "K {" + text));
        reader.RegisterObject(ZoReaderObject("K", Link(&list, &ZoPointList::Read)));
        reader.RegisterObject(ZoReaderObject("AFTER", &after));
        reader.DoProcess(false);
        errors = reader.GetReadErrorCount();
    }
    TempFolder folder;
    ZoPointList list;
    int after = 0, errors = 0;
};

TEST(PointText, WrittenColumnsReadBack) {
    const Table table = Columns({1, 7, 2, 4, 5, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 20, 24, 25});
    const ZoPoint point = FullPoint();
    const std::string written = Written(point, table);
    ZoPoint fromLine;
    EXPECT_EQ(fromLine.Read(std::string(written).data(), table), table.Size());
    EXPECT_EQ(Written(fromLine, table), written);
    const TaggedRead block(written + "\n" + written + "}\nAFTER 3", table);
    EXPECT_EQ(std::tuple(block.errors, block.after), std::tuple(0, 3));
    ASSERT_EQ(block.list.Count(), 2);
    EXPECT_EQ(Written(*block.list.Last(), table), written);
}

TEST(PointText, TaggedRecordsStopWhereATokenDoesNotFit) {
    const struct {
        const char* text;
        std::initializer_list<int> kinds;
        int points, errors, after;
    } rows[] = {
        {"1 2 3 4}\nAFTER 3", {1, 10}, 2, 0, 3},
        {"1 2 3 x}\nAFTER 3", {1, 10}, 1, 1, 0},
        {"1 2 3", {1, 10}, 1, 0, 0},   // end of file
        {"}\nAFTER 3", {3}, 0, 0, 3},  // neither name nor skipped value is a brace
        {"A1 7 \"x y\" 1.5}\nAFTER 3", {3}, 4, 0, 3},
        {"1 any 2 \"x\"}\nAFTER 3", {1, 32}, 2, 0, 3},
        {"1 {2} 3}\nAFTER 3", {32}, 1, 1, 0},
        {"", {32}, 0, 0, 0},
        {"1 {2} 3}\nAFTER 3", {}, 0, 0, 3},  // no column that takes a token
        {"1 2", {28, 99}, 0, 0, 0},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        const TaggedRead block(row.text, Columns(row.kinds));
        EXPECT_EQ(std::tuple(block.list.Count(), block.errors, block.after),
                  std::tuple(row.points, row.errors, row.after));
    }
}

TEST(PointText, FilesGiveTheLinesThatHaveANumber) {
    const TempFolder folder;
    const std::string longName(9000, 'n');
    const std::wstring file = folder.Write("a.coo",
                                           "\xEF\xBB\xBF"
                                           "1 1.5\r\n;comment\r\n\r\n\"" +
                                               longName + "\" 2.5\n3 4 rest\n0 7\n4");
    ZoPointList list(file, Columns({3, 10}));
    EXPECT_EQ(list.ReadFile(file, Columns({1, 10})), 3);
    ASSERT_EQ(list.Count(), 8);  // comment, the long name, 1, 3 and 4, then the last three again
    EXPECT_EQ(std::tuple(list.Get(1)->name, list.Get(2)->name.size(), list.Get(2)->x, list.Last()->id, list.Last()->x),
              std::tuple(L"comment", longName.size(), 2.5, 4u, 0.0));
    EXPECT_EQ(list.GetMask()[0], eZoRWId);
    EXPECT_EQ(list.ReadFile(folder.Name("missing.coo"), Columns({5})), 0);
    EXPECT_EQ(list.GetMask().Size(), 2);
}

TEST(PointText, CoordinateFilesHaveOneLineForEachPoint) {
    const TempFolder folder;
    ZoPointList list;
    const std::wstring file = folder.Name("a.coo");
    EXPECT_EQ(list.WriteFile(file, Columns({1, 5, 10, 11, 12})), 1);
    EXPECT_EQ(folder.Read("a.coo"), "");
    list.Add(ZoPoint(17, 1012.345, 2034.5, 99.125, 7));
    list.Add(ZoPoint(18, 5, 6.25, 7, 0));
    const std::string first = "         17  123              1012.345                2034.5                99.125\n";
    const std::string second = "         18    0                     5                  6.25                     7";
    EXPECT_EQ(list.WriteFile(file), 1);
    EXPECT_EQ(folder.Read("a.coo"), first + second);
    std::ostringstream nested;
    nested << ZoTabPlus;
    list.Write(nested) << ZoTabMinus;
    EXPECT_EQ(nested.str(), first + "    " + second);
    EXPECT_EQ(list.WriteFile(folder.Name("none/a.coo")), 0);
    EXPECT_EQ(list.WriteFile(static_cast<const wchar_t*>(nullptr)), 0);
}

}  // namespace

#include "zorv/core/id_table.h"

#include <algorithm>
#include <memory>
#include <numeric>
#include <sstream>
#include <string>
#include <vector>

#include "tests/support/archive_item.h"
#include "tests/support/temp_folder.h"
#include "tests/support/written_text.h"
#include <gtest/gtest.h>

#include "zorv/core/reader.h"
#include "zorv/core/text_writer.h"

namespace {

using Ids = std::vector<unsigned int>;

std::string Bytes(std::initializer_list<int> bytes) {
    return std::string(bytes.begin(), bytes.end());
}

Ids Values(const ZoIdTable& table) {
    Ids values;
    for (int i = 0; i < table.Size(); ++i)
        values.push_back(table[i]);
    return values;
}

/// Reads the block `T { text }` and returns the number of errors; what follows the block must be found.
template <class Table>
int ReadText(const std::string& text, Table& table) {
    const TempFolder folder;
    ZoReader reader(folder.Write("table.txt", "T { " + text + " }\nEND 7\n"));
    int end = 0;
    reader.RegisterObject(ZoReaderObject("T", Link(&table, &Table::Read)));
    reader.RegisterObject(ZoReaderObject("END", &end));
    reader.DoProcess(false);
    const int errors = reader.GetReadErrorCount();
    EXPECT_TRUE(errors > 0 || end == 7);
    return errors;
}

/// A two-dimensional table is part of a larger block; here it stands alone.
struct Table2D : ZoIdTable2D, LinkHdl {
    long Read(ZoReaderObject* object) { return ZoIdTable2D::Read(object); }
};

TEST(IdPair, OrdersWithinAndAmongPairs) {
    ZoIdPair pair(7, 3);
    EXPECT_TRUE(pair.Sort() && !pair.Sort());
    EXPECT_EQ(pair, ZoIdPair(3, 7));
    EXPECT_TRUE(pair.HasId(7) && pair.HasId(3) && !pair.HasId(4));
    EXPECT_EQ(pair.OtherId(3), 7u);
    EXPECT_EQ(pair.OtherId(7), 3u);
    EXPECT_EQ(pair.OtherId(9), 3u);
    EXPECT_TRUE(ZoIdPair(1, 9) < ZoIdPair(2, 0) && ZoIdPair(1, 1) < ZoIdPair(1, 2) && ZoIdPair(1, 2) <= ZoIdPair(1, 2));
    EXPECT_FALSE(ZoIdPair(1, 2) < ZoIdPair(1, 2) || ZoIdPair(2, 0) <= ZoIdPair(1, 9));

    ZoIdPairTable table;
    table.Add(ZoIdPair(5, 4));
    table.Add(ZoIdPair(1, 2));
    table.SortIdPairs();
    EXPECT_EQ(table[0], ZoIdPair(4, 5));
}

TEST(IdTable, LinesHoldTenIdsOrFivePairs) {
    ZoWriterReset();
    ZoIdTable table;
    ZoIdPairTable pairs;
    std::ostringstream text;
    table.Write(text);
    for (unsigned int id = 1; id <= 10; ++id)
        table.Add(id * 100000000);
    table.Write(text);
    EXPECT_EQ(text.str(),
              "\n100000000  200000000  300000000  400000000  500000000  600000000  700000000  800000000  900000000  "
              "1000000000 \n\n");
    std::ostringstream pairText;
    for (unsigned int id = 1; id <= 6; ++id)
        pairs.Add(ZoIdPair(id, 4294967295u));
    pairs.Write(pairText);
    EXPECT_EQ(pairText.str(),
              "1          4294967295  2          4294967295  3          4294967295  4          4294967295  "
              "5          4294967295  \n6          4294967295  \n");

    ZoIdTable back;
    ZoIdPairTable pairsBack;
    EXPECT_EQ(ReadText(text.str(), back) + ReadText(pairText.str(), pairsBack), 0);
    EXPECT_TRUE(back == table && pairsBack == pairs);
}

TEST(IdTable, TextEndsAtTheBlockAndNowhereElse) {
    ZoIdTable table;
    EXPECT_EQ(ReadText("1 2\n3 ; four\n", table) + ReadText("", table), 0);
    EXPECT_EQ(Values(table), (Ids{1, 2, 3}));
    for (const char* text : {"1 2.5 3", "1 \"2\"", "1 { 2"}) {
        ZoIdTable cut;
        EXPECT_EQ(ReadText(text, cut), 1) << text;
        EXPECT_EQ(Values(cut), (Ids{1})) << text;
    }
    ZoIdPairTable pairs;
    EXPECT_EQ(ReadText("1 2 3", pairs), 0);
    EXPECT_EQ(pairs.Size(), 1);
}

TEST(IdTable, ArchiveFormIsCountAndIds) {
    ZoIdTable table;
    table.Add(0x01020304);
    table.Add(5);
    const std::string bytes = Bytes({2, 0, 0, 0, 0, 0, 0, 0, 4, 3, 2, 1, 5, 0, 0, 0});
    EXPECT_EQ(ArchiveBytes(table), bytes);
    // The second of these counts lies.
    for (const std::string& added : {bytes, Bytes({0, 0, 0, 0, 0, 0, 0, 16, 9, 0, 0, 0, 1}), Bytes({1, 0})})
        ReadArchiveBytes(added, table);
    EXPECT_EQ(Values(table), (Ids{0x01020304, 5, 0x01020304, 5, 9}));
}

TEST(IdTable2D, TextAndArchiveHoldRowAfterRow) {
    ZoIdTable2D table(3, 2);
    EXPECT_EQ(table.table.data, Ids(6, 0));
    table.table(2, 0) = 3;
    table.table(1, 1) = 5;
    const Ids cells = {0, 0, 3, 0, 5, 0};
    EXPECT_EQ(table.table.data, cells);
    EXPECT_EQ(table.table.At(1, 1), 5u);
    EXPECT_EQ(table.table.At(3, 0) + table.table.At(0, -1), 0u);

    const std::string text = WrittenText(table);
    Table2D back;
    EXPECT_EQ(ReadText(text, back), 0);
    EXPECT_EQ(back.table.SizeX(), 3);
    EXPECT_EQ(back.table.data, cells);

    const std::string bytes = Bytes({3, 0, 0, 0, 0, 0, 0, 0, 2, 0, 0, 0, 0, 0, 0, 0}) + std::string(8, '\0') +
                              Bytes({3, 0, 0, 0, 0, 0, 0, 0, 5, 0, 0, 0, 0, 0, 0, 0});
    EXPECT_EQ(ArchiveBytes(table), bytes);
    back.table.Set(7, 7);
    ReadArchiveBytes(bytes, back);
    EXPECT_EQ(back.table.SizeY(), 2);
    EXPECT_EQ(back.table.data, cells);
}

TEST(IdTable2D, WideTablesComeBack) {
    ZoIdTable2D table(5000, 2);
    std::iota(table.table.data.begin(), table.table.data.end(), 4'000'000'000U);
    std::ostringstream text;
    table.Write(text);
    Table2D back;
    EXPECT_EQ(ReadText(text.str(), back), 0);
    EXPECT_TRUE(back.table.SizeX() == 5000 && back.table.data == table.table.data);
}

TEST(IdTable2D, SizesThatLieTakeNoMemory) {
    for (const std::string& bytes :
         {Bytes({0, 0, 0, 0, 0, 0, 0, 16, 1, 0, 0, 0, 0, 0, 0, 0, 1, 0, 0, 0}),   // 2^60 columns
          Bytes({0, 0, 0, 64, 0, 0, 0, 0, 0, 0, 0, 64, 0, 0, 0, 0, 1, 0, 0, 0}),  // 2^30 by 2^30
          Bytes({2, 0, 0, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0, 0, 0, 0, 1, 0, 0, 0}), Bytes({1, 0, 0})}) {
        ZoIdTable2D table(2, 2);
        ReadArchiveBytes(bytes, table);
        EXPECT_EQ(table.table.data, Ids{});
        EXPECT_EQ(table.table.SizeX(), 0);
    }
    Table2D table;
    EXPECT_EQ(ReadText("2000000000 2000000000 1 2 3", table), 1);
    EXPECT_EQ(table.table.data, Ids{});
    EXPECT_EQ(ReadText("3 2 1 2", table), 1);
    EXPECT_EQ(table.table.data, (Ids{1, 2, 0, 0, 0, 0}));
    EXPECT_EQ(ReadText("-3 2", table), 0);
    EXPECT_EQ(table.table.data, Ids{});

    std::string large = "300 300";
    for (int i = 0; i < 90000; ++i)
        large += i % 100 == 0 ? "\n7" : " 7";
    EXPECT_EQ(ReadText(large, table), 0);
    EXPECT_EQ(table.table.At(299, 299), 7u);
}

}  // namespace

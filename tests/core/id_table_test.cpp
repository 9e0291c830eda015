#include "zorv/core/id_table.h"

#include <numeric>
#include <sstream>
#include <string>
#include <vector>

#include "tests/support/archive_item.h"
#include "tests/support/hex_bytes.h"
#include "tests/support/read_block.h"
#include "tests/support/written_text.h"
#include <gtest/gtest.h>

#include "zorv/core/text_writer.h"

namespace {

using Ids = std::vector<unsigned int>;

Ids Values(const ZoIdTable& table) {
    Ids values;
    for (int i = 0; i < table.Size(); ++i)
        values.push_back(table[i]);
    return values;
}

/// Reads a block of this text and returns the number of errors; the empty block that follows must be found.
template <class Table>
int ReadText(const std::string& text, Table& table) {
    int blocks = 0;
    const int errors = ReadBlock(text + " }\nBLOCK {", [&](ZoReaderObject* object) {
        if (++blocks == 1) table.Read(object);
    });
    EXPECT_TRUE(errors > 0 || blocks == 2);
    return errors;
}

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
    const std::string bytes = HexBytes("0200000000000000 04030201 05000000");
    EXPECT_EQ(ArchiveBytes(table), bytes);
    // The second of these counts lies.
    for (const std::string& added : {bytes, HexBytes("0000000000000010 09000000 01"), HexBytes("0100")})
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

    ZoIdTable2D back;
    EXPECT_EQ(ReadText(WrittenText(table), back), 0);
    EXPECT_EQ(back.table.SizeX(), 3);
    EXPECT_EQ(back.table.data, cells);

    const std::string bytes =
        HexBytes("0300000000000000 0200000000000000 00000000 00000000 03000000 00000000 05000000 00000000");
    EXPECT_EQ(ArchiveBytes(table), bytes);
    back.table.Set(7, 7);
    ReadArchiveBytes(bytes, back);
    EXPECT_EQ(back.table.SizeY(), 2);
    EXPECT_EQ(back.table.data, cells);
}

TEST(IdTable2D, WideTablesComeBack) {
    ZoIdTable2D table(5000, 20);
    std::iota(table.table.data.begin(), table.table.data.end(), 4'000'000'000U);
    ZoIdTable2D back;
    EXPECT_EQ(ReadText(WrittenText(table), back), 0);
    EXPECT_TRUE(back.table.SizeX() == 5000 && back.table.data == table.table.data);
}

TEST(IdTable2D, SizesThatLieTakeNoMemory) {
    for (const std::string& bytes : {HexBytes("0000000000000010 0100000000000000 01000000"),  // 2^60 columns
                                     HexBytes("0000004000000000 0000004000000000 01000000"),  // 2^30 by 2^30
                                     HexBytes("0200000000000000 0100000000000000 01000000"), HexBytes("010000")}) {
        ZoIdTable2D table(2, 2);
        ReadArchiveBytes(bytes, table);
        EXPECT_EQ(table.table.data, Ids{});
        EXPECT_EQ(table.table.SizeX(), 0);
    }
    ZoIdTable2D table;
    EXPECT_EQ(ReadText("2000000000 2000000000 1 2 3", table), 1);
    EXPECT_EQ(table.table.data, Ids{});
    EXPECT_EQ(ReadText("3 2 1 2", table), 1);
    EXPECT_EQ(table.table.data, (Ids{1, 2, 0, 0, 0, 0}));
    EXPECT_EQ(ReadText("-3 2", table), 0);
    EXPECT_EQ(table.table.data, Ids{});
}

}  // namespace

#include "zorv/points/generic_table.h"

#include "tests/support/temp_folder.h"

namespace {

using Rows = std::vector<ZoReadGenericTableFile::Row>;

TEST(GenericTable, LinesAreCutIntoCells) {
    const TempFolder folder;
    const ZoReadGenericTableFile table(
        folder.Write("t.csv", "\xef\xbb\xbfid;x\ty\r\n1;;2\n\n  ,;\r\rM\xc3\xbcller, \"a b\" \r"));
    EXPECT_EQ(table.GetRows(), (Rows{{"id", "x", "y"}, {"1", "2"}, {"M\xc3\xbcller", "\"a", "b\""}}));
    EXPECT_EQ(table.NumberLines(), 3U);
    EXPECT_EQ(table.MaxLineLen(), 3U);
    EXPECT_TRUE(table.IsEndReached());
}

TEST(GenericTable, TooManyCellsEndTheReading) {
    const TempFolder folder;
    const std::string nine = "1 2 3 4 5 6 7 8 9";
    ZoReadGenericTableFile table;
    ASSERT_TRUE(table.ReadFile(folder.Write("t", nine + "\n" + nine + " 10\n1 2\n")));
    EXPECT_EQ(table.GetRows(), (Rows{{"1", "2", "3", "4", "5", "6", "7", "8", "9"},
                                     {"Fehlerhafte oder ung\xc3\xbcltige Datei", "Incorrect or invalid file",
                                      "Fichier incorrect ou invalide", "10 (max 10)"}}));
    EXPECT_EQ(table.MaxLineLen(), 9U);
    EXPECT_FALSE(table.IsEndReached());

    std::string million(2000000, '7');
    for (std::size_t i = 1; i < million.size(); i += 2)
        million[i] = ';';
    ASSERT_TRUE(table.ReadFile(folder.Write("t", million)));
    EXPECT_EQ(table.GetRows().at(0).at(3), "1000000 (max 10)");
}

TEST(GenericTable, AMissingFileChangesNothing) {
    const TempFolder folder;
    ZoReadGenericTableFile table(folder.Write("t", "a|b c\n"));
    EXPECT_FALSE(table.ReadFile(folder.Name("none")) || table.ReadFile(folder.path.wstring()));
    EXPECT_EQ(table.GetRows(), (Rows{{"a|b", "c"}}));
    table.SetSeparators("|");
    EXPECT_TRUE(table.ReadFile(folder.Name("t")));
    EXPECT_EQ(table.GetRows(), (Rows{{"a", "b c"}}));
    EXPECT_TRUE(table.ReadFile(folder.Write("empty", "")));
    EXPECT_EQ(table.NumberLines() + table.MaxLineLen(), 0U);
}

}  // namespace

#include "zorv/orientation/bundle_observation.h"

#include "tests/support/archive_item.h"
#include "tests/support/hex_bytes.h"
#include "tests/support/points_of.h"
#include "tests/support/temp_folder.h"
#include "tests/support/written_text.h"
#include <gtest/gtest.h>

#include "zorv/orientation/bundle_observation_list.h"

namespace {

const std::string kNewLine = "    0  123          0          0                  0               0.01\n";
const std::string kLine = "    1   -7       1001 4294967295         -12.345679                0.5\n";

ZoBundleAOB Observation(bool active, unsigned int id1, unsigned int id2, double value) {
    ZoBundleAOB record;
    record.SetActive(active);
    record.SetType(-7);
    record.SetId1(id1);
    record.SetId2(id2);
    record.SetValue(value);
    record.SetSigma(0.5);
    record.SetExtra(-2.0);
    return record;
}

std::string Repeated(const std::string& line, int times) {
    std::string text;
    while (times-- > 0)
        text += line;
    return text;
}

TEST(BundleObservationList, FilesAreBroughtToTheSlots) {
    const TempFolder folder;
    EXPECT_EQ(WrittenText(ZoBundleAOBList()), Repeated(kNewLine, 25));
    ZoBundleAOB record = Observation(true, 1001, 4294967295u, -12.3456789);
    EXPECT_EQ(WrittenText(record) + '\n', kLine);
    record.Init();
    EXPECT_EQ(WrittenText(record) + '\n', kNewLine);
    EXPECT_EQ(record.GetExtra(), 0.0);
    const std::tuple<const char*, std::string, int> files[] = {
        {"empty", "", 0},
        {"more than slots", Repeated(kLine, 30), 30},
        {"free form", "-1 -7 1001 4294967295 -12.345679 5e-1 ; note\r\n1 -7\n1001 -1 -12345679.e-6 .5", 2},
        {"cut in a record", Repeated(kLine, 2) + kLine.substr(0, 30), 2},
        {"a word in a record", kLine + "1 7 1001 west 12.345 0.5\n" + kLine, 1},
        {"a number that is none", kLine + "1 7 1001 10x2 12.345 0.5\n" + kLine, 1},
    };
    for (const auto& [what, text, complete] : files) {
        const std::wstring name = folder.Write("a.aob", text);
        ZoBundleAOBList list;
        EXPECT_EQ(list.ReadFile(name.c_str()), 1);
        const int kept = std::min(complete, 25);
        EXPECT_EQ(WrittenText(list), Repeated(kLine, kept) + Repeated(kNewLine, 25 - kept)) << what;
        EXPECT_EQ(list.First()->GetExtra(), 0.0);
        EXPECT_EQ(list.ReadV50(name), 1);
        EXPECT_EQ(WrittenText(list), Repeated(kLine, complete)) << what;
    }
    ZoBundleAOBList list;
    list.First()->SetType(5);
    EXPECT_EQ(list.ReadFile(folder.Name("missing.aob")), 1);
    EXPECT_EQ(WrittenText(list), Repeated(kNewLine, 25));
}

TEST(BundleObservationList, AdjustmentTakesActiveRecordsWithBothPoints) {
    const TempFolder folder;
    ZoBundleAOBList list;
    *list.Get(1) = Observation(true, 1, 3, 0);
    *list.Get(2) = Observation(true, 3, 1, 0);
    *list.Get(3) = Observation(true, 2, 1, 1.5);
    *list.Get(4) = Observation(false, 3, 4, 0);
    ZoPointList points = PointsOf({{1, 0, 0, 0, 0}, {2, 0, 0, 0, 0}});
    EXPECT_EQ(list.ValidateActiveAOB(nullptr), 0);
    EXPECT_EQ(list.ValidateActiveAOB(&points), 1);
    EXPECT_EQ(list.WriteFile(folder.Name("g.txt").c_str(), true), 1);
    EXPECT_EQ(folder.Read("g.txt"), "   -7          2          1                1.5                0.5\n");
    EXPECT_EQ(list.WriteFile(folder.Name("no/such.aob"), false), 0);
}

TEST(BundleObservationList, ArchiveRecordsHaveTheirBytesAndEndWhereTheyAreCut) {
    const std::string record =
        HexBytes("0100 f9ffffff 02010000 03000000 0000000000000440 000000000000e03f 00000000000000c0");
    ZoBundleAOBList list;
    list.Destroy();
    list.Add(Observation(true, 258, 3, 2.5));
    EXPECT_EQ(ArchiveBytes(list), HexBytes("0100000000000000") + record);

    for (std::size_t cut = 0; cut <= 2 * record.size(); ++cut) {
        ZoBundleAOBList back;
        ReadArchiveBytes(HexBytes("ffffffffffffff7f") + (record + record).substr(0, cut), back);
        ASSERT_EQ(back.Count(), static_cast<int>(cut / record.size()));
        EXPECT_TRUE(back.IsNotifyEnabled());
        if (back.IsEmpty()) continue;
        EXPECT_EQ(WrittenText(*back.Last()), WrittenText(*list.First()));
        EXPECT_EQ(back.Last()->GetExtra(), -2.0);
    }
}

}  // namespace

#include "zorv/rectify/definition_lines.h"

#include <limits>

#include "tests/support/archive_item.h"
#include "tests/support/hex_bytes.h"
#include "tests/support/points_of.h"
#include "tests/support/read_block.h"
#include "tests/support/written_text.h"
#include <gtest/gtest.h>

#include "zorv/math/line3d.h"

namespace {

constexpr auto kAny = ZoElspDefLineConstraint::ConstraintNone;
constexpr auto kParallel = ZoElspDefLineConstraint::ConstraintParallel;
constexpr auto kPerpendicular = ZoElspDefLineConstraint::ConstraintPerpendicular;

/// The corners 1 to 4 of a rectangle of 8 by 2 with its sides 1-2, 4-3, 2-3, 1-4 as the lines 1 to 4.
class DefinitionLines : public ::testing::Test {
  protected:
    DefinitionLines() {
        definition.MakeDefLine(1, 2);
        definition.MakeDefLine(4, 3);
        definition.MakeDefLine(2, 3);
        definition.MakeDefLine(1, 4);
    }

    ZoPointList points = PointsOf({{1, 0, 0, 0, 0}, {2, 8, 0, 0, 0}, {3, 8, 2, 0, 0}, {4, 0, 2, 0, 0}});
    ZoElspParallelDef definition{&points};
};

TEST_F(DefinitionLines, LinesAreMadeOnceBetweenPointsThatExist) {
    EXPECT_EQ(std::tuple(definition.lines.Count(), definition.lines.Last()->GetId()), std::tuple(4, 4u));
    EXPECT_FALSE(definition.MakeDefLine(1, 1));
    EXPECT_FALSE(definition.MakeDefLine(2, 1)) << "joined already, the other way round";
    EXPECT_TRUE(!definition.MakeDefLine(1, 9) && definition.HasDefLineWithLastBikos());
    const ZoElspDefLine* line = definition.MakeDefLine(1, 3);
    EXPECT_TRUE(line && line->GetId() == 5);
    points.Add(ZoPoint(5, 9, 9, 0, 0));
    EXPECT_TRUE(definition.MakeDefLineFromLastTwoBikos() && definition.HasDefLineWithLastBikos());

    ZoElspParallelDef loose(nullptr);
    loose.lines = definition.lines;
    ZoPoint a, b;
    EXPECT_FALSE(loose.GetLine(a, b, loose.lines.First()) || loose.MakeDefLine(1, 3));
    EXPECT_FALSE(loose.MakeDefLineFromLastTwoBikos() || loose.HasDefLineWithLastBikos());
    loose.CheckAndRepair();
    EXPECT_EQ(loose.lines.Count(), 6);
}

TEST_F(DefinitionLines, ConstraintsAreMadeOnceForEachType) {
    ASSERT_TRUE(definition.MakeConstraintDef(1, 2, kParallel));
    EXPECT_FALSE(definition.MakeConstraintDef(2, 1, kParallel));
    EXPECT_TRUE(definition.MakeConstraintDef(2, 1, kPerpendicular)) << "another type";
    EXPECT_FALSE(definition.MakeConstraintDef(1, 1, kParallel) || definition.MakeConstraintDef(1, 7, kParallel));
    EXPECT_TRUE(definition.HasConstraintDef(1, 4, false, kAny) && !definition.HasConstraintDef(1, 4, true, kAny));
    EXPECT_FALSE(definition.HasConstraintDefFromLastTwoLines(kAny));

    ZoPoint a, b;
    ASSERT_TRUE(definition.GetConstraintLine(a, b, definition.constraints.First()));
    EXPECT_EQ(a, ZoPoint(0, 4, 0, 0, 0));
    EXPECT_EQ(b, ZoPoint(0, 4, 2, 0, 0));
    ZoLine3d side;
    ASSERT_TRUE(definition.GetLine(side, definition.lines.Last()));
    EXPECT_EQ(side.getLength(), 2);
    EXPECT_FALSE(definition.GetLine(side, nullptr));
}

TEST_F(DefinitionLines, TwoPairsOfParallelsMakeARectangle) {
    EXPECT_FALSE(definition.MakeLastTwoParallelConstraintsPerpendicular());
    definition.MakeConstraintDef(1, 2, kParallel);
    ASSERT_TRUE(definition.MakeConstraintDefFromLastTwoDefLines(kParallel));
    ASSERT_TRUE(definition.MakeLastTwoParallelConstraintsPerpendicular());
    EXPECT_EQ(definition.constraints.Count(), 6);
    for (const unsigned int along : {1u, 2u}) {
        for (const unsigned int across : {3u, 4u})
            EXPECT_TRUE(definition.HasConstraintDef(along, across, true, kPerpendicular));
    }
    EXPECT_FALSE(definition.MakeLastTwoParallelConstraintsPerpendicular()) << "the last two are perpendicular now";

    definition.constraints.Destroy();
    definition.MakeConstraintDef(1, 2, kParallel);
    definition.MakeConstraintDef(2, 3, kParallel);
    EXPECT_TRUE(definition.MakeLastTwoParallelConstraintsPerpendicular());
    EXPECT_EQ(definition.constraints.Count(), 2 + 3) << "none from the shared line to itself";
}

TEST_F(DefinitionLines, RepairFollowsADeletedPoint) {
    definition.MakeConstraintDef(1, 2, kParallel);
    definition.MakeConstraintDef(3, 4, kParallel);
    definition.MakeConstraintDef(2, 3, kPerpendicular);
    delete points.Subtract(1u);
    definition.CheckAndRepair();
    EXPECT_EQ(definition.lines.Count(), 2);
    ASSERT_EQ(definition.constraints.Count(), 1);
    EXPECT_TRUE(definition.HasConstraintDef(2, 3, true, kPerpendicular));
}

TEST_F(DefinitionLines, TextReadsBack) {
    definition.lines.First()->xAxis = 1;
    definition.lines.First()->distance = 0.1;
    definition.lines.Last()->distance = -std::numeric_limits<double>::infinity();
    definition.MakeConstraintDef(1, 2, kParallel)->value = 0.5;
    const std::string text = WrittenText(definition);
    EXPECT_TRUE(
        text.starts_with("DEFLINE         {          1           1           2           1  0.10000000000000001}\n"))
        << text;
    EXPECT_TRUE(text.ends_with("CONSTRAINT      {          1           2           1         0.5}\n")) << text;

    ZoElspParallelDef back(&points);
    EXPECT_EQ(ReadBlock(text, [&](ZoReaderObject* object) { back.Read(object); }), 0);
    EXPECT_EQ(WrittenText(back), text);
    EXPECT_TRUE(back.HasXAxisDef());
    EXPECT_EQ(back.constraints.First()->GetId(), 0u);

    ZoElspParallelDef stored(&points);
    const std::string bytes = ArchiveBytes(definition);
    const std::string line =
        HexBytes("01000000 0000 00000000 01000000 02000000 9a9999999999b93f 01000000") + std::string(16, '\0');
    const std::string constraint =
        HexBytes("0100000000000000 01000000 0000 00000000 01000000 02000000 01000000 000000000000e03f");
    EXPECT_TRUE(bytes.starts_with(HexBytes("0400000000000000") + line) && bytes.ends_with(constraint));
    EXPECT_EQ(bytes.size(), 8 + 4 * line.size() + constraint.size());
    EXPECT_EQ(ReadArchiveBytes(bytes, stored), 0u);
    EXPECT_EQ(WrittenText(stored), text);
    EXPECT_EQ(ArchiveBytes(stored), bytes);

    ZoElspParallelDef broken(&points);
    EXPECT_GT(ReadBlock("DEFLINE { 1 2 3 0 4.5 } DEFLINE { 1 2 \"three\" 0 } CONSTRAINT { 1 2 1 0 }",
                        [&](ZoReaderObject* object) { broken.Read(object); }),
              0);
    EXPECT_GE(broken.lines.Count(), 1);
}

}  // namespace

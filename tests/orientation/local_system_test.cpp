#include "zorv/orientation/local_system.h"

#include <array>
#include <cmath>
#include <limits>
#include <sstream>

#include "tests/support/archive_item.h"
#include "tests/support/hex_bytes.h"
#include "tests/support/read_block.h"
#include <gtest/gtest.h>

#include "zorv/orientation/similarity.h"

namespace {

/// Points of a room whose sides lie askew in the present system: (10, 20, 30) + a e1 + b e2 + c e3 with
/// e1 = (2, 1, 2) / 3, e2 = (-2, 2, 1) / 3, e3 = (-1, -2, 2) / 3.
ZoPoint RoomPoint(unsigned int id, double a, double b, double c) {
    return ZoPoint(id, 10 + (2 * a - 2 * b - c) / 3, 20 + (a + 2 * b - 2 * c) / 3, 30 + (2 * a + b + 2 * c) / 3, 0);
}

ZoPointList Room() {
    ZoPointList list;
    list.Add(RoomPoint(1, 0, 0, 0));
    list.Add(RoomPoint(2, 6, 0, 0));
    list.Add(RoomPoint(3, 2, 3, 0));
    list.Add(RoomPoint(4, 1, 2, 3));
    return list;
}

ZoLokalSystemDef Definition(int axis, int plane) {
    ZoLokalSystemDef def;
    def.axisMode = axis;
    def.planeMode = plane;
    def.id0 = 1;
    def.id1 = 2;
    def.id2 = 3;
    def.id3 = 4;
    def.x = 100;
    def.y = 200;
    def.z = 300;
    return def;
}

TEST(LocalSystem, AxisAndPlaneLieWhereTheDefinitionSays) {
    // Where the point at 1, 2, 3 along u, v, w stands, seen from the start of the axis.
    const struct {
        int axis;
        int plane;
        double local[3];
    } kCases[] = {
        {eAxisX, ePlaneXY, {1, 2, 3}}, {eAxisX, ePlaneZX, {1, -3, 2}}, {eAxisY, ePlaneXY, {2, 1, -3}},
        {eAxisY, ePlaneYZ, {3, 1, 2}}, {eAxisZ, ePlaneZX, {2, 3, 1}},  {eAxisZ, ePlaneYZ, {-3, 2, 1}},
    };
    ZoPointList room = Room();
    for (const auto& [axis, plane, local] : kCases) {
        SCOPED_TRACE(axis * 10 + plane);
        ZoTrafo3d trafo;
        ASSERT_TRUE(trafo.CalcByLocalSystem(Definition(axis, plane), &room, 2.0, 0.0));
        EXPECT_EQ(trafo.GetStatus(), eTrafo3DNoScaleDef) << "told, though the scale was given";
        EXPECT_NEAR(trafo.rotation.Sarrus(), 1.0, 1e-14);
        ZoPointList moved(room);
        trafo.InPlaceTransform(&moved);
        // The last point has the given coordinates, the first one is 2 (1, 2, 3) away along the local axes.
        EXPECT_LT(moved.Last()->Distance(ZoPoint(0, 100, 200, 300, 0)), 1e-12);
        const ZoPoint start(0, 100 - 2 * local[0], 200 - 2 * local[1], 300 - 2 * local[2], 0);
        EXPECT_LT(moved.First()->Distance(start), 1e-12);
    }
}

TEST(LocalSystem, ScaleIsTheMeanOverTheDistances) {
    ZoPointList room = Room();
    ZoLokalSystemDef def = Definition(eAxisX, ePlaneXY);
    def.scale[1] = {1, 2, 12.0};                   // 6 now: scale 2
    def.scale[4] = {1, 3, 3.0 * std::sqrt(13.0)};  // scale 3
    ZoTrafo3d trafo;
    ASSERT_TRUE(trafo.CalcByLocalSystem(def, &room, 0.0, 0.21));
    EXPECT_EQ(trafo.GetStatus(), eTrafo3DOk);
    EXPECT_NEAR(trafo.scale, 2.5, 1e-14);
    EXPECT_NEAR(trafo.GetScaleCheck(1).difference, 3.0, 1e-12);
    EXPECT_NEAR(trafo.GetScaleCheck(1).percent, 25.0, 1e-11);
    EXPECT_FALSE(trafo.GetScaleCheck(1).exceeded);
    EXPECT_EQ(trafo.GetScaleCheck(0).percent, 0.0);

    ASSERT_TRUE(trafo.CalcByLocalSystem(def, &room, 0.0, 0.19)) << "a deviation is a warning";
    EXPECT_EQ(trafo.GetStatus(), eTrafo3DScaleDeviation);
    EXPECT_TRUE(trafo.GetScaleCheck(1).exceeded);
    EXPECT_TRUE(trafo.GetScaleCheck(4).exceeded);
    EXPECT_EQ(trafo.GetLastScaleCheck(), 4);

    ZoTrafo3d fixed;
    ASSERT_TRUE(fixed.CalcByLocalSystem(def, &room, 2.0, 0.0));
    EXPECT_EQ(fixed.scale, 2.0);
    EXPECT_EQ(fixed.GetStatus(), eTrafo3DOk);
    EXPECT_FALSE(fixed.GetScaleCheck(4).exceeded) << "a fixed scale tests no distance";
    EXPECT_NEAR(fixed.GetScaleCheck(4).percent, -100.0 / 3, 1e-11);
}

TEST(LocalSystem, WhatCannotBeComputedIsTold) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const auto with = [](const ZoScaleDef& scale) {
        ZoLokalSystemDef def = Definition(eAxisX, ePlaneXY);
        def.scale[0] = scale;
        return def;
    };
    ZoLokalSystemDef usedTwice = with({1, 2, 3.0});
    usedTwice.id2 = 1;
    ZoLokalSystemDef missing = with({1, 2, 3.0});
    missing.id3 = 9;
    ZoLokalSystemDef collinear = with({1, 2, 3.0});
    collinear.id2 = 5;
    ZoLokalSystemDef noNumber = with({1, 2, 3.0});
    noNumber.id2 = 6;
    ZoLokalSystemDef noAxis = with({1, 2, 3.0});
    noAxis.axisMode = 0;
    const struct {
        const char* name;
        ZoLokalSystemDef def;
        double fixedScale;
        eTrafo3DStatus status;
    } kCases[] = {
        {"distance from a point to itself", with({2, 2, 3.0}), 1.0, eTrafo3DBadScaleDef},
        {"point used twice", usedTwice, 1.0, eTrafo3DNoSolution},
        {"point missing", missing, 1.0, eTrafo3DPointMissing},
        {"point of a distance missing", with({2, 9, 3.0}), 1.0, eTrafo3DPointMissing},
        {"no distance and no scale", with({}), 0.0, eTrafo3DBadScaleDef},
        {"points on a line", collinear, 1.0, eTrafo3DNoSolution},
        {"a coordinate that is no number", noNumber, 1.0, eTrafo3DNoSolution},
        {"a distance that is no number", with({1, 2, nan}), 0.0, eTrafo3DBadScaleDef},
        {"a scale that is no number", with({1, 2, 3.0}), nan, eTrafo3DBadScaleDef},
        {"no such axis", noAxis, 1.0, eTrafo3DNoSolution},
    };
    ZoPointList room = Room();
    room.Add(RoomPoint(5, 0.1, 0, 0));
    room.Add(ZoPoint(6, 1, nan, 1, 0));
    for (const auto& known : kCases) {
        ZoTrafo3d trafo;
        EXPECT_FALSE(trafo.CalcByLocalSystem(known.def, &room, known.fixedScale, 0.1)) << known.name;
        EXPECT_EQ(trafo.GetStatus(), known.status) << known.name;
        EXPECT_EQ(trafo.rotation[1][1], 0.0) << known.name;
        EXPECT_FALSE(trafo.CalcByLocalSystem(known.def, nullptr, known.fixedScale, 0.1)) << known.name;
    }
    // At map coordinates rounding makes an angle of what is a line.
    for (ZoPoint* point = room.First(); point; point = point->Next())
        point->y += 5.4e6;
    ZoTrafo3d trafo;
    EXPECT_FALSE(trafo.CalcByLocalSystem(collinear, &room, 1.0, 0.1));
    EXPECT_EQ(trafo.GetStatus(), eTrafo3DNoSolution);
}

TEST(LocalSystem, ValidityIsTestedWithoutAListAndWithoutScale) {
    eTrafo3DStatus status = eTrafo3DScaleDeviation;
    EXPECT_FALSE(ZoLokalSystemDef().IsValid(status, nullptr, false));
    EXPECT_EQ(status, eTrafo3DNoSolution);
    ZoLokalSystemDef def = Definition(eAxisX, ePlaneXY);
    status = eTrafo3DScaleDeviation;
    EXPECT_TRUE(def.IsValid(status, nullptr, false));
    EXPECT_EQ(status, eTrafo3DScaleDeviation) << "written on failure only";
    def.scale[2] = {7, 8, 1e-10};
    const ZoPointList room = Room();
    EXPECT_TRUE(def.IsValid(status, &room, false)) << "points of distances do not count";
    EXPECT_FALSE(def.IsValid(status, nullptr, true));
    EXPECT_EQ(status, eTrafo3DNoScaleDef) << "too short";
    def.scale[2].distance = -1.1e-10;
    EXPECT_TRUE(def.IsValid(status, nullptr, true));
}

TEST(LocalSystem, DefinitionIsEdited) {
    ZoLokalSystemDef def;
    for (const auto& [axis, plane, adjusted] :
         {std::array{1, 5, 4}, std::array{2, 6, 4}, std::array{3, 4, 5}, std::array{1, 6, 6}, std::array{3, 6, 6}}) {
        def.axisMode = axis;
        def.planeMode = plane;
        def.AdjustPlanebyAxisMode();
        EXPECT_EQ(def.planeMode, adjusted) << axis << plane;
    }
    ZoPointList list;
    EXPECT_FALSE(def.Suggest(nullptr));
    for (const unsigned int id : {5u, 9u})
        list.Add(ZoPoint(id, 0, 0, 0, 0));
    EXPECT_FALSE(def.Suggest(&list));
    EXPECT_EQ(def.id1, 9u);
    list.Add(ZoPoint(7, 0, 0, 0, 0));
    EXPECT_TRUE(def.Suggest(&list));
    EXPECT_EQ(def.id0, 5u);
    EXPECT_EQ(def.id2, 7u);
    EXPECT_EQ(def.id3, 5u);
    EXPECT_TRUE(def.IsUsedInDef(9));
    EXPECT_FALSE(def.IsUsedInDef(4));
    def.scale[4] = {1, 2, 3.0};
    def.ClearScaleDef();
    EXPECT_EQ(def.scale[4].distance, 0.0);
    def.SetInvalid();
    EXPECT_FALSE(def.IsUsedInDef(5) || def.IsUsedInDef(7));
    EXPECT_EQ(def.id1, 9u);
}

TEST(LocalSystem, TextHoldsThreeDistances) {
    ZoLokalSystemDef def = Definition(eAxisZ, ePlaneYZ);
    def.x = 0.1;
    def.y = -4500000.125;
    def.z = 0;
    def.scale[0] = {4294967295u, 2, 12.5};
    def.scale[3] = {8, 9, 1.0};
    std::ostringstream out;
    def.Write(out);
    EXPECT_EQ(out.str(),
              "3 1 2\n"
              "5 3\n"
              "4                   0.1          -4500000.125                     0\n"
              "4294967295 2                  12.5\n"
              "0 0                     0\n"
              "0 0                     0");
    ZoLokalSystemDef back;
    back.scale[3].distance = 77;
    EXPECT_EQ(ReadBlock(out.str(), [&](ZoReaderObject* object) { EXPECT_EQ(back.Read(object), 1); }), 0);
    EXPECT_EQ(back.planeMode, ePlaneYZ);
    EXPECT_EQ(back.id3, 4u);
    EXPECT_EQ(back.x, 0.1);
    EXPECT_EQ(back.y, def.y);
    EXPECT_EQ(back.scale[0].idA, 4294967295u);
    EXPECT_EQ(back.scale[0].distance, 12.5);
    EXPECT_EQ(back.scale[3].distance, 77) << "not in the text";
    EXPECT_GT(ReadBlock("2 1 3 4 word", [&](ZoReaderObject* object) { back.Read(object); }), 0);
    EXPECT_EQ(back.axisMode, 2);
    EXPECT_EQ(back.id2, 3u) << "from a word on nothing is read";
}

TEST(LocalSystem, ArchiveHoldsFiveDistances) {
    ZoLokalSystemDef def = Definition(eAxisY, ePlaneYZ);
    def.x = 1;
    def.y = -2;
    def.z = 0.5;
    def.scale[4] = {7, 4294967295u, 2};
    const std::string bytes = ArchiveBytes(def);
    EXPECT_EQ(bytes, HexBytes("02000000 01000000 02000000 05000000 03000000 04000000"
                              "000000000000f03f 00000000000000c0 000000000000e03f") +
                         std::string(4 * 16, '\0') + HexBytes("07000000 ffffffff 0000000000000040"));
    ZoLokalSystemDef back;
    EXPECT_EQ(ReadArchiveBytes(bytes, back), 0u);
    EXPECT_EQ(ArchiveBytes(back), bytes);
    ZoLokalSystemDef cut;
    cut.scale[4].idA = 55;
    ReadArchiveBytes(bytes.substr(0, 44), cut);
    EXPECT_EQ(cut.z, 0) << "the value that is cut off stays";
    EXPECT_EQ(cut.y, -2);
    EXPECT_EQ(cut.scale[4].idA, 55u);
}

}  // namespace

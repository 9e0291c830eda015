#include "zorv/orientation/local_system.h"

#include <cmath>
#include <limits>

#include "tests/support/archive_item.h"
#include "tests/support/hex_bytes.h"
#include "tests/support/points_of.h"
#include "tests/support/read_block.h"
#include "tests/support/written_text.h"
#include <gtest/gtest.h>

#include "zorv/orientation/similarity.h"

namespace {

/// A point of a room whose sides lie askew: (10, 20, 30) + a e1 + b e2 + c e3 with e1 = (2, 1, 2) / 3,
/// e2 = (-2, 2, 1) / 3, e3 = (-1, -2, 2) / 3.
ZoPoint RoomPoint(unsigned int id, double a, double b, double c) {
    return ZoPoint(id, 10 + (2 * a - 2 * b - c) / 3, 20 + (a + 2 * b - 2 * c) / 3, 30 + (2 * a + b + 2 * c) / 3, 0);
}

ZoPointList Room() {
    return PointsOf({RoomPoint(1, 0, 0, 0), RoomPoint(2, 6, 0, 0), RoomPoint(3, 2, 3, 0), RoomPoint(4, 1, 2, 3)});
}

ZoLokalSystemDef Definition(int axis, int plane, const ZoScaleDef& scale = {}, unsigned int third = 3) {
    ZoLokalSystemDef def;
    def.axisMode = axis;
    def.planeMode = plane;
    def.id0 = 1;
    def.id1 = 2;
    def.id2 = third;
    def.id3 = 4;
    def.x = 1;
    def.y = -2;
    def.z = 0.5;
    def.scale[0] = scale;
    return def;
}

TEST(LocalSystem, AxisAndPlaneLieWhereTheDefinitionSays) {
    // Where the point at 1, 2, 3 along u, v, w stands, seen from the start of the axis.
    const std::tuple<int, int, double, double, double> cases[] = {
        {eAxisX, ePlaneXY, 1, 2, 3}, {eAxisX, ePlaneZX, 1, -3, 2}, {eAxisY, ePlaneXY, 2, 1, -3},
        {eAxisY, ePlaneYZ, 3, 1, 2}, {eAxisZ, ePlaneZX, 2, 3, 1},  {eAxisZ, ePlaneYZ, -3, 2, 1},
    };
    for (const auto& [axis, plane, x, y, z] : cases) {
        SCOPED_TRACE(axis * 10 + plane);
        ZoPointList room = Room();
        ZoTrafo3d trafo;
        ASSERT_TRUE(trafo.CalcByLocalSystem(Definition(axis, plane), &room, 2.0, 0.0));
        EXPECT_EQ(trafo.GetStatus(), eTrafo3DNoScaleDef) << "told, though the scale was given";
        EXPECT_NEAR(trafo.rotation.Sarrus(), 1.0, 1e-14);
        trafo.InPlaceTransform(&room);
        EXPECT_LT(room.Last()->Distance(ZoPoint(0, 1, -2, 0.5, 0)), 1e-13);
        EXPECT_LT(room.First()->Distance(ZoPoint(0, 1 - 2 * x, -2 - 2 * y, 0.5 - 2 * z, 0)), 1e-13);
    }
}

TEST(LocalSystem, ScaleIsTheMeanOverTheDistances) {
    const ZoPointList room = Room();
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
    ASSERT_TRUE(trafo.CalcByLocalSystem(def, &room, 0.0, 0.19)) << "a deviation is a warning";
    EXPECT_EQ(trafo.GetStatus(), eTrafo3DScaleDeviation);
    EXPECT_TRUE(trafo.GetScaleCheck(1).exceeded && trafo.GetScaleCheck(4).exceeded);
    EXPECT_EQ(trafo.GetLastScaleCheck(), 4);
    ASSERT_TRUE(trafo.CalcByLocalSystem(def, &room, 2.0, 0.0));
    EXPECT_EQ(trafo.scale, 2.0);
    EXPECT_FALSE(trafo.GetScaleCheck(4).exceeded) << "a fixed scale tests no distance";
    EXPECT_NEAR(trafo.GetScaleCheck(4).percent, -100.0 / 3, 1e-11);
}

TEST(LocalSystem, WhatCannotBeComputedIsTold) {
    const auto def = [](const ZoScaleDef& scale, unsigned int third = 3) {
        return Definition(eAxisX, ePlaneXY, scale, third);
    };
    const ZoScaleDef good{1, 2, 3.0};
    ZoLokalSystemDef farAway = def(good);
    farAway.z = std::numeric_limits<double>::infinity();
    const std::tuple<const char*, ZoLokalSystemDef, double, eTrafo3DStatus> cases[] = {
        {"distance from a point to itself", def({2, 2, 3.0}), 1.0, eTrafo3DBadScaleDef},
        {"point used twice", def(good, 1), 1.0, eTrafo3DNoSolution},
        {"point missing", def(good, 9), 1.0, eTrafo3DPointMissing},
        {"point of a distance missing", def({2, 9, 3.0}), 1.0, eTrafo3DPointMissing},
        {"no distance and no scale", def({}), 0.0, eTrafo3DBadScaleDef},
        {"points on a line", def(good, 5), 1.0, eTrafo3DNoSolution},
        {"a coordinate that is no number", def(good, 6), 1.0, eTrafo3DNoSolution},
        {"a distance that is no number", def({1, 2, std::nan("")}), 0.0, eTrafo3DBadScaleDef},
        {"a scale that is no number", def(good), std::nan(""), eTrafo3DBadScaleDef},
        {"no such axis", Definition(0, ePlaneXY, good), 1.0, eTrafo3DNoSolution},
        {"given coordinates that are not finite", farAway, 1.0, eTrafo3DNoSolution},
    };
    ZoPointList room = Room();
    room.Add(RoomPoint(5, 0.1, 0, 0));
    room.Add(ZoPoint(6, 1, std::nan(""), 1, 0));
    for (const double north : {0.0, 5.4e6}) {  // rounding there makes an angle of what is a line
        for (ZoPoint* point = room.First(); point; point = point->Next())
            point->y += north;
        for (const auto& [name, known, fixedScale, status] : cases) {
            SCOPED_TRACE(name);
            ZoTrafo3d trafo;
            EXPECT_FALSE(trafo.CalcByLocalSystem(known, &room, fixedScale, 0.1));
            EXPECT_EQ(std::tuple(trafo.GetStatus(), trafo.rotation[1][1]), std::tuple(status, 0.0));
            EXPECT_FALSE(trafo.CalcByLocalSystem(known, nullptr, fixedScale, 0.1));
        }
    }
}

TEST(LocalSystem, ValidityIsTestedWithoutAListAndWithoutScale) {
    eTrafo3DStatus status = eTrafo3DScaleDeviation;
    const ZoLokalSystemDef tooShort = Definition(eAxisX, ePlaneXY, {7, 8, 1e-10});
    const ZoPointList room = Room();
    EXPECT_TRUE(tooShort.IsValid(status, &room, false)) << "points of distances do not count";
    EXPECT_EQ(status, eTrafo3DScaleDeviation) << "written on failure only";
    EXPECT_FALSE(tooShort.IsValid(status, nullptr, true));
    EXPECT_EQ(status, eTrafo3DNoScaleDef);
    EXPECT_TRUE(Definition(eAxisX, ePlaneXY, {7, 8, -1.1e-10}).IsValid(status, nullptr, true));
    EXPECT_FALSE(ZoLokalSystemDef().IsValid(status, nullptr, false));
    EXPECT_EQ(status, eTrafo3DNoSolution);
}

TEST(LocalSystem, DefinitionIsEdited) {
    ZoLokalSystemDef def;
    for (const int modes : {154, 264, 345, 166, 366}) {  // axis, plane before, plane after
        def.axisMode = modes / 100;
        def.planeMode = modes / 10 % 10;
        def.AdjustPlanebyAxisMode();
        EXPECT_EQ(def.planeMode, modes % 10) << modes;
    }
    ZoPointList room = Room();
    EXPECT_TRUE(def.Suggest(&room));
    EXPECT_EQ(def.id3, 1u);
    def.SetInvalid();
    EXPECT_FALSE(def.IsUsedInDef(1) || def.IsUsedInDef(3));
    delete room.SubtractLast();
    delete room.SubtractLast();
    EXPECT_FALSE(def.Suggest(&room) || def.Suggest(nullptr));
    EXPECT_EQ(def.id0, 1u) << "as far as the list reaches";
}

TEST(LocalSystem, TextHoldsThreeDistances) {
    ZoLokalSystemDef def = Definition(eAxisZ, ePlaneYZ, {4294967295u, 2, 12.5});
    def.y = -4500000.125;
    def.scale[3] = {8, 9, 1.0};
    const std::string out = WrittenText(def);
    EXPECT_EQ(out,
              "3 1 2\n"
              "5 3\n"
              "4                     1          -4500000.125                   0.5\n"
              "4294967295 2                  12.5\n"
              "0 0                     0\n"
              "0 0                     0");
    ZoLokalSystemDef back;
    back.scale[3] = def.scale[3];  // not in the text
    EXPECT_EQ(ReadBlock(out, [&](ZoReaderObject* object) { EXPECT_EQ(back.Read(object), 1); }), 0);
    EXPECT_EQ(ArchiveBytes(back), ArchiveBytes(def));
    EXPECT_GT(ReadBlock("2 5 3 4 word", [&](ZoReaderObject* object) { back.Read(object); }), 0);
    EXPECT_EQ(back.id0, 5u);
    EXPECT_EQ(back.id2, 3u) << "from a word on nothing is read";
}

TEST(LocalSystem, ArchiveHoldsFiveDistances) {
    ZoLokalSystemDef def = Definition(eAxisY, ePlaneYZ);
    def.scale[4] = {7, 4294967295u, 2};
    const std::string bytes = ArchiveBytes(def);
    EXPECT_EQ(bytes, HexBytes("02000000 01000000 02000000 05000000 03000000 04000000"
                              "000000000000f03f 00000000000000c0 000000000000e03f") +
                         std::string(4 * 16, '\0') + HexBytes("07000000 ffffffff 0000000000000040"));
    ZoLokalSystemDef back;
    EXPECT_EQ(ReadArchiveBytes(bytes, back), 0u);
    EXPECT_EQ(ArchiveBytes(back), bytes);
}

}  // namespace

#include "zorv/rectify/plane.h"

#include <cmath>
#include <limits>
#include <numbers>

#include "tests/support/archive_item.h"
#include "tests/support/hex_bytes.h"
#include "tests/support/temp_folder.h"
#include <gtest/gtest.h>

#include "zorv/rectify/plane_list.h"

namespace {

constexpr double kTolerance = 1e-12;

ZoPlane Plane(double a, double b, double c, double d) {
    ZoPlane plane;
    plane.A() = a;
    plane.B() = b;
    plane.C() = c;
    plane.D() = d;
    return plane;
}

TEST(Plane, DistancesAreSigned) {
    const ZoPlane plane = Plane(0, 0, 2, -6);  // z = 3
    EXPECT_EQ(plane.FastDist(9, 9, 5), 4);
    EXPECT_EQ(plane.Dist(9, 9, 5), 2);
    EXPECT_EQ(plane.Dist(ZoPoint(0, 0, 0, 0, 0)), -3);
    ZoPoint foot(7, 0, 0, 0, 3);
    EXPECT_TRUE(Plane(0, 0, 1, -3).ProjectPoint(&foot, ZoPoint(1, 4, 5, 9, 0)));
    EXPECT_EQ(foot, ZoPoint(0, 4, 5, 3, 0));
    EXPECT_TRUE(plane.ProjectPoint(&foot, ZoPoint(1, 4, 5, 9, 0)));
    EXPECT_EQ(foot.z, 9 - 6 * 2) << "the normal is taken as it is";
    EXPECT_EQ(foot.GetId(), 7u);
    EXPECT_FALSE(ZoPlane().ProjectPoint(&foot, foot) || ZoPlane().IsValid());
}

TEST(Plane, AnglesAndParallelism) {
    const ZoPlane floor = Plane(0, 0, 1, -1);
    ZoPlane mirrored = floor;
    mirrored.MirrorNormal();
    EXPECT_EQ(mirrored.D(), 1);
    EXPECT_NEAR(floor.CalcAngle(mirrored), std::numbers::pi, kTolerance);
    EXPECT_FALSE(floor.IsParallel(mirrored));
    EXPECT_EQ(floor.Dist(Plane(0, 0, 3, -5)), 4);
    EXPECT_EQ(floor.Dist(Plane(0, 1, 0, -5)), 0);
    EXPECT_TRUE(floor.IsParallel(Plane(3e-7, 0, 1, 0)) && !floor.IsParallel(Plane(5e-7, 0, 1, 0)));
    EXPECT_TRUE(floor.IsNormal(Plane(1, 0, 1, 0)) && !floor.IsNormal(Plane(0.99, 0, 1, 0)));
}

TEST(Plane, IntersectionLine) {
    ZoVector point(9.0, 9.0, 9.0), direction(9.0, 9.0, 9.0);
    // x = 2 and y = 3 meet in the vertical line through (2, 3).
    EXPECT_TRUE(Plane(1, 0, 0, -2).CalcIntersection(point, direction, Plane(0, 1, 0, -3)));
    EXPECT_TRUE(point == ZoVector(2.0, 3.0, 0.0));
    EXPECT_TRUE(direction == ZoVector::kZaxis3D);
    EXPECT_FALSE(Plane(1, 0, 0, -2).CalcIntersection(point, direction, Plane(2, 0, 0, 5)));
    // A level line has no single point with z = 0; its direction is told all the same.
    EXPECT_FALSE(Plane(0, 0, 1, -2).CalcIntersection(point, direction, Plane(1, 0, 0, 0)));
    EXPECT_TRUE(direction == ZoVector::kYaxis3D);
    EXPECT_TRUE(point == ZoVector(2.0, 3.0, 0.0));
}

TEST(Plane, PointOnTheAxisOfTheGreatestCoefficient) {
    EXPECT_TRUE(Plane(-2, 1, 0, 4).CalcPlaneVectorForSip() == ZoVector(2.0, 0.0, 0.0));
    EXPECT_TRUE(Plane(1, -2, 0, 4).CalcPlaneVectorForSip() == ZoVector(0.0, 2.0, 0.0));
    EXPECT_FALSE(std::isfinite(Plane(1, 1, 0, -2).CalcPlaneVectorForSip()[3]));
    EXPECT_TRUE(ZoPlane().CalcPlaneVectorForSip() == ZoVector(0.0, 0.0, 0.0));
}

TEST(PlaneList, FileHasOneBlockALine) {
    const TempFolder folder;
    ZoPlaneList list;
    ZoPlane wall = Plane(0, 0, 1, 2.5);
    wall.SetId(1);
    wall.SetName(L"Wall");
    list.Add(wall);
    EXPECT_EQ(list.WriteFile(folder.Name("planes.txt")), 1);
    EXPECT_EQ(folder.Read("planes.txt"),
              "{    1 \"Wall\"                     0                     0                     1"
              "                   2.5}\n");

    ZoPlaneList back(
        folder.Write("strange.txt", "{3 \"a \xC3\xB6\" 1 0.5 word -7}  ; made by hand\r\n{ 4 \"b\"\n1 2 3 4 }\n"));
    ASSERT_EQ(back.Count(), 2);
    EXPECT_EQ(std::tuple(back.First()->GetName(), back.First()->C(), back.First()->D(), back.Last()->D()),
              std::tuple(L"a \u00f6", 0, -7, 4));
    EXPECT_EQ(back.ReadFile(folder.Write("cut.txt", "{5 \"x\" 1 2 3 4} {6 \"y\" 1 2")), 1);
    EXPECT_EQ(back.Count(), 3);
    EXPECT_EQ(back.ReadFile(folder.Name("missing.txt")), 1);
    EXPECT_EQ(list.WriteFile(folder.Name("no/such/folder.txt")), 0);
    std::filesystem::create_symlink("cut.txt", folder.path / "link.txt");
    EXPECT_EQ(list.WriteFile(folder.Name("link.txt")), 1);
    EXPECT_EQ(folder.Read("cut.txt"), folder.Read("planes.txt")) << "the link stays, its file is another";

    list.First()->A() = -std::numeric_limits<double>::infinity();
    list.Add(wall);
    EXPECT_EQ(list.WriteFile(folder.Name("infinite.txt")), 2);
    const ZoPlaneList read(folder.Name("infinite.txt"));
    ASSERT_EQ(read.Count(), 2);
    EXPECT_EQ(read.First()->A(), 0);
}

TEST(PlaneList, ActivePlanes) {
    ZoPlaneList list;
    EXPECT_EQ(list.GetActivePlane(), nullptr);
    for (unsigned int id : {1u, 2u, 3u}) {
        ZoPlane plane;
        plane.SetId(id);
        plane.SetActive(id > 1);
        list.Add(plane);
    }
    EXPECT_EQ(list.CountActivePlanes(), 2);
    ZoPlane& second = *list.GetActivePlane();
    EXPECT_EQ(second.GetId(), 2u);
    EXPECT_EQ(std::tuple(IsPlaneFlagGuiCheckActive(&second), IsPlaneFlagGuiSelect(&second)), std::tuple(2u, 0u));
    second.SetFlag(ZoPlane::kGuiSelected);
    EXPECT_EQ(std::tuple(IsPlaneFlagGuiSelect(&second), IsPlaneFlagGuiSelect(nullptr)), std::tuple(1u, 0u));
}

TEST(PlaneList, ArchiveBringsPlanesBack) {
    ZoPlaneList list, back;
    ZoPlane& plane = *list.Add(Plane(1, 2, 3, 4.5));
    plane.SetId(77);
    plane.SetFlag(9);
    const std::string bytes = ArchiveBytes(list);
    EXPECT_EQ(bytes, HexBytes("0100000000000000 4d000000 0000 09000000"
                              "03000000 000000000000f03f 0000000000000040 0000000000000840 0000000000001240"));
    EXPECT_EQ(ReadArchiveBytes(bytes, back), 0u);
    EXPECT_EQ(ArchiveBytes(back), bytes);
}

}  // namespace

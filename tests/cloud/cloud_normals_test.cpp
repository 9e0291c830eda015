#include <cmath>

#include <gtest/gtest.h>

#include "zorv/cloud/point_cloud.h"

namespace {

/// Points of z = 0.5 x + 3 in no line.
ZoPointCloud Slope(std::size_t count) {
    ZoPointCloud cloud;
    for (std::size_t i = 0; i < count; ++i) {
        const auto x = static_cast<double>(i % 13);
        cloud.AddPoint(ZoScanPoint3d(x, static_cast<double>(i % 17), 0.5 * x + 3.0, 0));
    }
    return cloud;
}

std::uint64_t Normals(const ZoPointCloud& cloud) {
    std::uint64_t with = 9, total = 9;
    cloud.CountNormals(with, total);
    EXPECT_EQ(total, cloud.Size());
    return with;
}

TEST(CloudNormals, OnePlaneGivesAllPointsItsNormal) {
    ZoPointCloud few = Slope(35);
    EXPECT_FALSE(few.CalcEstimatedNormals());
    EXPECT_EQ(Normals(few), 0u);
    for (const std::size_t count : {36u, 1000u}) {
        ZoPointCloud cloud = Slope(count);
        ASSERT_TRUE(cloud.CalcEstimatedNormals());
        EXPECT_EQ(Normals(cloud), count);
        // The slope rises by a half: (-1, 0, 2) by the root of 5, up to the sign of the fit.
        const float* normal = cloud.points.back().normal;
        EXPECT_NEAR(std::fabs(normal[2]), 2.0 / std::sqrt(5.0), 1e-6);
        EXPECT_NEAR(normal[0] / normal[2], -0.5, 1e-6);
        EXPECT_NEAR(normal[1], 0.0, 1e-6);
    }
}

TEST(CloudNormals, TheSampleIsEveryStepthPoint) {
    // Of 100 points the second, fourth and so on count; the others lie far off the plane.
    ZoPointCloud cloud = Slope(100);
    for (std::size_t i = 0; i < 100; i += 2)
        cloud.points[i].z() = 1000.0 * static_cast<double>(i % 3);
    ASSERT_TRUE(cloud.CalcEstimatedNormals());
    EXPECT_NEAR(cloud.points[0].normal[0] / cloud.points[0].normal[2], -0.5, 1e-6);
    cloud.points[1].z() = 1000.0;
    ASSERT_TRUE(cloud.CalcEstimatedNormals());
    EXPECT_GT(std::fabs(cloud.points[0].normal[0] / cloud.points[0].normal[2] + 0.5), 1e-3);
}

TEST(CloudNormals, WhatSpansNoPlaneChangesNothing) {
    ZoPointCloud same, bad = Slope(50);
    same.points.assign(50, ZoScanPoint3d(1, 2, 3, 0));
    // The three points that the fit starts from are good.
    bad.points[20].z() = std::nan("");
    for (ZoPointCloud* cloud : {&same, &bad}) {
        SCOPED_TRACE(cloud == &same ? "one place" : "not a number");
        cloud->points[3].normal[1] = 7;
        EXPECT_FALSE(cloud->CalcEstimatedNormals());
        EXPECT_EQ(cloud->points[3].normal[1], 7);
        EXPECT_FALSE(cloud->points[4].HasNormVector());
    }
}

TEST(CloudNormals, PointAtTheViewpoint) {
    ZoPointCloud cloud;
    cloud.AddPoint(ZoScanPoint3d(1, 2, 3, 0));
    cloud.AddPoint(ZoScanPoint3d(4, 6, 3, 0));
    cloud.EstimateNormals(ZoPoint3d(4, 6, 3));
    EXPECT_EQ(cloud.viewpoint.y(), 6);
    const float* normal = cloud.points[0].normal;
    EXPECT_TRUE(normal[0] == 0.6F && normal[1] == 0.8F && normal[2] == 0.0F);
    EXPECT_TRUE(std::isnan(cloud.points[1].normal[0]));
    EXPECT_EQ(Normals(cloud), 2u);
}

}  // namespace

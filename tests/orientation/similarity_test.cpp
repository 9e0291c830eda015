#include "zorv/orientation/similarity.h"

#include <cmath>
#include <limits>

#include <gtest/gtest.h>

#include "zorv/math/affine_map3d.h"

namespace {

using Coordinates = std::vector<double>;  // x, y, z of one point after the other

/// Rotations agree with an independent solution in double to this, whatever the size of the coordinates.
constexpr double kRotationTolerance = 1e-9;

const Coordinates kSpatial{12,   3.5,   -2.25, -4.75, 18,   1.5,  7.25, -9.5, 22,
                           30.5, 14.25, 6.75,  -11,   -6.5, 9.25, 19.5, 27,   -13.75};

ZoPointList Points(const Coordinates& flat) {
    ZoPointList list;
    for (unsigned int i = 0; i < flat.size() / 3; ++i)
        list.Add(ZoPoint(i + 1, flat[3 * i], flat[3 * i + 1], flat[3 * i + 2], 0));
    return list;
}

/// The points in space with other heights.
Coordinates Flattened(double factor) {
    Coordinates flat(kSpatial);
    for (std::size_t i = 2; i < flat.size(); i += 3)
        flat[i] *= factor;
    return flat;
}

Coordinates Moved(Coordinates flat, double scale, double far) {
    const ZoAffinMap3d map = ZoAffinMap3d::Translate(far, far, 100.0) * ZoAffinMap3d::RotXYZ(0.4, -1.1, 2.5) *
                             ZoAffinMap3d::Scale(scale, scale, scale);
    for (std::size_t i = 0; i < flat.size(); i += 3) {
        const ZoPoint3d p = map * ZoPoint3d(flat[i], flat[i + 1], flat[i + 2]);
        flat[i] = p.x(), flat[i + 1] = p.y(), flat[i + 2] = p.z();
    }
    return flat;
}

bool Fit(ZoTrafo3d& trafo, const Coordinates& control, const Coordinates& source, bool unitScale = false) {
    const ZoPointList controls = Points(control);
    const ZoPointList sources = Points(source);
    return trafo.CalcByControlPoints(&controls, &sources, 3, unitScale);
}

// The least-squares solution by singular value decomposition, worked out with numpy 1.24: R = U diag(1, 1, det U det V)
// V' of the covariance, scale = trace of the signed singular values over the variance of the source.
TEST(Similarity, AgreesWithTheSolutionBySingularValues) {
    const struct {
        const char* name;
        Coordinates source, control, rotation;
        double scale;
        ZoVector rms;
        unsigned int worst;
    } kCases[] = {
        {"points in space",
         kSpatial,
         {497.026, -293.885, 48.981, 545.109, -288.056, 77.58, 491.444, -360.84, 67.868, 514.9, -309.325, -4.092,
          501.194, -325.213, 110.239, 534.564, -248.819, 14.414},
         {-0.29655658238026683, 0.8959217599235265, 0.33072404439723835, -0.06683153896358861, 0.3259846036677158,
          -0.9430098533797834, -0.95267399400146, -0.30175857612855495, -0.036797049965627396},
         2.5011427085285716,
         {0.0426932627174259, 0.03972712861024189, 0.016128030166778846},
         4},
        {"a floor at map coordinates",
         Flattened(0.0),
         {4499999.67, 5400000.258, 300.627, 4500013.161, 5400004.627, 309.309, 4499992.004, 5399997.332, 306.957,
          4500002.773, 5400001.964, 284.981, 4499998.072, 5399998.956, 319.331, 4500013.793, 5400005.618, 289.948},
         {-0.29716128510104095, 0.8961578627323229, 0.3295394600046144, -0.06593221386654324, 0.32504751787900255,
          -0.9433965519840295, -0.9525482212527375, -0.3020681979019543, -0.03750586626797614},
         0.7499567815958379,
         {0.00628369128259595, 0.0034848205694555405, 0.005085627369168094},
         3},
        {"a flat relief against its mirror image",
         Flattened(0.1),
         {-0.468, 0.145, -15.616, 21.841, 7.912, -1.12, -14.281, -1.861, -4.963, 4.349, 4.086, -41.704, -3.579, -0.654,
          15.615, 23.537, 7.774, -33.501},
         {-0.30249167655503223, 0.9340833754362717, 0.18970248640570841, -0.04606586770790813, 0.18446693761130706,
          -0.9817585674495656, -0.9520381932712806, -0.30571260468271283, -0.012770352026013225},
         1.2483327039254482,
         {0.39957948503963614, 1.4855844207021087, 0.05571818103759151},
         1},
    };
    for (const auto& known : kCases) {
        SCOPED_TRACE(known.name);
        ZoTrafo3d trafo;
        ASSERT_TRUE(Fit(trafo, known.control, known.source));
        EXPECT_EQ(trafo.GetStatus(), eTrafo3DOk);
        for (int i = 0; i < 9; ++i)
            EXPECT_NEAR(trafo.rotation.GetElemZeroIndex(i / 3, i % 3), known.rotation[i], kRotationTolerance) << i;
        EXPECT_NEAR(trafo.scale, known.scale, 1e-9);  // the search for the scale ends at steps of 1e-10
        ZoPointList result;
        const ZoPointList control = Points(known.control);
        ASSERT_TRUE(trafo.Transform(result, Points(known.source), &control, false));
        // Map coordinates carry a rounding of 1e-9.
        EXPECT_LT((ZoVector(trafo.GetRmsX(), trafo.GetRmsY(), trafo.GetRmsZ()) - known.rms).Abs(), 1e-7);
        EXPECT_EQ(trafo.GetWorstPoint()->GetId(), known.worst);
    }
}

TEST(Similarity, ExactSetsAreReproduced) {
    const Coordinates tetrahedron{0, 0, 0, 10, 0, 0, 0, 10, 0, 0, 0, 10};
    const Coordinates facade{0, 0, 0, 40, 0, 0, 40, 0, 12, 0, 0, 12, 17, 0, 5};
    const Coordinates triangle{1, 2, 3, 11, 2, 4, 5, 9, 3};
    for (const Coordinates& source : {tetrahedron, facade, triangle, kSpatial}) {
        for (const double scale : {0.001, 1.0, 1000.0}) {
            for (const double far : {0.0, 5e6}) {
                SCOPED_TRACE(scale);
                const ZoPointList control = Points(Moved(source, scale, far));
                ZoTrafo3d trafo;
                ZoPointList result;
                const ZoPointList points = Points(source);
                ASSERT_TRUE(trafo.CalcByControlPoints(&control, &points, 3, false));
                trafo.Transform(result, points, &control, false);
                // The search for the scale ends at steps of 1e-10, over an extent of some 30; far away a unit in the
                // last place of a coordinate is 1e-9.
                EXPECT_LT(std::hypot(trafo.rmsX, trafo.rmsY, trafo.rmsZ), 1e-8 * std::max(scale, 1.0));
                EXPECT_NEAR(trafo.scale, scale, 1e-9 * std::max(scale, 1.0));
            }
        }
    }
    ZoTrafo3d unit;
    ASSERT_TRUE(Fit(unit, tetrahedron, tetrahedron, true));
    for (int i = 0; i < 9; ++i)
        EXPECT_NEAR(unit.rotation.GetElemZeroIndex(i / 3, i % 3), i % 4 == 0 ? 1.0 : 0.0, 1e-12);
    ASSERT_TRUE(Fit(unit, Moved(kSpatial, 2.0, 0.0), kSpatial, true));
    EXPECT_NEAR(unit.scale, 2.0, 1e-9) << "the fitted scale stays told";
}

TEST(Similarity, PointsWithoutASolutionAreRefused) {
    const Coordinates line{0, 0, 0, 0.1, 0.7, 0.3, 0.25, 1.75, 0.75, 0.7, 4.9, 2.1};
    const std::tuple<const char*, Coordinates, Coordinates> cases[] = {
        {"one place", Coordinates(9, 5.0), kSpatial},
        {"one place of control", kSpatial, Coordinates(9, 5.0)},
        {"line", line, kSpatial},
        {"line of control", kSpatial, line},
        {"line at map coordinates", Moved(line, 1, 5e6), Moved(line, 1.5, 4e6)},
        {"mirrored, as wide in all directions",
         {1, 0, 0, 0, 1, 0, 0, 0, 1, -1, -1, -1},
         {1, 0, 0, 0, 1, 0, 0, 0, -1, -1, -1, 1}},
        {"not a number", {1, 2, 3, 4, std::nan(""), 6, 7, 8, 10}, kSpatial},
        {"infinite", kSpatial, {1, 2, 3, 4, 5, 6, 7, 8, std::numeric_limits<double>::infinity()}},
    };
    for (const auto& [name, source, control] : cases) {
        ZoTrafo3d trafo;
        EXPECT_FALSE(Fit(trafo, control, source)) << name;
        EXPECT_EQ(trafo.GetStatus(), eTrafo3DNoSolution) << name;
    }
}

TEST(Similarity, CommonPointsAreCounted) {
    ZoPointList controls = Points(Moved(kSpatial, 1.0, 0.0));
    const ZoPointList source = Points(kSpatial);
    ZoTrafo3d trafo;
    EXPECT_TRUE(trafo.CalcByControlPoints(&controls, &source, 6, false));
    EXPECT_FALSE(trafo.CalcByControlPoints(&controls, &source, 7, false));
    EXPECT_EQ(trafo.GetStatus(), eTrafo3DTooFewPoints);
    EXPECT_FALSE(trafo.CalcByControlPoints(&controls, nullptr, 0, false));
    EXPECT_FALSE(trafo.CalcByControlPoints(nullptr, &source, -1, false));
    EXPECT_EQ(trafo.GetStatus(), eTrafo3DTooFewPoints) << "none is too few, whatever was asked for";
    // The first control point of an id counts, a source point each time.
    controls.Add(ZoPoint(3, 1e3, 1e3, 1e3, 0));
    ZoPointList twice(source);
    source.CopyTo(&twice);
    ASSERT_TRUE(trafo.CalcByControlPoints(&controls, &twice, 12, false));
    EXPECT_EQ(trafo.GetCommonCount(), 12);
    EXPECT_NEAR(trafo.scale, 1.0, 1e-10);
}

// Long lists in any order go through another kind of lookup than short ones; the outcome must not show it.
TEST(Similarity, OrderOfTheListsDoesNotMatter) {
    constexpr unsigned int kCount = 3000;
    constexpr unsigned int kStride = 1789;  // has no factor in common with the count
    ZoPointList source;
    ZoPointList controls;
    for (unsigned int i = 0; i < kCount; ++i) {
        const unsigned int k = i * kStride % kCount;
        const unsigned int id = k % 3 * 2147483000u + k;  // in three groups far apart
        source.Add(ZoPoint(id, std::cos(k), std::sin(k) * 2, k * 1e-3, 0));
        if (i % 7 != 0) controls.Add(ZoPoint(id, 2 * std::cos(k) + 1, 4 * std::sin(k), 2e-3 * k, 0));
    }
    ZoTrafo3d trafo;
    ASSERT_TRUE(trafo.CalcByControlPoints(&controls, &source, 3, false));
    EXPECT_EQ(trafo.GetCommonCount(), controls.Count());
    EXPECT_NEAR(trafo.scale, 2.0, 1e-9);
    ZoPointList result;
    trafo.Transform(result, source, &controls, true);
    EXPECT_EQ(result.Count(), source.Count());
    EXPECT_LT(std::hypot(trafo.GetRmsX(), trafo.GetRmsY(), trafo.GetRmsZ()), 1e-9);
    ZoIdTable common;
    ZoTrafo3d::GetCommonIds(common, &controls, &source);
    EXPECT_EQ(common.Size(), controls.Count());
}

}  // namespace

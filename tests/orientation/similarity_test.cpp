#include "zorv/orientation/similarity.h"

#include <array>
#include <cmath>
#include <limits>

#include <gtest/gtest.h>

#include "zorv/math/affine_map3d.h"

namespace {

using Coordinates = std::vector<std::array<double, 3>>;

/// Rotations agree with an independent solution in double to this, whatever the size of the coordinates.
constexpr double kRotationTolerance = 1e-9;

ZoPointList Points(const Coordinates& coordinates) {
    ZoPointList list;
    unsigned int id = 0;
    for (const auto& [x, y, z] : coordinates)
        list.Add(ZoPoint(++id, x, y, z, 0));
    return list;
}

const Coordinates& Spatial() {
    static const Coordinates points{{12, 3.5, -2.25},    {-4.75, 18, 1.5},  {7.25, -9.5, 22},
                                    {30.5, 14.25, 6.75}, {-11, -6.5, 9.25}, {19.5, 27, -13.75}};
    return points;
}

Coordinates Scaled(const Coordinates& points, double sx, double sy, double sz) {
    Coordinates scaled;
    for (const auto& [x, y, z] : points)
        scaled.push_back({sx * x, sy * y, sz * z});
    return scaled;
}

/// rotation about the three axes, scale and shift, by the library's other matrix type
Coordinates Moved(const Coordinates& points, double scale, double dx, double dy, double dz) {
    const ZoAffinMap3d map = ZoAffinMap3d::Translate(dx, dy, dz) * ZoAffinMap3d::RotXYZ(0.4, -1.1, 2.5) *
                             ZoAffinMap3d::Scale(scale, scale, scale);
    Coordinates moved;
    for (const auto& [x, y, z] : points) {
        const ZoPoint3d p = map * ZoPoint3d(x, y, z);
        moved.push_back({p.x(), p.y(), p.z()});
    }
    return moved;
}

bool Fit(ZoTrafo3d& trafo, const Coordinates& control, const Coordinates& source, bool unitScale = false) {
    const ZoPointList controls = Points(control);
    const ZoPointList sources = Points(source);
    return trafo.CalcByControlPoints(&controls, &sources, 3, unitScale);
}

/// The largest distance of a transformed source point from its control point.
double LargestResidual(const ZoTrafo3d& trafo, const Coordinates& control, const Coordinates& source) {
    const ZoMatrix m = trafo.GetAsMatrix();
    double largest = 0.0;
    for (std::size_t i = 0; i < source.size(); ++i) {
        auto [x, y, z] = source[i];
        m.PTrans3D(&x, &y, &z);
        largest = std::max(largest, std::hypot(x - control[i][0], y - control[i][1], z - control[i][2]));
    }
    return largest;
}

// The least-squares solution by singular value decomposition, worked out with numpy 1.24: R = U diag(1, 1, det U det V)
// V' of the covariance, scale = trace of the signed singular values over the variance of the source.
TEST(Similarity, AgreesWithTheSolutionBySingularValues) {
    const struct {
        const char* name;
        Coordinates source;
        Coordinates control;
        std::array<double, 9> rotation;
        double scale;
        std::array<double, 3> target;  // centre of the control points
        std::array<double, 3> rms;
        unsigned int worst;
    } kCases[] = {
        {"points in space",
         Spatial(),
         {{497.026, -293.885, 48.981},
          {545.109, -288.056, 77.58},
          {491.444, -360.84, 67.868},
          {514.9, -309.325, -4.092},
          {501.194, -325.213, 110.239},
          {534.564, -248.819, 14.414}},
         {-0.29655658238026683, 0.8959217599235265, 0.33072404439723835, -0.06683153896358861, 0.3259846036677158,
          -0.9430098533797834, -0.95267399400146, -0.30175857612855495, -0.036797049965627396},
         2.5011427085285716,
         {514.0395, -304.35633333333334, 52.498333333333335},
         {0.0426932627174259, 0.03972712861024189, 0.016128030166778846},
         4},
        {"a floor at map coordinates",
         Scaled(Spatial(), 1, 1, 0),
         {{4499999.67, 5400000.258, 300.627},
          {4500013.161, 5400004.627, 309.309},
          {4499992.004, 5399997.332, 306.957},
          {4500002.773, 5400001.964, 284.981},
          {4499998.072, 5399998.956, 319.331},
          {4500013.793, 5400005.618, 289.948}},
         {-0.29716128510104095, 0.8961578627323229, 0.3295394600046144, -0.06593221386654324, 0.32504751787900255,
          -0.9433965519840295, -0.9525482212527375, -0.3020681979019543, -0.03750586626797614},
         0.7499567815958379,
         {4500003.245500001, 5400001.459166667, 301.8588333333333},
         {0.00628369128259595, 0.0034848205694555405, 0.005085627369168094},
         3},
        {"a flat relief against its mirror image",
         {{12, 3.5, -0.225},
          {-4.75, 18, 0.15},
          {7.25, -9.5, 2.2},
          {30.5, 14.25, 0.675},
          {-11, -6.5, 0.925},
          {19.5, 27, -1.375}},
         {{-0.468, 0.145, -15.616},
          {21.841, 7.912, -1.12},
          {-14.281, -1.861, -4.963},
          {4.349, 4.086, -41.704},
          {-3.579, -0.654, 15.615},
          {23.537, 7.774, -33.501}},
         {-0.30249167655503223, 0.9340833754362717, 0.18970248640570841, -0.04606586770790813, 0.18446693761130706,
          -0.9817585674495656, -0.9520381932712806, -0.30571260468271283, -0.012770352026013225},
         1.2483327039254482,
         {5.2331666666666665, 2.9003333333333337, -13.548166666666667},
         {0.39957948503963614, 1.4855844207021087, 0.05571818103759151},
         1},
    };
    for (const auto& known : kCases) {
        SCOPED_TRACE(known.name);
        ZoTrafo3d trafo;
        ASSERT_TRUE(Fit(trafo, known.control, known.source));
        EXPECT_EQ(trafo.GetStatus(), eTrafo3DOk);
        EXPECT_EQ(trafo.GetCommonCount(), 6);
        for (int i = 0; i < 9; ++i)
            EXPECT_NEAR(trafo.rotation.GetElemZeroIndex(i / 3, i % 3), known.rotation[i], kRotationTolerance) << i;
        // The search for the scale ends at steps of 1e-10.
        EXPECT_NEAR(trafo.scale, known.scale, 1e-9);
        for (int i = 0; i < 3; ++i)
            EXPECT_NEAR(trafo.targetOrigin[i + 1], known.target[i], 1e-8);
        ZoPointList result;
        const ZoPointList control = Points(known.control);
        ASSERT_TRUE(trafo.Transform(result, Points(known.source), &control, false));
        // Map coordinates carry a rounding of 1e-9.
        EXPECT_NEAR(trafo.GetRmsX(), known.rms[0], 1e-7);
        EXPECT_NEAR(trafo.GetRmsY(), known.rms[1], 1e-7);
        EXPECT_NEAR(trafo.GetRmsZ(), known.rms[2], 1e-7);
        ASSERT_NE(trafo.GetWorstPoint(), nullptr);
        EXPECT_EQ(trafo.GetWorstPoint()->GetId(), known.worst);
    }
}

TEST(Similarity, ExactSetsAreReproduced) {
    const Coordinates tetrahedron{{0, 0, 0}, {10, 0, 0}, {0, 10, 0}, {0, 0, 10}};
    const Coordinates facade{{0, 0, 0}, {40, 0, 0}, {40, 0, 12}, {0, 0, 12}, {17, 0, 5}};
    const Coordinates triangle{{1, 2, 3}, {11, 2, 4}, {5, 9, 3}};
    for (const Coordinates& source : {tetrahedron, facade, triangle, Spatial()}) {
        for (const double scale : {0.001, 1.0, 1000.0}) {
            for (const double far : {0.0, 5e6}) {
                const Coordinates control = Moved(source, scale, far, far, 100.0);
                ZoTrafo3d trafo;
                ASSERT_TRUE(Fit(trafo, control, source)) << source.size() << ' ' << scale;
                // Both sets in units in the last place of map coordinates, 1e-9, over their extent.
                const double tolerance = far > 0.0 ? 1e-8 : 1e-8 * scale;
                EXPECT_LT(LargestResidual(trafo, control, source), tolerance) << source.size() << ' ' << scale;
                EXPECT_NEAR(trafo.scale, scale, far > 0.0 ? 1e-8 : 1e-9 * std::max(scale, 1.0));
            }
        }
    }
    ZoTrafo3d same;
    ASSERT_TRUE(Fit(same, tetrahedron, tetrahedron));
    EXPECT_NEAR(same.scale, 1.0, 1e-12);
    for (int i = 0; i < 9; ++i)
        EXPECT_NEAR(same.rotation.GetElemZeroIndex(i / 3, i % 3), i % 4 == 0 ? 1.0 : 0.0, 1e-12);
}

TEST(Similarity, RotationIsTheSameWithUnitScaleForSetsOfOneScale) {
    const Coordinates control = Moved(Spatial(), 1.0, 7.0, 8.0, 9.0);
    ZoTrafo3d free;
    ZoTrafo3d unit;
    ASSERT_TRUE(Fit(free, control, Spatial()));
    ASSERT_TRUE(Fit(unit, control, Spatial(), true));
    for (int i = 0; i < 9; ++i)
        EXPECT_NEAR(unit.rotation.GetElemZeroIndex(i / 3, i % 3), free.rotation.GetElemZeroIndex(i / 3, i % 3), 1e-10);
    ASSERT_TRUE(Fit(unit, Moved(Spatial(), 2.0, 0.0, 0.0, 0.0), Spatial(), true));
    EXPECT_NEAR(unit.scale, 2.0, 1e-9) << "the fitted scale stays told";
}

TEST(Similarity, PointsWithoutASolutionAreRefused) {
    constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    Coordinates line;
    Coordinates mapLine;
    for (const double t : {0.0, 1.0, 2.5, 7.0}) {
        line.push_back({t, 2 * t, -t});
        mapLine.push_back({5e6 + 0.1 * t, 4e6 + 0.7 * t, 0.3 * t});
    }
    const struct {
        const char* name;
        Coordinates source;
        Coordinates control;
    } kCases[] = {
        {"one place", {{5, 5, 5}, {5, 5, 5}, {5, 5, 5}}, Spatial()},
        {"one place of control", Spatial(), Scaled(Spatial(), 0, 0, 0)},
        {"line", line, Spatial()},
        {"line of control", Spatial(), Moved(line, 1, 0, 0, 0)},
        {"line at map coordinates", mapLine, Moved(mapLine, 1.5, 0, 0, 0)},
        {"mirrored, as wide in all directions",
         {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}, {-1, -1, -1}},
         {{1, 0, 0}, {0, 1, 0}, {0, 0, -1}, {-1, -1, 1}}},
        {"not a number", {{1, 2, 3}, {4, kNan, 6}, {7, 8, 10}}, Spatial()},
        {"infinite", Spatial(), {{1, 2, 3}, {4, 5, 6}, {7, 8, kInfinity}}},
    };
    for (const auto& known : kCases) {
        ZoTrafo3d trafo;
        EXPECT_FALSE(Fit(trafo, known.control, known.source)) << known.name;
        EXPECT_EQ(trafo.GetStatus(), eTrafo3DNoSolution) << known.name;
    }
}

TEST(Similarity, CommonPointsAreCounted) {
    ZoPointList controls = Points(Moved(Spatial(), 1.0, 0.0, 0.0, 0.0));
    const ZoPointList source = Points(Spatial());
    ZoTrafo3d trafo;
    EXPECT_TRUE(trafo.CalcByControlPoints(&controls, &source, 6, false));
    EXPECT_FALSE(trafo.CalcByControlPoints(&controls, &source, 7, false));
    EXPECT_EQ(trafo.GetStatus(), eTrafo3DTooFewPoints);
    const ZoPointList none;
    for (const ZoPointList* list : {&none, static_cast<const ZoPointList*>(nullptr)}) {
        EXPECT_FALSE(trafo.CalcByControlPoints(list, &source, -1, false));
        EXPECT_EQ(trafo.GetStatus(), eTrafo3DTooFewPoints);
        EXPECT_FALSE(trafo.CalcByControlPoints(&controls, list, 0, false));
        EXPECT_EQ(trafo.GetCommonCount(), 0);
    }
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
        const double t = i * kStride % kCount;
        // Ids in three groups far apart, some missing among the control points.
        const auto id = static_cast<unsigned int>(t) % 3 * 2147483000u + static_cast<unsigned int>(t);
        source.Add(ZoPoint(id, std::cos(t), std::sin(t) * 2, t / kCount, 0));
        if (i % 7 != 0) controls.Add(ZoPoint(id, 2 * std::cos(t) + 1, 4 * std::sin(t), 2 * t / kCount, 0));
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
    EXPECT_EQ(common.Count(), controls.Count());
}

TEST(Similarity, MatrixIsTheFormulaOfTheParameters) {
    ZoTrafo3d trafo;
    EXPECT_EQ(trafo.rotation[1][1], 0.0);
    EXPECT_EQ(trafo.scale, 1.0);
    trafo.rotation.RotZAxis(std::acos(0.0));
    trafo.scale = 2.0;
    trafo.sourceOrigin = ZoVector(1.0, 2.0, 3.0);
    trafo.targetOrigin = ZoVector(10.0, 20.0, 30.0);
    ZoMatrix m(4, 4);
    trafo.GetAsMatrix(m);
    double x = 4.0, y = 2.5, z = 3.0;  // 3 and 0.5 from the origin, turned to -0.5 and 3, doubled
    ASSERT_TRUE(m.PTrans3D(&x, &y, &z));
    EXPECT_NEAR(x, 9.0, 1e-14);
    EXPECT_NEAR(y, 26.0, 1e-14);
    EXPECT_NEAR(z, 30.0, 1e-14);
    const ZoTrafo3d moved(std::move(trafo));
    EXPECT_TRUE(trafo.targetOrigin == moved.targetOrigin) << "moving copies";
    EXPECT_EQ(trafo.rotation[2][1], moved.rotation[2][1]);
}

TEST(Similarity, Helpers) {
    EXPECT_EQ(ZoTrafo3d::CalcScale(ZoVector(1.0, 1.0, 1.0), ZoVector(1.0, 4.0, 5.0), 10.0), 2.0);
    EXPECT_EQ(ZoTrafo3d::CalcScale(ZoVector(1.0, 1.0, 1.0), ZoVector(1.0, 1.0, 1.0), 10.0), 1e-10);
    ZoMatrix frame(4, 4);
    ZoTrafo3d::unvect(ZoVector(1.0, 1.0, 1.0), ZoVector(1.0, 3.0, 1.0), ZoVector(-4.0, 9.0, 1.0), &frame);
    const double expected[9] = {0, -1, 0, 1, 0, 0, 0, 0, 1};  // u = y, v = -x, w = z
    for (int i = 0; i < 9; ++i)
        EXPECT_EQ(frame.GetElemZeroIndex(i / 3, i % 3), expected[i]) << i;
}

}  // namespace

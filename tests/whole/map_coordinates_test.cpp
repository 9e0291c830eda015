// What is computed and stored at map coordinates agrees with the same at the origin. Coordinates of the data are in
// 1/1024 m, so that moving them loses nothing.

#include <cmath>
#include <limits>
#include <random>
#include <sstream>

#include "tests/support/read_block.h"
#include "tests/support/temp_folder.h"
#include <gtest/gtest.h>

#include "zorv/cad/arc.h"
#include "zorv/cad/balanced_line.h"
#include "zorv/cad/rectangle.h"
#include "zorv/cloud/point_cloud.h"
#include "zorv/math/polygon.h"
#include "zorv/orientation/planar_fit.h"
#include "zorv/orientation/random_index.h"
#include "zorv/orientation/similarity.h"
#include "zorv/points/measurement_log.h"
#include "zorv/rectify/plane_fit.h"

namespace {

/// Where the data lie.
struct Place {
    double x, y, z;

    ZoPoint Point(unsigned int id, double dx, double dy, double dz) const { return {id, x + dx, y + dy, z + dz, 0}; }
    ZoPointList Moved(const ZoPointList& list) const {
        ZoPointList moved;
        for (const ZoPoint* p = list.First(); p; p = p->NextConst())
            moved.Add(Point(p->GetId(), p->x, p->y, p->z));
        return moved;
    }
};

constexpr Place kOrigin{0, 0, 0};
constexpr Place kMap{5e5, 6e6, 100};

/// Distance of neighbouring numbers at the northing, 0.9 nm.
constexpr double kStep = 6e6 * std::numeric_limits<double>::epsilon();

/// Results, those that have a place relative to it.
class Numbers {
  public:
    explicit Numbers(const Place& at) : place(at) {}
    template <class... Values>
    void Add(Values... more) {
        (values.push_back(more), ...);
    }
    void Add(const ZoPoint& p) { Add(p.x - place.x, p.y - place.y, p.z - place.z); }
    void Add(const ZoPoint3d& p) { Add(p.x() - place.x, p.y() - place.y, p.z() - place.z); }
    void Add(const ZoVector& v) { Add(v[1], v[2], v[3]); }
    void AddPoints(const ZoPointList& list) {
        for (const ZoPoint* p = list.First(); p; p = p->NextConst())
            Add(*p);
    }

    std::vector<double> values;

  private:
    Place place;
};

double Grid(double value) {
    return std::round(value * 1024.0) / 1024.0;
}

/// Points of a facade, 60 by 30 m, with a relief of 4 m and ids from 1.
ZoPointList Facade(unsigned int count, double relief) {
    std::mt19937 random(count);
    std::uniform_real_distribution<double> share(0.0, 1.0);
    ZoPointList list;
    for (unsigned int id = 1; id <= count; ++id) {
        const double along = 60.0 * share(random), depth = relief * share(random), up = 30.0 * share(random);
        list.Add(ZoPoint(id, Grid(0.8 * along - 0.6 * depth), Grid(0.6 * along + 0.8 * depth), Grid(up), 0));
    }
    return list;
}

/// The same in a system of its own: turned, with noise, half as large.
ZoPointList Measured(const ZoPointList& facade) {
    std::mt19937 random(5);
    std::normal_distribution<double> noise(0.0, 0.004);
    ZoPointList list;
    for (const ZoPoint* p = facade.First(); p; p = p->NextConst())
        list.Add(ZoPoint(p->GetId(), Grid(p->y / 2 + noise(random)), Grid(-p->x / 2 + noise(random)),
                         Grid(p->z / 2 + noise(random)), 0));
    return list;
}

void AddFit(Numbers& out, const ZoTrafo3d& trafo) {
    for (int i = 0; i < 9; ++i)
        out.Add(trafo.rotation.GetElemZeroIndex(i / 3, i % 3));
    out.Add(trafo.scale, trafo.rmsX, trafo.rmsY, trafo.rmsZ);
}

void Similarity(const Place& place, Numbers& out) {
    const ZoPointList facade = Facade(12, 4.0);
    const ZoPointList controls = place.Moved(facade);
    const ZoPointList source = place.Moved(Measured(facade));
    ZoTrafo3d trafo;
    out.Add(trafo.CalcByControlPoints(&controls, &source, 3, false));
    ZoPointList result;
    trafo.Transform(result, source, &controls, true);
    AddFit(out, trafo);
    out.AddPoints(result);
}

void RobustSimilarity(const Place& place, Numbers& out) {
    const ZoPointList facade = Facade(30, 4.0);
    const ZoPointList controls = place.Moved(facade);
    ZoPointList source = Measured(facade);
    for (const unsigned int wrong : {3u, 11u, 20u})
        source.Find(wrong)->y += 2.0;
    ZoGenerateRandomIndex::SetSeed(11);
    ZoTrafo3d trafo;
    ZoPointList result, rejected;
    out.Add(trafo.RobustCalcByControlPointsAndTransform(&result, &rejected, nullptr, controls, source, 0.05, true, 0.0,
                                                        3, false, 0, 0));
    AddFit(out, trafo);
    result.SortById();
    out.AddPoints(result);
    out.Add(rejected.Count());
}

void LocalSystem(const Place& place, Numbers& out) {
    ZoPointList list = place.Moved(Facade(8, 4.0));
    ZoLokalSystemDef def;
    def.Suggest(&list);
    def.scale[0] = {2, 5, 10.0};
    def.scale[1] = {3, 4, 8.0};
    ZoTrafo3d trafo;
    out.Add(trafo.CalcByLocalSystem(def, &list, 0.0, 0.5), trafo.GetScaleCheck(1).difference);
    trafo.InPlaceTransform(&list);
    AddFit(out, trafo);
    for (const ZoPoint* p = list.First(); p; p = p->NextConst())
        out.Add(p->x, p->y, p->z);
}

template <bool (ZoCalcTrafo2D::*kFit)(ZoPointList*)>
void PlanarFit(const Place& place, Numbers& out) {
    const ZoPointList facade = Facade(16, 30.0);
    ZoPointList targets = place.Moved(facade);
    ZoPointList sources = Measured(facade);
    ZoCalcTrafo2D fit(&targets);
    out.Add((fit.*kFit)(&sources));
    fit.CalcResiduals(&sources);
    out.Add(fit.GetResidualX(), fit.GetResidualY(), fit.GetMaxError(), fit.GetScale());
}

/// The planes of a facade and of the same points with the axes exchanged in a circle.
void PlaneFit(const Place& place, Numbers& out) {
    for (int turn = 0; turn < 3; ++turn) {
        ZoPointList list;
        const ZoPointList facade = Facade(40, 0.25);
        for (const ZoPoint* p = facade.First(); p; p = p->NextConst()) {
            const double axes[] = {p->x, p->y, p->z};
            list.Add(place.Point(p->GetId(), axes[turn], axes[(turn + 1) % 3], axes[(turn + 2) % 3]));
        }
        ZoCalcPlane fit;
        out.Add(fit.CalcPlaneFromFilteredPoints(&list, true, false), fit.sigma0, fit.mediumPointDist);
        out.Add(fit.plane.GetNorm());
        out.Add(fit.plane.Dist(place.x, place.y, place.z));
        for (const ZoPoint* p = list.First(); p; p = p->NextConst())
            out.Add(p->dx, p->dy, p->dz);
        out.Add(fit.CalcNormalPlane(&fit.plane, *list.First(), *list.Last()));
        out.Add(fit.plane.GetNorm());
    }
}

void CadArc(const Place& place, Numbers& out) {
    ZoPointList list;
    list.Add(place.Point(1, 7, 0, 0.5));
    list.Add(place.Point(2, 4, 5, 1.5));
    list.Add(place.Point(3, -5, 4, 3));
    const ZoCadArc arc(&list);
    out.Add(arc.status, arc.radius, arc.startAngle, arc.endAngle);
    out.Add(arc.normal);
    out.Add(arc.centerWCS);
}

void CadLine(const Place& place, Numbers& out) {
    ZoPointList list;
    for (int i = 0; i < 9; ++i)
        list.Add(place.Point(1, 5.0 * i, -3.0 * i + (i % 3) * 0.25, i + (i % 2) * 0.125));
    const ZoCadBalancedLine line(&list);
    out.Add(line.valid, line.maxDeviation, line.meanDeviation);
    out.Add(line.start);
    out.Add(line.end);
}

void CadRectangle(const Place& place, Numbers& out) {
    ZoPointList list;
    list.Add(place.Point(1, 8, 6, 0));
    list.Add(place.Point(2, 0, 0, 0.25));
    list.Add(place.Point(3, -3, 4, 5));
    const ZoCadRectangle rectangle(&list, 0.1);
    out.Add(rectangle.status, rectangle.sideA, rectangle.sideB, rectangle.angle);
    out.Add(rectangle.result);
}

void Areas(const Place& place, Numbers& out) {
    const ZoPointList list = place.Moved(Facade(9, 4.0));
    const ZoPolygon polygon(&list, ZOPolygon3d);
    out.Add(polygon.Center());
    out.Add(polygon.Area(true), polygon.Length(true), polygon.Boxvol());
    const ZoRegion region = polygon.GetRegion();
    const ZoPoint center = region.GetCenter();
    out.Add(region.Area(), center.x - place.x, center.y - place.y);
}

ZoPointCloud Cloud(const Place& place, unsigned int count) {
    ZoPointCloud cloud;
    const ZoPointList facade = Facade(count, 0.25);
    for (const ZoPoint* p = facade.First(); p; p = p->NextConst())
        cloud.AddPoint(ZoScanPoint3d(place.x + p->x, place.y + p->y, place.z + p->z, 0));
    return cloud;
}

void Centres(const Place& place, Numbers& out) {
    ZoPointCloud cloud = Cloud(place, 5000);
    out.Add(cloud.center.Point());
    cloud.CalcCenterAndBoundingBox(false);
    out.Add(cloud.center.Point());
    ZoCenterPoint3d half;
    for (std::size_t i = 0; i < 2500; ++i)
        half.Add(cloud.points[i]);
    for (std::size_t i = 0; i < 1250; ++i)
        half.Subtract(cloud.points[i]);
    ZoCenterPoint3d both = half;
    both.Add(cloud.center);
    out.Add(half.Point());
    out.Add(both.Point());
}

void Normals(const Place& place, Numbers& out) {
    ZoPointCloud cloud = Cloud(place, 500);
    out.Add(cloud.CalcEstimatedNormals());
    for (const float part : cloud.points[7].normal)
        out.Add(static_cast<double>(part));
    cloud.EstimateNormals(ZoPoint3d(place.x + 10, place.y - 20, place.z + 3));
    for (const float part : cloud.points[7].normal)
        out.Add(static_cast<double>(part));
}

TEST(MapCoordinates, FitsAndCentresAgreeWithThoseAtTheOrigin) {
    const struct {
        const char* name;
        void (*run)(const Place&, Numbers&);
        double tolerance;  ///< in steps at the northing
    } cases[] = {
        {"similarity", Similarity, 4},
        {"robust similarity", RobustSimilarity, 4},
        {"local system", LocalSystem, 4},
        {"planar Helmert fit", PlanarFit<&ZoCalcTrafo2D::CalcTrafoHelmert>, 4},
        {"planar affine fit", PlanarFit<&ZoCalcTrafo2D::CalcTrafoAffin>, 4},
        {"planar polynomial", PlanarFit<&ZoCalcTrafo2D::CalcTrafoPolynom>, 4},
        {"plane fit", PlaneFit, 4},
        {"arc", CadArc, 4},
        {"balanced line", CadLine, 4},
        {"rectangle", CadRectangle, 4},
        {"polygon and region", Areas, 4},
        {"centre", Centres, 10},
        {"normals", Normals, 4},
    };
    for (const auto& [name, run, tolerance] : cases) {
        SCOPED_TRACE(name);
        Numbers origin(kOrigin), map(kMap);
        run(kOrigin, origin);
        run(kMap, map);
        ASSERT_EQ(map.values.size(), origin.values.size());
        ASSERT_GT(map.values.size(), 3u);
        for (std::size_t i = 0; i < map.values.size(); ++i)
            EXPECT_NEAR(map.values[i], origin.values[i], tolerance * kStep) << i;
    }
}

// A number of a place comes back from each format within the digits that the format has.

constexpr eZoPointRWMask kColumns[] = {eZoRWId, eZoRWX, eZoRWY, eZoRWZ, eZoRWEnd};

double PointFile(double value) {
    const TempFolder folder;
    ZoPointList list;
    list.Add(ZoPoint(1, 0, value, 0, 0));
    list.WriteFile(folder.Name("a.coo"), ZoPointList::Table(kColumns));
    return ZoPointList(folder.Name("a.coo"), ZoPointList::Table(kColumns)).First()->y;
}

double LogFile(double value) {
    const TempFolder folder;
    ZoLogItem item(ZoPoint(1, 0, value, 0, 0), nullptr, eZoMeasureModeNone, 0);
    ZoLogItemList log;
    log.SetFilename(folder.Name("a.mlg"));
    log.WriteItem(&item);
    log.ReadFile(folder.Name("a.mlg"));
    return log.First()->GetPoint().y;
}

template <class Record>
Record TextBack(const Record& record) {
    std::ostringstream text;
    record.Write(text);
    Record read;
    ReadBlock(text.str(), [&](ZoReaderObject* object) { read.Read(object); });
    return read;
}

double PolygonText(double value) {
    ZoPolygon polygon;
    polygon.AddPoint(ZoPoint(1, 0, 1, 0, 0));
    polygon.AddPoint(ZoPoint(2, 1, value, 0, 0));
    polygon.AddPoint(ZoPoint(3, 2, 2, 0, 0));
    return TextBack(polygon).Points.Get(1)->y;
}

double PlaneText(double value) {
    ZoPlane plane;
    plane.C() = 1;
    plane.D() = value;
    return TextBack(plane).D();
}

TEST(MapCoordinates, FormatsBringThemBack) {
    const struct {
        const char* name;
        double (*back)(double);
        double tolerance;  ///< in metres
    } cases[] = {
        {"point file", PointFile, kStep},
        {"measurement log", LogFile, kStep},
        {"plane", PlaneText, kStep},
        {"region", [](double value) { return TextBack(ZoRegion(value, 0, value + 1, 1)).Left(); }, 0},
        {"polygon", PolygonText, 0},
    };
    for (const auto& [name, back, tolerance] : cases) {
        for (const double place : {kOrigin.y, kMap.y}) {
            const double value = place + 1.0 / 3.0;
            EXPECT_NEAR(back(value), value, tolerance) << name;
        }
    }
}

}  // namespace

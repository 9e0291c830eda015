#include "zorv/math/polygon.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <ostream>

#include "zorv/core/archive.h"
#include "zorv/core/debug_output.h"
#include "zorv/core/text_writer.h"
#include "zorv/math/center_point3d.h"
#include "zorv/math/line.h"
#include "zorv/math/point_text.h"

namespace {

/// The columns of a mode; none for an unknown one.
TZoFormatTable<eZoPointRWMask> Columns(ZOPolygonMode mode) {
    static constexpr eZoPointRWMask kKinds[][5] = {
        {eZoRWX, eZoRWY, eZoRWEnd},
        {eZoRWId, eZoRWX, eZoRWY, eZoRWEnd},
        {eZoRWX, eZoRWY, eZoRWZ, eZoRWEnd},
        {eZoRWId, eZoRWX, eZoRWY, eZoRWZ, eZoRWEnd},
    };
    if (mode < ZOPolygon2d || mode > ZOPolygon3dId) return {};
    return TZoFormatTable<eZoPointRWMask>(kKinds[mode]);
}

/// Calls visit for each edge, the closing one from the last to the first point at the end.
template <class Visit>
void ForEachEdge(const ZoPointList& points, const Visit& visit) {
    for (const ZoPoint* point = points.First(); point; point = point->NextConst())
        visit(*point, point->NextConst() ? *point->NextConst() : *points.First());
}

}  // namespace

ZoPolygon::ZoPolygon(const ZoPoint& p1, const ZoPoint& p2, ZOPolygonMode polygonMode) : mode(polygonMode) {
    MakePolygon(p1, p2);
}

ZoPolygon::ZoPolygon(const ZoRegion& region) : ZoPolygon(region.LL, region.UR, ZOPolygon2d) {}

ZoPolygon::ZoPolygon(const ZoPointList* list, ZOPolygonMode polygonMode) : mode(polygonMode) {
    AddPoint(list);
}

bool ZoPolygon::AddPoint(const ZoPoint& point) {
    if (Points.IsEmpty()) {
        Min = point;
        Max = point;
    } else {
        UpdateMinMax(point);
    }
    Points.Add(point);
    return true;
}

bool ZoPolygon::AddPoint(const ZoPointList* list) {
    if (!list) return true;
    // A polygon may be given its own points.
    const ZoPoint* last = list->Last();
    for (const ZoPoint* point = list->First(); point; point = point->NextConst()) {
        AddPoint(*point);
        if (point == last) break;
    }
    return true;
}

void ZoPolygon::MakePolygon(const ZoPoint& p1, const ZoPoint& p2) {
    Min = p1;
    Max = p2;
    UpdateMinMax(p1);
    UpdateMinMax(p2);
    const double corners[][2] = {{Min.x, Min.y}, {Max.x, Min.y}, {Max.x, Max.y}, {Min.x, Max.y}};
    for (const auto& [cornerX, cornerY] : corners)
        Points.Add(ZoPoint(0, cornerX, cornerY, 0.0, 0));
    Points.Renumber(1, nullptr, 1);
}

ZoPoint3d ZoPolygon::Center() const {
    ZoCenterPoint3d center;
    for (const ZoPoint* point = First(); point; point = point->NextConst())
        center.Add(point->x, point->y, point->z, 1);
    return center.Point();
}

double ZoPolygon::Area(bool) const {
    if (!Points.CountMoreThan(2)) return -1.0;
    double sum = 0.0;
    ForEachEdge(Points, [&sum](const ZoPoint& point, const ZoPoint& next) {
        sum += (next.y + point.y) * (next.x - point.x) / 2.0;
    });
    return std::fabs(sum);
}

double ZoPolygon::Length(bool closed) const {
    if (!Points.CountMoreThan(1)) return -1.0;
    double length = 0.0;
    for (const ZoPoint* point = First(); point->NextConst(); point = point->NextConst())
        length += point->Distance(*point->NextConst());
    const ZoPoint& last = *Points.Last();
    if (closed && Points.CountMoreThan(2) && !(last == *First())) length += last.Distance(*First());
    return length;
}

bool ZoPolygon::IsInBox(const ZoPoint& point) const {
    if (mode < ZOPolygon2d || mode > ZOPolygon3dId) return false;
    const bool inPlane = point.x >= Min.x && point.x <= Max.x && point.y >= Min.y && point.y <= Max.y;
    return inPlane && (mode <= ZOPolygon2dId || (point.z >= Min.z && point.z <= Max.z));
}

// Counts the edges that a segment from the point to beyond the right end of the polygon crosses.
bool ZoPolygon::Overlap(const ZoPoint& point) const {
    if (!IsInBox(point)) return false;
    if (mode > ZOPolygon2dId || Points.IsEmpty()) return true;

    const double far = std::fabs(2.0 * (Max.x - Min.x)) + std::fabs(Max.x);
    const ZoLine test(point.x, point.y, 0.0, far, point.y, 0.0);
    int crossed = 0;
    ForEachEdge(Points, [&](const ZoPoint& vertex, const ZoPoint& next) {
        if (ZoIntersect(test, ZoLine(vertex.x, vertex.y, 0.0, next.x, next.y, 0.0))) ++crossed;
    });
    return crossed % 2 != 0;
}

void ZoPolygon::UpdateMinMax(const ZoPoint& point) {
    for (double ZoPoint::*axis : {&ZoPoint::x, &ZoPoint::y, &ZoPoint::z}) {
        Min.*axis = std::min(Min.*axis, point.*axis);
        Max.*axis = std::max(Max.*axis, point.*axis);
    }
}

void ZoPolygon::UpdateMinMax() {
    if (Points.IsEmpty()) return;
    Min = *First();
    Max = *First();
    for (const ZoPoint* point = First(); point; point = point->NextConst())
        UpdateMinMax(*point);
}

int ZoPolygon::Read(ZoReaderObject* object) {
    Points.Destroy();
    ZoPointList read(Columns(mode));
    read.Read(object);
    if (read.IsEmpty()) return 1;
    if (read.Count() == 2) {
        MakePolygon(*read.First(), *read.Last());
    } else {
        AddPoint(&read);
    }
    return 1;
}

std::ostream& ZoPolygon::Write(std::ostream& stream) const {
    constexpr int kPointsOfLine = 8;  // the reader takes lines of limited length only
    const TZoFormatTable<eZoPointRWMask> columns = Columns(mode);
    int points = 0;
    for (const ZoPoint* point = First(); point; point = point->NextConst(), ++points) {
        if (points > 0 && points % kPointsOfLine == 0) stream << Zoendl;
        zorv::detail::WriteExactly(stream, *point, columns);
    }
    return stream;
}

void ZoPolygon::ReadV9(CZipWrapper* archive) {
    archive->ReadValue(mode);
    Min.ReadV9(archive);
    Max.ReadV9(archive);
    Points.ReadV9(archive);
}

void ZoPolygon::WriteV9(CZipWrapper* archive) const {
    archive->WriteValue(mode);
    Min.WriteV9(archive);
    Max.WriteV9(archive);
    Points.WriteV9(archive);
}

void ZoPolygon::DbgPrintf(const char* text, bool withPoints) const {
    dbgprintf("%s: %d points, %f %f %f - %f %f %f\n", text ? text : "", Count(), Min.x, Min.y, Min.z, Max.x, Max.y,
              Max.z);
    if (withPoints) Points.DbgPrintf(text);
}

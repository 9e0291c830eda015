// Normals of a whole cloud: of one plane, or towards a viewpoint.

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "zorv/cloud/point_cloud.h"
#include "zorv/core/profiler.h"
#include "zorv/points/point_list.h"
#include "zorv/rectify/plane_fit.h"

namespace {

/// Steps between the points of a sample in a cloud; that many points alone are too few.
constexpr std::size_t kSampleSteps = 35;

}  // namespace

bool ZoPointCloud::CalcEstimatedNormals() {
    const ZoProfiler section(L"ZoPointCloud::CalcEstimatedNormals");
    if (points.size() <= kSampleSteps) return false;
    const std::size_t step = points.size() / kSampleSteps;
    ZoPointList sample;
    unsigned int number = 0;
    for (std::size_t i = step - 1; i < points.size(); i += step)
        sample.Add(ZoPoint(++number, points[i].x(), points[i].y(), points[i].z(), 0));

    ZoCalcPlane fit;
    if (!fit.CalcPlaneFromFilteredPoints(&sample, false, true)) return false;
    const ZoPlane& plane = fit.GetPlane();
    const float normal[3] = {static_cast<float>(plane.A()), static_cast<float>(plane.B()),
                             static_cast<float>(plane.C())};
    for (ZoScanPoint3d& point : points)
        std::copy(std::begin(normal), std::end(normal), point.normal);
    return true;
}

void ZoPointCloud::EstimateNormals(const ZoPoint3d& from) {
    const ZoProfiler section(L"EstimateNormals");
    viewpoint = from;
    for (ZoScanPoint3d& point : points) {
        const double x = from.x() - point.x();
        const double y = from.y() - point.y();
        const double z = from.z() - point.z();
        const double length = std::sqrt(x * x + y * y + z * z);
        point.normal[0] = static_cast<float>(x / length);
        point.normal[1] = static_cast<float>(y / length);
        point.normal[2] = static_cast<float>(z / length);
    }
}

void ZoPointCloud::CountNormals(std::uint64_t& withNormal, std::uint64_t& total) const {
    total = points.size();
    withNormal = static_cast<std::uint64_t>(
        std::count_if(points.begin(), points.end(), [](const ZoScanPoint3d& point) { return point.HasNormVector(); }));
}

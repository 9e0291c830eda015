#include "interior.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace {

/// A photo whose image coordinates have their origin in the image centre.
ZoPhoto PhotoOf(unsigned int id, double width, double height, double pixelSize) {
    ZoPhoto photo(id);
    photo.SetPixelRegion(ZoRegion(0, 0, width, height));
    photo.preTrafo.Set(-width / 2 * pixelSize, pixelSize, -height / 2 * pixelSize, 0.0);
    return photo;
}

/// The reach of the inversion where the camera tells none.
double DefaultRadius(const ZoCamera& camera) {
    return camera.IsTs15() ? 8.0 : 30.0;
}

}  // namespace

Interior::Interior(const ZoCamera& source) : camera(source) {
    if (source.k1 > 0 && source.k2 > 0 && source.k3 > 0) {
        ZoPhoto photo = PhotoOf(1, source.k1, source.k2, source.k3);
        photo.SetCamera(source, false);
        TakeFrom(photo);
        return;
    }
    radius = camera.rmax > 0 ? camera.rmax : DefaultRadius(camera);
    principalPoint = Raw({0, 0}).value_or(Place{});
}

Interior::Interior(const ZorvLibAuto::Camera& calibration, const std::string& name, double longSide)
    : assumedLongSide(longSide) {
    const auto width = static_cast<double>(calibration.width);
    const auto height = static_cast<double>(calibration.height);
    ZoPhoto photo = PhotoOf(1, width, height, longSide / std::max(width, height));
    photo.SetCamera(&calibration);
    photo.GetCamera().SetName(string2wstring(name));
    TakeFrom(photo);
}

void Interior::TakeFrom(ZoPhoto& photo) {
    camera = photo.GetCamera();
    halfWidth = camera.k1 * camera.k3 / 2;
    halfHeight = camera.k2 * camera.k3 / 2;
    radius = std::hypot(halfWidth, halfHeight);
    principalPoint = Raw({0, 0}).value_or(Place{});
}

bool Interior::Holds(Place raw) const {
    if (!HasImage()) return std::hypot(raw.x, raw.y) <= radius;
    return std::fabs(raw.x) <= halfWidth && std::fabs(raw.y) <= halfHeight;
}

std::optional<Place> Interior::Corrected(Place raw) const {
    return camera.Adjust(&raw.x, &raw.y) ? std::optional(raw) : std::nullopt;
}

std::optional<Place> Interior::Raw(Place corrected) const {
    return camera.InvAdjust(&corrected.x, &corrected.y) ? std::optional(corrected) : std::nullopt;
}

std::optional<Place> Interior::Shift(Place raw) const {
    const std::optional<Place> corrected = Corrected(raw);
    if (!corrected) return std::nullopt;
    return Place{corrected->x - (raw.x - principalPoint.x), corrected->y - (raw.y - principalPoint.y)};
}

double Interior::InversionLimit() const {
    constexpr double kSteps = 780;
    constexpr double kIterationLimit = 1e-6;
    return camera.GetCamPair() ? kIterationLimit : 2 * radius / kSteps;
}

InversionReport CheckInversion(const Interior& interior) {
    constexpr int kHalf = 150;  // places from the centre to the edge
    InversionReport report;
    std::vector<double> errors;
    for (int i = -kHalf; i <= kHalf; ++i) {
        for (int j = -kHalf; j <= kHalf; ++j) {
            const Place raw{interior.HalfWidth() * i / kHalf, interior.HalfHeight() * j / kHalf};
            if (!interior.Holds(raw)) continue;
            ++report.places;
            const std::optional<Place> corrected = interior.Corrected(raw);
            const std::optional<Place> back = corrected ? interior.Raw(*corrected) : std::nullopt;
            const double error = back ? std::hypot(back->x - raw.x, back->y - raw.y) : NAN;
            if (!std::isfinite(error)) {
                ++report.lost;
                continue;
            }
            errors.push_back(error);
            if (error > report.worst) {
                report.worst = error;
                report.worstAt = raw;
            }
        }
    }
    if (!errors.empty()) {
        const auto usual = errors.begin() + static_cast<std::ptrdiff_t>(errors.size() - 1) * 99 / 100;
        std::ranges::nth_element(errors, usual);
        report.usual = *usual;
    }
    return report;
}

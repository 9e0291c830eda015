#include "camera_sheet.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace {

const char* const kShift = "#b10027";
const char* const kCentre = "#008055";
const char* const kAlongX = "#1f5fbf";
const char* const kAlongY = "#008055";
const char* const kDiagonal = "#e08a00";
const char* const kOutline = "#000";
constexpr int kWidth = 860;
constexpr int kHeight = 640;

/// A length that reads well: millimetres, or micrometres where they are too long.
struct LengthUnit {
    double perMm;
    const char* name;
};

LengthUnit UnitFor(double longest) {
    return longest < 1 ? LengthUnit{1000, "µm"} : LengthUnit{1, "mm"};
}

std::string Number(double value) {
    return StringPrintf("%.8g", value);
}

/// Three digits, or the whole part when that has more; what is too small to matter is told so.
std::string Rounded(double value) {
    constexpr double kLeast = 0.001;
    if (value < kLeast) return value > 0 ? "below 0.001" : "0";
    return StringPrintf(value < 100 ? "%.3g" : "%.0f", value);
}

std::string Location(Place place) {
    return StringPrintf("x %.3f, y %.3f mm", place.x, place.y);
}

const char* Generation(const ZoCamera& camera) {
    if (camera.IsOldZorv()) return "classic camera";
    if (camera.IsTs15()) return "camera of an instrument";
    if (camera.IsPinholeCamera()) return "ideal pinhole";
    return camera.GetCamPair() ? "digital camera" : "without a formula";
}

struct Entry {
    const char* name;
    double ZoCamera::*member;
    const char* unit;
};

constexpr Entry kGeometry[] = {
    {"camera constant C", &ZoCamera::c, "mm"},
    {"second constant CV", &ZoCamera::cViva, "mm"},
    {"principal point XH", &ZoCamera::xh, "mm"},
    {"principal point YH", &ZoCamera::yh, "mm"},
    {"second principal point XHV", &ZoCamera::xhViva, "mm"},
    {"second principal point YHV", &ZoCamera::yhViva, "mm"},
    {"radius without distortion R0", &ZoCamera::r0, "mm"},
    {"useful radius RM", &ZoCamera::rmax, "mm"},
    {"image width K1", &ZoCamera::k1, "pixels"},
    {"image height K2", &ZoCamera::k2, "pixels"},
    {"pixel size K3", &ZoCamera::k3, "mm"},
    {"column of the principal point K4", &ZoCamera::k4, "pixels"},
    {"row of the principal point K5", &ZoCamera::k5, "pixels"},
};

// Coefficients of library models act on the plane at unit distance and have no unit.
constexpr Entry kCoefficients[] = {
    {"radial A1", &ZoCamera::a1, "1/mm²"},
    {"radial A2", &ZoCamera::a2, "1/mm⁴"},
    {"radial A3", &ZoCamera::a3, "1/mm⁶"},
    {"radial A4", &ZoCamera::a4, ""},
    {"radial A5", &ZoCamera::a5, ""},
    {"radial A6", &ZoCamera::a6, ""},
    {"tangential C1", &ZoCamera::c1, ""},
    {"tangential C2", &ZoCamera::c2, ""},
    {"affine B1", &ZoCamera::b1, ""},
    {"affine B2", &ZoCamera::b2, ""},
    {"field of view Omega", &ZoCamera::omega, "rad"},
    {"thin prism SX1", &ZoCamera::sx1, ""},
    {"thin prism SX2", &ZoCamera::sx2, ""},
};

}  // namespace

CameraSheet::CameraSheet(const Interior& subject)
    : interior(subject), camera(subject.Camera()), inversion(CheckInversion(subject)) {
    constexpr int kHalf = 8;  // arrows from the centre along the longer side
    fieldStep = std::max(interior.HalfWidth(), interior.HalfHeight()) / kHalf;
    for (int i = -kHalf; i <= kHalf; ++i) {
        for (int j = -kHalf; j <= kHalf; ++j) {
            const Place place{i * fieldStep, j * fieldStep};
            const std::optional<Place> shift = interior.Shift(place);
            if (!interior.Holds(place) || !shift) continue;
            field.push_back(place);
            largestShift = std::max(largestShift, std::hypot(shift->x, shift->y));
        }
    }
}

CameraSheet::Rows CameraSheet::Parameters() const {
    Rows rows{{"Parameter", "Value", "Unit"}};
    const auto add = [&](const Entry& entry, const char* unit) {
        if (camera.*entry.member != 0.0) rows.push_back({entry.name, Number(camera.*entry.member), unit});
    };
    for (const Entry& entry : kGeometry)
        add(entry, entry.unit);
    const bool inMm = camera.IsOldZorv() || camera.IsTs15();
    for (const Entry& entry : kCoefficients)
        add(entry, inMm || entry.member == &ZoCamera::omega ? entry.unit : "");
    return rows;
}

CameraSheet::Rows CameraSheet::Figures() const {
    Rows rows{{"Figure", "Value", "Where"}};
    const double pixel = interior.PixelSize();
    const auto length = [&](double mm) {
        const LengthUnit unit = UnitFor(mm);
        std::string text = Rounded(mm * unit.perMm) + " " + unit.name;
        if (pixel > 0) text += " (" + Rounded(mm / pixel) + " pixels)";
        return text;
    };
    const double angle = std::atan(interior.Radius() / camera.c) * 180 / std::numbers::pi;
    rows.push_back({"principal point", Location(interior.PrincipalPoint()), "from the image centre"});
    rows.push_back({"measured area",
                    interior.HasImage()
                        ? StringPrintf("%.2f by %.2f mm", 2 * interior.HalfWidth(), 2 * interior.HalfHeight())
                        : StringPrintf("circle of %.2f mm radius", interior.Radius()),
                    interior.HasImage() ? "the image" : "the useful radius"});
    rows.push_back({"half angle of a lens without distortion", StringPrintf("%.1f degrees", angle),
                    StringPrintf("at %.2f mm", interior.Radius())});
    rows.push_back({"largest distortion", length(largestShift), "of the places of the vector field"});
    rows.push_back({"error of the inversion", length(inversion.usual), "kept by 99 of 100 places"});
    rows.push_back({"largest error of the inversion", length(inversion.worst),
                    inversion.worst > 0 ? Location(inversion.worstAt) : "everywhere"});
    rows.push_back({"places without inverse", StringPrintf("%d of %d", inversion.lost, inversion.places),
                    inversion.lost > 0 ? "corrected beyond the reach of the table" : ""});
    return rows;
}

std::vector<Place> CameraSheet::CurveAlong(Place direction) const {
    constexpr int kRadii = 200;
    const Place centre = interior.PrincipalPoint();
    const double length = std::hypot(direction.x, direction.y);
    std::vector<Place> curve;
    for (int i = 0; i <= kRadii; ++i) {
        const double r = interior.Radius() * i / kRadii;
        const Place raw{centre.x + r * direction.x / length, centre.y + r * direction.y / length};
        const std::optional<Place> corrected = interior.Corrected(raw);
        if (interior.Holds(raw) && corrected) curve.push_back({r, std::hypot(corrected->x, corrected->y) - r});
    }
    return curve;
}

std::string CameraSheet::Curve() const {
    struct Direction {
        Place place;
        const char* colour;
    };
    const double x = interior.HalfWidth();
    const double y = interior.HalfHeight();
    // Those drawn first reach farthest.
    const Direction directions[] = {{{x, y}, kDiagonal},  {{-x, y}, kDiagonal}, {{-x, -y}, kDiagonal},
                                    {{x, -y}, kDiagonal}, {{0, 1}, kAlongY},    {{0, -1}, kAlongY},
                                    {{1, 0}, kAlongX},    {{-1, 0}, kAlongX}};
    std::vector<std::vector<Place>> curves;
    std::vector<Place> all{{0, 0}, {interior.Radius(), 0}};
    for (const Direction& direction : directions) {
        const std::vector<Place>& curve = curves.emplace_back(CurveAlong(direction.place));
        all.insert(all.end(), curve.begin(), curve.end());
    }
    Extent extent = ExtentOf(all);
    const LengthUnit unit = UnitFor(std::max(-extent.low.y, extent.high.y));
    // A lens without distortion has straight lines in the middle of the picture.
    constexpr double kLeast = 0.01;  // of the height, in the unit
    const double widen = std::max(0.0, kLeast - (extent.high.y - extent.low.y) * unit.perMm) / 2;
    Drawing drawing(kWidth, kHeight * 2 / 3);
    drawing.ShowStretched({0, extent.low.y * unit.perMm - widen},
                          {interior.Radius(), extent.high.y * unit.perMm + widen});
    drawing.Grid();
    drawing.Line({0, 0}, {interior.Radius(), 0}, kOutline);
    for (std::size_t i = 0; i < curves.size(); ++i) {
        for (Place& place : curves[i])
            place.y *= unit.perMm;
        drawing.Polyline(curves[i], directions[i].colour);
    }
    drawing.AxisNames("distance from the principal point in the raw image [mm]",
                      std::string("corrected less raw distance [") + unit.name + "]");
    drawing.Legend({{"right and left", kAlongX}, {"up and down", kAlongY}, {"towards the corners", kDiagonal}});
    drawing.Title("Radial distortion");
    return drawing.Svg();
}

void CameraSheet::DrawOutline(Drawing& drawing) const {
    std::vector<Place> outline;
    if (interior.HasImage()) {
        const double x = interior.HalfWidth();
        const double y = interior.HalfHeight();
        outline = {{-x, -y}, {x, -y}, {x, y}, {-x, y}, {-x, -y}};
    } else {
        constexpr int kParts = 120;
        for (int i = 0; i <= kParts; ++i) {
            const double angle = 2 * std::numbers::pi * i / kParts;
            outline.push_back({interior.Radius() * std::cos(angle), interior.Radius() * std::sin(angle)});
        }
    }
    drawing.Polyline(outline, kOutline, 1);
}

std::string CameraSheet::Field() const {
    Drawing drawing(kWidth, kHeight);
    // Room for the arrows at the edge, which are at most a step long.
    const double x = interior.HalfWidth() + fieldStep;
    const double y = interior.HalfHeight() + fieldStep;
    drawing.ShowTrue({-x, -y}, {x, y});
    drawing.Grid();
    DrawOutline(drawing);
    const double enlarge = largestShift > 0 ? fieldStep / largestShift : 0;
    for (const Place& place : field) {
        const Place shift = *interior.Shift(place);
        drawing.Dot(place, kOutline, 1);
        drawing.Arrow(place, {place.x + enlarge * shift.x, place.y + enlarge * shift.y}, kShift);
    }
    drawing.Dot(interior.PrincipalPoint(), kCentre, 4);
    drawing.AxisNames("x in the raw image [mm]", "y in the raw image [mm]");
    drawing.Legend({{"from the raw to the corrected place", kShift}, {"principal point", kCentre}});
    drawing.Title("Distortion over the measured area");
    if (largestShift > 0) {
        const double length = RoundBelow(largestShift);
        const LengthUnit unit = UnitFor(length);
        drawing.ScaleArrow(enlarge * length, StringPrintf("%g ", length * unit.perMm) + unit.name, kShift);
    }
    return drawing.Svg();
}

bool CameraSheet::Write(const std::wstring& folder, const std::string& name) const {
    const std::string title =
        "Camera " + std::to_string(camera.GetId()) + " " + wstring2string(camera.GetName(), false);
    ReportPage page(folder);
    page.Heading(title);
    std::string kind = std::string("Mode ") + std::to_string(camera.mode) + ", " + Generation(camera);
    if (const ZoCamPair* pair = camera.GetCamPair()) {
        const std::uint32_t model = pair->first.model;
        kind += ", model " + ZorvLibAuto::Camera::GetModelName(model) + " (" +
                ZorvLibAuto::Camera::GetModelParameters(model) + ")";
    }
    page.Paragraph(kind + ".");
    if (interior.AssumedLongSide() > 0)
        page.Paragraph(
            StringPrintf("The calibration tells no size of a pixel: the longer side of the image counts as %g mm.",
                         interior.AssumedLongSide()));
    page.Section("Parameters");
    page.Table(Parameters());
    if (!interior.HasDistortion()) {
        page.Paragraph(camera.IsPinholeCamera() ? "Raw and corrected image coordinates are the same."
                                                : "No image coordinates can be corrected with this camera.");
    } else {
        page.Section("Distortion");
        page.Table(Figures());
        page.Picture(string2wstring(name + "_curve.svg"), Curve(), L"Radial distortion", kWidth, kHeight * 2 / 3);
        page.Picture(string2wstring(name + "_field.svg"), Field(), L"Distortion over the image", kWidth, kHeight);
    }
    return page.Write(string2wstring(name + ".html"), title);
}

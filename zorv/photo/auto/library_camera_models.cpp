#include "zorv/photo/auto/library_camera_models.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <numbers>

#include "zorv/photo/auto/newton_inversion.h"

namespace zorv::detail {

namespace {

using ZorvLibAuto::Camera;
using Coordinates = Camera::Coordinates;

constexpr double kEpsilon = std::numeric_limits<double>::epsilon();

double SquaredRadius(double x, double y) {
    return x * x + y * y;
}

// Distortions D: a point p of the ideal plane is seen at p + D(p). Each is made from the parameters behind the
// principal point.

struct SimpleRadial {
    explicit SimpleRadial(const double* p) : k(p[0]) {}
    void Distort(double x, double y, double& dx, double& dy) const {
        const double q = k * SquaredRadius(x, y);
        dx = q * x;
        dy = q * y;
    }
    double k;
};

struct Radial {
    explicit Radial(const double* p) : k1(p[0]), k2(p[1]) {}
    void Distort(double x, double y, double& dx, double& dy) const {
        const double r2 = SquaredRadius(x, y);
        const double q = k1 * r2 + k2 * (r2 * r2);
        dx = q * x;
        dy = q * y;
    }
    double k1, k2;
};

/// Decentring: the tangential part of D, about the radial factor q.
struct Tangential {
    void Distort(double x, double y, double r2, double q, double& dx, double& dy) const {
        dx = 2.0 * p1 * x * y + q * x + p2 * (r2 + 2.0 * x * x);
        dy = 2.0 * p2 * x * y + q * y + p1 * (r2 + 2.0 * y * y);
    }
    double p1, p2;
};

struct RadialTangential {
    explicit RadialTangential(const double* p) : k1(p[0]), k2(p[1]), tangential{p[2], p[3]} {}
    void Distort(double x, double y, double& dx, double& dy) const {
        const double r2 = SquaredRadius(x, y);
        tangential.Distort(x, y, r2, k1 * r2 + k2 * (r2 * r2), dx, dy);
    }
    double k1, k2;
    Tangential tangential;
};

struct CubicRadialTangential {
    explicit CubicRadialTangential(const double* p) : k1(p[0]), k2(p[1]), k3(p[4]), tangential{p[2], p[3]} {}
    void Distort(double x, double y, double& dx, double& dy) const {
        const double r2 = SquaredRadius(x, y);
        const double r4 = r2 * r2;
        tangential.Distort(x, y, r2, 1.0 + k1 * r2 + k2 * r4 + k3 * (r4 * r2), dx, dy);
        dx -= x;
        dy -= y;
    }
    double k1, k2, k3;
    Tangential tangential;
};

struct RationalRadialTangential {
    explicit RationalRadialTangential(const double* p)
        : k1(p[0]), k2(p[1]), k3(p[4]), k4(p[5]), k5(p[6]), k6(p[7]), tangential{p[2], p[3]} {}
    void Distort(double x, double y, double& dx, double& dy) const {
        const double r2 = SquaredRadius(x, y);
        const double r4 = r2 * r2;
        const double r6 = r4 * r2;
        const double q = (1.0 + k1 * r2 + k2 * r4 + k3 * r6) / (1.0 + k4 * r2 + k5 * r4 + k6 * r6);
        tangential.Distort(x, y, r2, q, dx, dy);
        dx -= x;
        dy -= y;
    }
    double k1, k2, k3, k4, k5, k6;
    Tangential tangential;
};

/// Equidistant projection with a polynomial in the angle theta to the axis.
template <int coefficients>
struct EquidistantRadial {
    explicit EquidistantRadial(const double* p) { std::copy_n(p, coefficients, k); }
    void Distort(double x, double y, double& dx, double& dy) const {
        const double r = std::sqrt(SquaredRadius(x, y));
        const double theta = std::atan(r);
        const double theta2 = theta * theta;
        double power = theta2;
        double q = 1.0 + k[0] * power;
        for (int i = 1; i < coefficients; ++i) {
            power *= theta2;
            q += k[i] * power;
        }
        const double t = theta * q;
        dx = r > kEpsilon ? t * x / r - x : 0.0;
        dy = r > kEpsilon ? t * y / r - y : 0.0;
    }
    /// The radius at which r = tan(theta) is seen, and the derivative of that by r.
    void DistortRadius(double r, double theta, double& distorted, double& slope) const {
        const double theta2 = theta * theta;
        double power = theta2;
        double q = 1.0 + k[0] * power;
        double dq = 1.0 + 3.0 * k[0] * power;
        for (int i = 1; i < coefficients; ++i) {
            power *= theta2;
            q += k[i] * power;
            dq += (2 * i + 3) * k[i] * power;
        }
        distorted = theta * q;
        slope = dq / (1.0 + r * r);
    }
    double k[coefficients];
};

struct RadialThinPrism {
    explicit RadialThinPrism(const double* p)
        : k1(p[0]), k2(p[1]), k3(p[4]), k4(p[5]), sx1(p[6]), sy1(p[7]), tangential{p[2], p[3]} {}
    void Distort(double x, double y, double& dx, double& dy) const {
        const double r2 = SquaredRadius(x, y);
        const double r4 = r2 * r2;
        const double q = k1 * r2 + k2 * r4 + k3 * (r4 * r2) + k4 * (r4 * r4);
        tangential.Distort(x, y, r2, q, dx, dy);
        dx += sx1 * r2;
        dy += sy1 * r2;
    }
    double k1, k2, k3, k4, sx1, sy1;
    Tangential tangential;
};

// Models. A model with Distort is inverted by Start, the Newton iteration and Finish, another one by ToPlane.

/// From the plane to pixels without distortion, with one focal length or two.
template <int focalLengths>
class Pinhole {
  public:
    explicit Pinhole(const double* p)
        : fx(p[0]), fy(p[focalLengths - 1]), cx(p[focalLengths]), cy(p[focalLengths + 1]) {}
    void ToPixel(double& x, double& y) const {
        x = fx * x + cx;
        y = fy * y + cy;
    }
    void ToPlane(double& u, double& v) const {
        u = (u - cx) / fx;
        v = (v - cy) / fy;
    }

  private:
    double fx, fy, cx, cy;
};

template <int focalLengths, class Distortion>
class DistortedPinhole : public Distortion {
  public:
    explicit DistortedPinhole(const double* p) : Distortion(p + focalLengths + 2), pinhole(p) {}
    void ToPixel(double& x, double& y) const {
        double dx, dy;
        this->Distort(x, y, dx, dy);
        x += dx;
        y += dy;
        pinhole.ToPixel(x, y);
    }
    void Start(double& u, double& v) const { pinhole.ToPlane(u, v); }
    void Finish(double&, double&) const {}

  private:
    Pinhole<focalLengths> pinhole;
};

/// Equidistant projection, then the distortion.
class ThinPrismFisheye : public DistortedPinhole<2, RadialThinPrism> {
  public:
    using DistortedPinhole::DistortedPinhole;
    void ToPixel(double& x, double& y) const {
        const double r = std::sqrt(SquaredRadius(x, y));
        if (r > kEpsilon) {
            const double theta = std::atan(r);
            x = x * theta / r;
            y = y * theta / r;
        }
        DistortedPinhole::ToPixel(x, y);
    }
    void Finish(double& x, double& y) const {
        const double r = std::sqrt(SquaredRadius(x, y));
        const double scale = std::cos(r) * r;
        if (!(scale > kEpsilon)) return;
        const double factor = std::sin(r) / scale;
        x *= factor;
        y *= factor;
    }
};

/// The field of view model (Devernay and Faugeras 2001, Straight lines have to be straight): the radius in the image
/// grows with the angle, whatever the lens. Series stand in where omega or the radius is small.
class FieldOfView {
  public:
    explicit FieldOfView(const double* p)
        : pinhole(p), omega(p[4]), isNarrow(omega * omega < kSmall), t(isNarrow ? 0.0 : std::tan(omega / 2.0)) {}

    void ToPixel(double& x, double& y) const {
        const double r2 = SquaredRadius(x, y);
        double s;
        if (isNarrow) {
            s = NarrowScale(r2);
        } else if (r2 < kSmall) {
            s = (4.0 * r2 * t * t - 3.0) * (-2.0 * t) / (3.0 * omega);
        } else {
            const double r = std::sqrt(r2);
            s = std::atan(2.0 * r * t) / (r * omega);
        }
        x *= s;
        y *= s;
        pinhole.ToPixel(x, y);
    }

    void ToPlane(double& u, double& v) const {
        double x = u, y = v;
        pinhole.ToPlane(x, y);
        const double r2 = SquaredRadius(x, y);
        double s;
        if (isNarrow) {
            s = NarrowScale(r2);
        } else if (r2 < kSmall) {
            s = (omega * omega * r2 + 3.0) * omega / (6.0 * t);
        } else {
            // Half a circle is all that the model can see: beyond it the tangent would come back from the other side.
            constexpr double kBelowRightAngle = std::numbers::pi / 2.0;
            const double r = std::sqrt(r2);
            double angle = r * omega;
            if (std::fabs(angle) > kBelowRightAngle) angle = std::copysign(kBelowRightAngle, angle);
            s = std::tan(angle) / (2.0 * r * t);
        }
        u = x * s;
        v = y * s;
    }

  private:
    static constexpr double kSmall = 0.0001;

    double NarrowScale(double r2) const { return omega * omega * r2 / 3.0 - omega * omega / 12.0 + 1.0; }

    Pinhole<2> pinhole;
    double omega;
    bool isNarrow;
    double t;
};

/// The classic camera on pixels. Its distortion acts in mm about the principal point, with y upwards.
class Classic {
  public:
    explicit Classic(const double* p)
        : f(p[0]),
          x0(p[1]),
          y0(p[2]),
          xh(p[3]),
          yh(p[4]),
          m11(p[5]),
          m22(p[6]),
          m13(p[7]),
          m23(p[8]),
          a1(p[9]),
          a2(p[10]),
          r0Pow2(p[11] * p[11]),
          r0Pow4(r0Pow2 * r0Pow2) {}

    void Distort(double x, double y, double& dx, double& dy) const {
        const double r2 = SquaredRadius(x, y);
        const double dr = a2 * (r2 * r2 - r0Pow4) + a1 * (r2 - r0Pow2);
        dx = dr * x;
        dy = dr * y;
    }
    void ToPixel(double& x, double& y) const {
        const double mmX = m11 * (f * x + x0) + m13;
        const double mmY = -(m22 * (f * y + y0) + m23);
        double dx, dy;
        Distort(mmX, mmY, dx, dy);
        x = (mmX + dx + xh - m13) / m11;
        y = (-(mmY + dy + yh) - m23) / m22;
    }
    void Start(double& u, double& v) const {
        u = m11 * u + m13 - xh;
        v = -(m22 * v + m23) - yh;
    }
    void Finish(double& x, double& y) const {
        x = ((x - m13) / m11 - x0) / f;
        y = ((-y - m23) / m22 - y0) / f;
    }

  private:
    double f, x0, y0, xh, yh, m11, m22, m13, m23, a1, a2, r0Pow2, r0Pow4;
};

template <class Model>
void PlaneToPixel(const double* parameters, std::span<Coordinates> points) {
    const Model model(parameters);
    for (auto& [x, y] : points)
        model.ToPixel(x, y);
}

template <int lanes, class Model>
void Undistort(const Model& model, Coordinates* points) {
    double x[lanes], y[lanes];
    for (int i = 0; i < lanes; ++i) {
        x[i] = points[i][0];
        y[i] = points[i][1];
        model.Start(x[i], y[i]);
    }
    if constexpr (requires(double value) { model.DistortRadius(value, value, value, value); })
        InvertByRadialNewton(model, x, y);
    else
        InvertByNewton(model, x, y);
    for (int i = 0; i < lanes; ++i) {
        model.Finish(x[i], y[i]);
        points[i] = {x[i], y[i]};
    }
}

template <class Model>
void PixelToPlane(const double* parameters, std::span<Coordinates> points) {
    const Model model(parameters);
    if constexpr (requires(double value) { model.Distort(value, value, value, value); }) {
        constexpr int kLanes = 8;
        std::size_t done = 0;
        for (; points.size() - done >= kLanes; done += kLanes)
            Undistort<kLanes>(model, &points[done]);
        for (; done < points.size(); ++done)
            Undistort<1>(model, &points[done]);
    } else {
        for (auto& [u, v] : points)
            model.ToPlane(u, v);
    }
}

template <class Model>
constexpr LibraryModel MakeModel(std::uint32_t number, const char* name, const char* parameterNames,
                                 std::size_t parameterCount, std::size_t focalLengths) {
    return {number,           name,         parameterNames,      parameterCount,
            focalLengths - 1, focalLengths, PixelToPlane<Model>, PlaneToPixel<Model>};
}

constexpr LibraryModel With(LibraryModel model, LibraryModel::Preset first, LibraryModel::Preset second = {}) {
    model.presets[0] = first;
    model.presets[1] = second;
    return model;
}

constexpr LibraryModel kModels[] = {
    MakeModel<Pinhole<1>>(Camera::eCamModelSimplePinhole, "SimplePinhole", "f, cx, cy", 3, 1),
    MakeModel<Pinhole<2>>(Camera::eCamModelPinhole, "Pinhole", "fx, fy, cx, cy", 4, 2),
    MakeModel<DistortedPinhole<1, SimpleRadial>>(Camera::eCamModelPinholeSimpleRadial, "Pinhole_Simple_Radial",
                                                 "f, cx, cy, k", 4, 1),
    MakeModel<DistortedPinhole<1, Radial>>(Camera::eCamModelPinholeRadial, "Pinhole_Radial", "f, cx, cy, k1, k2", 5, 1),
    MakeModel<DistortedPinhole<2, RadialTangential>>(
        Camera::eCamModelPinholeRadialTangential, "Pinhole_Radial_Tangential", "fx, fy, cx, cy, k1, k2, p1, p2", 8, 2),
    MakeModel<DistortedPinhole<2, EquidistantRadial<4>>>(Camera::eCamModelFisheye, "Fisheye",
                                                         "fx, fy, cx, cy, k1, k2, k3, k4", 8, 2),
    MakeModel<DistortedPinhole<2, RationalRadialTangential>>(Camera::eCamModelPinholeOpenCVRadialTangential,
                                                             "Pinhole_OpenCV_Radial_Tangential",
                                                             "fx, fy, cx, cy, k1, k2, p1, p2, k3, k4, k5, k6", 12, 2),
    With(MakeModel<FieldOfView>(Camera::eCamModelPinholeFOV, "Pinhole_FOV", "fx, fy, cx, cy, omega", 5, 2), {4, 0.01}),
    MakeModel<DistortedPinhole<1, EquidistantRadial<1>>>(Camera::eCamModelFisheyeSimpleRadial, "Fisheye_Simple_Radial",
                                                         "f, cx, cy, k", 4, 1),
    MakeModel<DistortedPinhole<1, EquidistantRadial<2>>>(Camera::eCamModelFisheyeRadial, "Fisheye_Radial",
                                                         "f, cx, cy, k1, k2", 5, 1),
    MakeModel<ThinPrismFisheye>(Camera::eCamModelFisheyeThinPrism, "Fisheye_ThinPrism",
                                "fx, fy, cx, cy, k1, k2, p1, p2, k3, k4, sx1, sy1", 12, 2),
    With(MakeModel<Classic>(Camera::eCamModelZorv, "Zorv", "f, x0 y0, xh, yh, a1, a2, a3, a4  R1, R2, R0, ", 12, 1),
         {5, 1.0}, {6, 1.0}),
    With(MakeModel<Classic>(Camera::eCamModelZorvViva, "ZorvViva",
                            "f, x0 y0, xh, yh, a1, a2, a3, a4  R1, R2, R0, cV, X0V, Y0V", 15, 1),
         {5, 1.0}, {6, 1.0}),
    MakeModel<DistortedPinhole<2, CubicRadialTangential>>(Camera::eCamModelPinholeBLKRadialTangential,
                                                          "Pinhole_BLK_Radial_Tangential",
                                                          "fx, fy, cx, cy, k1, k2, p1, p2, k3", 9, 2),
};

constexpr std::size_t kNumbers = 29;
constexpr auto kModelByNumber = [] {
    std::array<const LibraryModel*, kNumbers> byNumber{};
    for (const LibraryModel& model : kModels)
        byNumber[model.number] = &model;
    return byNumber;
}();

}  // namespace

std::span<const LibraryModel> LibraryModels() {
    return kModels;
}

const LibraryModel* FindLibraryModel(std::uint32_t number) {
    const std::uint32_t low = number & 0xFFFF;
    return low < kNumbers ? kModelByNumber[low] : nullptr;
}

}  // namespace zorv::detail

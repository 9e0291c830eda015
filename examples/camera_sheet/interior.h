#pragma once

#include <optional>
#include <string>

#include "drawing.h"
#include <zorv/zorv.h>

/// A camera with all that maps its image: the pair of a digital one, the area that can be measured in.
class Interior {
  public:
    /// A camera of a camera file.
    explicit Interior(const ZoCamera& source);
    /// A calibration in pixels. It tells no size of a pixel; the longer side of the image counts as `longSide` mm.
    Interior(const ZorvLibAuto::Camera& calibration, const std::string& name, double longSide);

    const ZoCamera& Camera() const { return camera; }
    /// Whether the camera tells the size of its image. The measured area is then the image, else the circle of the
    /// useful radius about the origin.
    bool HasImage() const { return halfWidth > 0; }
    /// 0 for a camera that tells the size of a pixel, else the assumed length of the image's longer side in mm.
    double AssumedLongSide() const { return assumedLongSide; }
    double Radius() const { return radius; }  ///< mm
    double HalfWidth() const { return HasImage() ? halfWidth : radius; }
    double HalfHeight() const { return HasImage() ? halfHeight : radius; }
    double PixelSize() const { return HasImage() ? camera.k3 : 0; }  ///< mm; 0 when unknown
    /// Whether raw image coordinates are within the measured area.
    bool Holds(Place raw) const;

    /// Whether there is anything to correct, and a way to do so.
    bool HasDistortion() const { return !camera.IsPinholeCamera() && Corrected({0, 0}).has_value(); }
    std::optional<Place> Corrected(Place raw) const;
    std::optional<Place> Raw(Place corrected) const;
    /// What the inversion must keep to, in mm: modes 0 and 1 have a table of 780 steps to a side, which answers to a
    /// fraction of a step, library models an iteration.
    double InversionLimit() const;
    /// The raw place whose corrected coordinates are 0.
    Place PrincipalPoint() const { return principalPoint; }
    /// What is taken off a raw place, the principal point aside.
    std::optional<Place> Shift(Place raw) const;

  private:
    void TakeFrom(ZoPhoto& photo);

    ZoCamera camera;
    double halfWidth = 0;
    double halfHeight = 0;
    double radius = 0;
    double assumedLongSide = 0;
    Place principalPoint;
};

/// How well InvAdjust undoes Adjust over the measured area.
struct InversionReport {
    int places = 0;
    int lost = 0;      ///< places whose corrected ones have no inverse, since they lie beyond the table
    double usual = 0;  ///< mm, what 99 of 100 places keep to
    double worst = 0;  ///< mm
    Place worstAt;
};
InversionReport CheckInversion(const Interior& interior);

#pragma once

#include <string>
#include <vector>

#include "interior.h"
#include "report_page.h"

/// The page of one camera: parameters, distortion as curve and as vector field, error of the inversion.
class CameraSheet {
  public:
    explicit CameraSheet(const Interior& subject);

    const InversionReport& Inversion() const { return inversion; }
    /// mm; 0 without distortion
    double LargestShift() const { return largestShift; }
    /// Writes the page, its pictures named after it.
    bool Write(const std::wstring& folder, const std::string& name) const;

  private:
    using Rows = std::vector<std::vector<std::string>>;

    Rows Parameters() const;
    Rows Figures() const;
    /// The radial distortion over the distance from the principal point, as far as the measured area goes.
    std::vector<Place> CurveAlong(Place direction) const;
    std::string Curve() const;
    std::string Field() const;
    void DrawOutline(Drawing& drawing) const;

    const Interior& interior;
    const ZoCamera& camera;
    InversionReport inversion;
    double largestShift = 0;
    std::vector<Place> field;  ///< places of the vector field
    double fieldStep = 0;
};

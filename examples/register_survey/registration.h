#pragma once

#include <string>
#include <vector>

#include "second_campaign.h"
#include <zorv/zorv.h>

/// The two ways to bring the second campaign onto the first, side by side.
class Registration {
  public:
    Registration(const ZoPointList& firstCampaign, const SecondCampaign& secondCampaign);

    /// Runs both; false when either finds no transformation.
    bool Run();

    const ZoTrafo3d& Direct() const { return direct; }
    const ZoTrafo3d& Robust() const { return robust; }
    /// The second campaign in the system of the first: by the direct fit, and by the robust one, blunders aside.
    const ZoPointList& DirectPoints() const { return directPoints; }
    const ZoPointList& Accepted() const { return accepted; }
    const ZoPointList& Rejected() const { return rejected; }
    bool FoundAllBlunders() const;
    /// How far a rotation is from the true one, in mgon.
    double RotationError(const ZoTrafo3d& trafo) const;

    /// Plans with the residuals as arrows, enlarged.
    std::string DirectPicture() const;
    std::string RobustPicture() const;
    /// Head, then a row for each common point: residuals of both ways in mm.
    std::vector<std::vector<std::string>> ResidualTable() const;

  private:
    std::string Picture(const ZoPointList& points, const char* title) const;

    const ZoPointList& first;
    const SecondCampaign& second;
    ZoTrafo3d direct;
    ZoTrafo3d robust;
    ZoPointList directPoints;
    ZoPointList accepted;
    ZoPointList rejected;
};

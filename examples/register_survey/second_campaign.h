#pragma once

#include <set>

#include <zorv/zorv.h>

/// A second survey of the same object, made from the first by a known motion, since no two real ones with known truth
/// are at hand: another instrument system (turned, tilted, shifted, in a slightly other unit), noise on every
/// coordinate, and blunders as they happen: points moved by decimetres and two pairs of points with exchanged numbers.
/// A few points are missing, a few are new. The same input makes the same campaign.
struct SecondCampaign {
    explicit SecondCampaign(const ZoPointList& first);

    ZoPointList points;
    std::set<unsigned int> blunders;  ///< the numbers of the wrong points
    /// The motion back: second system to first.
    ZoMatrix rotation{3, 3};
    double scale = 1.0;
    double noise = 0.003;  ///< standard deviation of a coordinate, in metres
};

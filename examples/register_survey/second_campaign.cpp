#include "second_campaign.h"

#include <random>
#include <utility>
#include <vector>

namespace {

constexpr double kTurn = 0.58;          // radians about z
constexpr double kTilt = 0.011;         // radians about x and y
constexpr double kScale = 1.00012;      // second to first
constexpr int kMissingEvery = 12;       // points of the first campaign that the second did not see
constexpr int kMovedEvery = 7;          // points that moved
constexpr double kSmallestMove = 0.15;  // metres
constexpr double kLargestMove = 1.5;
constexpr int kNewPoints = 2;

}  // namespace

SecondCampaign::SecondCampaign(const ZoPointList& first) : scale(kScale) {
    rotation.MakeRotMatrix(kTilt, -kTilt, kTurn);
    ZoMatrix back(rotation);
    back.Invert();
    const ZoPoint centre = ZoCalcGravitycenter(first);
    const ZoVector shift(5000.0, 3000.0, 100.0);

    std::mt19937 random(7);
    std::normal_distribution<double> error(0.0, noise);
    std::uniform_real_distribution<double> move(kSmallestMove, kLargestMove);
    std::vector<ZoPoint*> good;
    int place = 0;
    for (const ZoPoint* p = first.First(); p; p = p->NextConst(), ++place) {
        if (place % kMissingEvery == kMissingEvery - 1) continue;
        const ZoVector seen = back * ZoVector(p->x - centre.x, p->y - centre.y, p->z - centre.z) / scale + shift;
        ZoPoint measured(p->GetId(), seen[1] + error(random), seen[2] + error(random), seen[3] + error(random), 0);
        measured.SetName(p->GetName());
        const bool moved = place % kMovedEvery == 3;
        if (moved) {
            measured.x += move(random);
            measured.z -= move(random);
            blunders.insert(p->GetId());
        }
        ZoPoint* const added = points.Add(measured);
        if (!moved) good.push_back(added);
    }
    // Mistaken numbers: neighbours in the field book lie far enough apart to show.
    for (const std::size_t pair : {good.size() / 3, good.size() * 2 / 3}) {
        if (pair + 1 >= good.size()) continue;
        ZoPoint* const a = good[pair];
        ZoPoint* const b = good[pair + 1];
        if (a->Distance(b) < kSmallestMove) continue;
        const unsigned int id = a->GetId();
        a->SetId(b->GetId());
        b->SetId(id);
        blunders.insert({a->GetId(), b->GetId()});
    }
    for (int i = 1; i <= kNewPoints; ++i)
        points.Add(ZoPoint(first.GetFreeId(0) + static_cast<unsigned int>(i), shift[1] + i, shift[2], shift[3], 0));
}

#include "zorv/orientation/partner_finder.h"

#include <algorithm>
#include <random>

#include <gtest/gtest.h>

namespace {

/// Ids from 0 to `largest`, some of them several times; in order up to the place `sorted`.
std::vector<unsigned int> Ids(std::mt19937& random, unsigned int largest, std::size_t count, std::size_t sorted) {
    std::vector<unsigned int> ids(count);
    for (unsigned int& id : ids)
        id = static_cast<unsigned int>(random()) % (largest + 1);
    std::sort(ids.begin(), ids.begin() + static_cast<std::ptrdiff_t>(std::min(sorted, count)));
    return ids;
}

TEST(PartnerFinder, AnswersAsASearchOfTheListDoes) {
    std::mt19937 random(3);
    for (int round = 0; round < 600; ++round) {
        ZoPointList list;
        for (const unsigned int id : Ids(random, 25, round % 20, round % 3 == 0 ? random() % 20 : 20))
            list.Add(ZoPoint(id, list.Count(), -list.Count(), 0, 0));
        zorv::detail::PartnerFinder finder(&list);
        ZoPointList asked;
        for (const unsigned int id : Ids(random, 27, 100, round % 2 == 0 ? random() % 100 : 100))
            asked.Add(ZoPoint(id, 0, 0, 0, 0));
        for (const ZoPoint* point = asked.First(); point; point = point->NextConst()) {
            const ZoPoint* partner = list.Find(point->GetId());
            const auto found = finder.Find(*point);
            ASSERT_EQ(found.has_value(), partner != nullptr) << round << " " << point->GetId();
            ASSERT_TRUE(!partner || (found->x == partner->x && found->y == partner->y)) << round;
        }
    }
    EXPECT_FALSE(zorv::detail::PartnerFinder(nullptr).Find(ZoPoint()));
}

}  // namespace

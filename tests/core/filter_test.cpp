#include "zorv/core/filter.h"

#include <memory>
#include <string>

#include <gtest/gtest.h>

#include "zorv/core/object.h"

namespace {

std::string asked;
int living = 0;

/// A leaf that tells when it is asked and when it goes.
class Leaf : public ZoFilter {
  public:
    Leaf(char letter, unsigned int answer) : name(letter), result(answer) { ++living; }
    ~Leaf() override { --living; }
    unsigned int Test(const ZoObject*) const override {
        asked += name;
        return result;
    }

  private:
    char name;
    unsigned int result;
};

TEST(Filter, AsksTheRightOneOnlyWhenItMatters) {
    const auto test = [](const ZoFilter& filter) {
        asked.clear();
        const unsigned int result = filter.Test(nullptr);
        return std::to_string(result) + asked;
    };
    for (const unsigned int left : {0u, 8u}) {
        for (const unsigned int right : {0u, 8u}) {
            const std::string either = left ? "1l" : right ? "1lr" : "0lr";
            const std::string both = !left ? "0l" : right ? "1lr" : "0lr";
            EXPECT_EQ(test(ZoOrFilter(new Leaf('l', left), new Leaf('r', right))), either);
            EXPECT_EQ(test(ZoBinaryFilter(new Leaf('l', left), new Leaf('r', right))), either);
            EXPECT_EQ(test(ZoAndFilter(new Leaf('l', left), new Leaf('r', right))), both);
        }
    }
}

TEST(Filter, ATreeGoesWithItsRoot) {
    std::unique_ptr<ZoFilter> root(
        new ZoAndFilter(new ZoNotFilter(new Leaf('a', 0)), new ZoOrFilter(new ZoFalseFilter, new Leaf('b', 2))));
    EXPECT_EQ(root->Test(nullptr), 1u);
    EXPECT_EQ(living, 2);
    root.reset();
    EXPECT_EQ(living, 0);
}

TEST(Filter, AFunctionAnswersItself) {
    const ZoObject seven(7);
    EXPECT_EQ(ZoTestFilter([](const ZoObject* object) { return object->GetId(); }).Test(&seven), 7u);
    EXPECT_EQ(ZoNotFilter(new ZoTrueFilter).Test(&seven), 0u);
    EXPECT_EQ(ZoNotFilter(new ZoTestFilter(nullptr)).Test(&seven), 1u);
    EXPECT_EQ(ZoAndFilter(nullptr, nullptr).Test(&seven), 0u);
}

}  // namespace

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
    struct {
        unsigned int left, right, either, both;
        const char* askedByOr;
        const char* askedByAnd;
    } const rows[] = {
        {0, 0, 0, 0, "lr", "l"},
        {0, 8, 1, 0, "lr", "l"},
        {8, 0, 1, 0, "l", "lr"},
        {8, 8, 1, 1, "l", "lr"},
    };
    for (const auto& row : rows) {
        const ZoObject object(1);
        asked.clear();
        EXPECT_EQ(ZoOrFilter(new Leaf('l', row.left), new Leaf('r', row.right)).Test(&object), row.either);
        EXPECT_EQ(asked, row.askedByOr);
        asked.clear();
        EXPECT_EQ(ZoAndFilter(new Leaf('l', row.left), new Leaf('r', row.right)).Test(&object), row.both);
        EXPECT_EQ(asked, row.askedByAnd);
        EXPECT_EQ(ZoBinaryFilter(new Leaf('l', row.left), new Leaf('r', row.right)).Test(&object), row.either);
    }
    EXPECT_EQ(living, 0);
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
    const ZoTestFilter hasId([](const ZoObject* object) { return object->GetId(); });
    const ZoObject seven(7);
    EXPECT_EQ(hasId.Test(&seven), 7u);
    EXPECT_EQ(ZoTestFilter(nullptr).Test(&seven), 0u);
    EXPECT_EQ(ZoNotFilter(new ZoTrueFilter).Test(&seven), 0u);
    EXPECT_EQ(ZoAndFilter(nullptr, nullptr).Test(&seven), 0u);
    EXPECT_EQ(ZoNotFilter(nullptr).Test(&seven), 1u);
}

}  // namespace

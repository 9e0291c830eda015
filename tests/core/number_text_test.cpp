#include "zorv/core/number_text.h"

#include <cmath>
#include <limits>

#include <gtest/gtest.h>

namespace {

TEST(NumberText, GroupsThreeDigits) {
    EXPECT_EQ(zoitoa10(0ULL), "0");
    EXPECT_EQ(zoitoa10(999ULL), "999");
    EXPECT_EQ(zoitoa10(1234567ULL), "1,234,567");
    EXPECT_EQ(wzoitoa10(18446744073709551615ULL), L"18,446,744,073,709,551,615");
}

TEST(NumberText, JoinsIntegerPartAndFraction) {
    EXPECT_EQ(zoitoa10(1234.5, 2), "1,234.50");
    EXPECT_EQ(zoitoa10(-123456.0, 0), "-123,456");
    EXPECT_EQ(zoitoa10(999.999, 2), "1,000.00");
    EXPECT_EQ(zoitoa10(-0.05, 1), "-0.1");
    EXPECT_EQ(zoitoa10(1.5, -3), "2");
    EXPECT_EQ(wzoitoa10(1e6, 1), L"1,000,000.0");
    EXPECT_EQ(zoitoa10(-std::numeric_limits<double>::infinity(), 2), "-inf");
    EXPECT_EQ(zoitoa10(std::numeric_limits<double>::max(), 20).size(), 309u + 102u + 21u);
}

TEST(NumberText, RoundsToAStep) {
    struct {
        double value, step;
        int mode;
        double expected;
    } const rows[] = {
        {2.5, 1, 0, 3},   {-2.5, 1, 0, -3},  {2.49, 1, 0, 2}, {7, 5, 0, 5},   {7.5, 5, 0, 10},
        {2.5, 1, -1, 2},  {-2.5, 1, -1, -3}, {-2, 1, -1, -2}, {2.5, 1, 1, 3}, {2.0, 1, 1, 3},
        {-2.0, 1, 1, -3}, {7, 0, 0, 7},      {7, 0, 1, 7},    {0, 5, 0, 0},   {0, 5, 1, 0},
    };
    for (const auto& [value, step, mode, expected] : rows)
        EXPECT_EQ(RoundValue(value, step, mode), expected) << value << " " << step << " " << mode;
    EXPECT_TRUE(std::isnan(RoundValue(std::nan(""), 1, 0)));
}

}  // namespace

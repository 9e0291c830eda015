#include <algorithm>
#include <cstdlib>
#include <limits>
#include <string>

#include <gtest/gtest.h>
#include <time.h>

#include "zorv/core/stopwatch.h"
#include "zorv/core/time_text.h"

namespace {

TEST(Time, TextIsLocalTime) {
    ::setenv("TZ", "XYZ-2", 1);  // two hours east, never any other
    ::tzset();
    // 2001-09-09 01:46:40 UTC is the moment 1 000 000 000.
    EXPECT_EQ(GetLocalTimeString(1000000000), "2001-09-09  03:46:40");
    EXPECT_EQ(GetLocalTimeStringForFilename(1000000000), "2001-09-09__03_46_40");
    EXPECT_EQ(GetLocalTimeStringForFilename(-1), "1970-01-01__01_59_59");
    ::unsetenv("TZ");
    ::tzset();
    std::string now = GetLocalTimeString();
    std::replace_if(
        now.begin(), now.end(), [](char c) { return c >= '0' && c <= '9'; }, '0');
    EXPECT_EQ(now, "0000-00-00  00:00:00");
}

TEST(Time, WhatIsNoTimeIsANumber) {
    EXPECT_EQ(GetLocalTimeString(999), "999");
    EXPECT_EQ(GetLocalTimeString(-5), "-5");
    EXPECT_EQ(GetLocalTimeString(std::numeric_limits<long long>::max()), "9223372036854775807");
}

TEST(Time, DurationsSplit) {
    const ZoHourMinSec split(3725.5);
    EXPECT_TRUE(split.hours == 1 && split.minutes == 2 && split.seconds == 5.5);
    EXPECT_EQ(split.ValueHMS(), "01:02:5.5");
    EXPECT_EQ(ZoHourMinSec(360000 + 59).ValueHMS(), "100:00:59.0");
    EXPECT_EQ(ZoHourMinSec(std::numeric_limits<double>::infinity()).hours, std::numeric_limits<std::int32_t>::max());
}

TEST(Time, StopwatchCountsAcrossTheEndOfTheWeek) {
    ZoDifftime watch;
    EXPECT_TRUE(watch.IsRunning() && watch.IsValid());
    EXPECT_GE(watch.CurrentValue(), 0.0);
    EXPECT_TRUE(watch.IsRunning());
    watch.Stop();
    EXPECT_FALSE(watch.IsRunning());
    EXPECT_GE(watch.stopClock, watch.startClock);

    *watch.startTime = {6, 23, 59, 58, 750};  // Saturday
    *watch.stopTime = {0, 1, 0, 1, 250};      // Sunday
    EXPECT_DOUBLE_EQ(watch.Value(), 3602.5);
    ZoDifftime copy;
    copy = watch;
    watch.SetValid(false);
    EXPECT_EQ(watch.ValueHMS(), "");
    EXPECT_EQ(copy.ValueHMS(), "01:00:2.5");
    *watch.startTime = {1, 8, 0, 0, 0};
    *watch.stopTime = {3, 9, 30, 0, 500};
    int hours = 0, minutes = 0;
    double seconds = 0;
    watch.Value(hours, minutes, seconds);
    EXPECT_TRUE(hours == 49 && minutes == 30 && seconds == 0.5);
}

}  // namespace

#include "zorv/cloud/histogram.h"

#include <algorithm>
#include <cmath>

#include <gtest/gtest.h>

namespace {

using Values = std::vector<double>;
using Peaks = std::vector<int>;

Peaks Find(const Values& values) {
    Peaks peaks{-7};
    ZorvMath::FindHistogramPeaks(values, peaks);
    EXPECT_EQ(peaks.front(), -7) << "what is there stays";
    return {peaks.begin() + 1, peaks.end()};
}

TEST(Histogram, PeaksStandOutByAQuarterOfTheRange) {
    struct Case {
        const char* name;
        Values values;
        Peaks peaks;
    };
    const Case cases[] = {
        {"nothing", {}, {}},
        {"two values", {0, 9}, {}},
        {"flat", {3, 3, 3, 3}, {}},
        {"a rise alone", {0, 1, 2, 3}, {}},
        {"a middle", {0, 10, 0}, {1}},
        {"the end", {0, 0, 10}, {2}},
        {"the beginning", {10, 0, 2, 0}, {0}},
        {"both ends", {10, 0, 10}, {0, 2}},
        {"a deep valley", {0, 10, 7.4, 10, 0}, {1, 3}},
        {"a valley of just a quarter", {0, 10, 7.5, 10, 0}, {1}},
        {"the higher of two", {0, 8, 7, 10, 0}, {3}},
        {"a bump too low", {0, 10, 0, 2.5, 0}, {1}},
        {"a bump high enough", {0, 10, 0, 2.6, 0}, {1, 3}},
        {"the first of a plateau", {0, 10, 10, 10, 0}, {1}},
        {"a flat beginning", {5, 5, 0, 10, 0}, {0, 3}},
        {"negative values", {-10, -1, -9, -2, -10}, {1, 3}},
        {"a small rise first", {0, 1, 10, 1, 0}, {2}},
        {"a step on the way down", {0, 10, 5, 6, 0, 3, 0}, {1, 5}},
    };
    for (const Case& each : cases) {
        SCOPED_TRACE(each.name);
        EXPECT_EQ(Find(each.values), each.peaks);
    }
}

TEST(Histogram, CircularValuesGoOnBehindTheirEnd) {
    const auto find = [](const Values& values) {
        Peaks peaks;
        ZorvMath::FindHistogramPeaksCircular(values, peaks);
        return peaks;
    };
    EXPECT_EQ(find({}), Peaks{});
    // A crest over the seam: the plain form takes both of its sides, the circular one drops what lies behind the end.
    const Values seam = {10, 7, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 8, 9};
    EXPECT_EQ(Find(seam), (Peaks{0, 19}));
    EXPECT_EQ(find(seam), (Peaks{0}));
    const Values end = {0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 5, 2, 10};
    EXPECT_EQ(find(end), (Peaks{17, 19}));
}

/// Rows from the highest down, without the ground at their ends: '#' values, '-' zero line, '^' peaks.
std::string Picture(const ValArray2DXY<unsigned char>& image) {
    std::string text;
    for (int y = image.height - 1; y >= 0; --y) {
        for (int x = 0; x < image.width; ++x) {
            const unsigned char pixel = image.data[static_cast<std::size_t>(y * image.width + x)];
            text += pixel == 0 ? '#' : pixel == 128 ? '-' : pixel == 160 ? '^' : pixel == 255 ? '.' : '?';
        }
        text.resize(text.find_last_not_of('.') + 1);
        text += '\n';
    }
    return text;
}

TEST(Histogram, PlotShowsValuesPeaksAndZero) {
    ValArray2DXY<unsigned char> image(3, 3);
    ZorvMath::PlotHistogram(image, {0, 2, 1}, {1, 99, -6}, 1.0);
    EXPECT_EQ(image.width, 13);
    EXPECT_EQ(Picture(image), "\n\n\n\n......#\n.......#\n--..-#..-\n......^\n......^\n......^\n......^\n......^\n");
    ZorvMath::PlotHistogram(image, {-1, 1.5}, {}, 2.0);
    EXPECT_EQ(Picture(image), "\n\n\n\n......#\n\n\n-.-.-.-.-.-\n\n.....#\n\n\n\n\n\n");
    ZorvMath::PlotHistogram(image, {0, 1}, {}, INFINITY);
    EXPECT_TRUE(image.width == 0 && image.data.empty());
}

TEST(Histogram, ArraysAreFilledAndCopiedWhole) {
    // Large enough for several threads.
    ValArray2DXY<unsigned int> numbers(1001, 333), copy(1001, 333);
    numbers.Fill(7);
    numbers(1000, 332) = 9;
    copy = numbers;
    EXPECT_EQ(std::count(copy.data.begin(), copy.data.end(), 7), 1001 * 333 - 1);
    EXPECT_EQ(copy.At(1000, 332), 9u);
    ValArray2DXY<unsigned char> bytes(1001, 333);
    bytes.Fill(200);
    EXPECT_EQ(std::count(bytes.data.begin(), bytes.data.end(), 200), 1001 * 333);
}

}  // namespace

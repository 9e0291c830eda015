#include "zorv/core/array.h"

#include <algorithm>
#include <vector>

#include <gtest/gtest.h>

namespace {

/// Lets a test see the parts that are for derived classes.
struct Array : TZoArray<unsigned int> {
    using TZoArray<unsigned int>::TZoArray;
    using TZoArray<unsigned int>::Reallocate;
    using TZoArray<unsigned int>::Swap;

    Array& Append(const std::vector<unsigned int>& values) {
        for (unsigned int value : values)
            Add(value);
        return *this;
    }
    std::vector<unsigned int> Values() const {
        std::vector<unsigned int> values;
        for (int i = 0; i < capacity; ++i) {
            EXPECT_EQ(items[i] != nullptr, i < count);
            if (i < count) values.push_back(*items[i]);
        }
        return values;
    }
};

using Values = std::vector<unsigned int>;

TEST(Array, GrowsByDoublingAndKeepsElementsInPlace) {
    Array array(1);
    array.Add(5);
    unsigned int* const first = &array[0];
    array.Append({6, 7});
    EXPECT_EQ(array.capacity, 4);
    EXPECT_EQ(&array[0], first);
    array.Insert(array[2], 0);
    array.Add(array[1]);
    EXPECT_EQ(array.capacity, 8);
    EXPECT_EQ(array.Values(), (Values{7, 5, 6, 7, 5}));
    array.Remove(1);
    array.Remove(3);
    array.Remove(3);
    EXPECT_EQ(array.Values(), (Values{7, 6, 7}));
    array.Reallocate(2);
    array.Swap(0, 1);
    EXPECT_EQ(array.Values(), (Values{6, 7}));
    EXPECT_EQ(Array(0).capacity, 1);
}

TEST(Array, ClearGoesBackToTheUsualCapacityAndAssignmentTakesTheOther) {
    Array array(1000);
    array.Append({1, 2, 3});
    Array other(2);
    other.Add(9);
    EXPECT_NE(other, array);
    other = array;
    other = *&other;
    EXPECT_EQ(other.capacity, 1000);
    EXPECT_EQ(other, array);
    array.Clear();
    EXPECT_EQ(array.capacity, 256);
    EXPECT_TRUE(array.IsEmpty());
    other = array;
    EXPECT_EQ(other.Values(), Values{});
}

TEST(Array, Searches) {
    Array array;
    array.Append({4, 2, 4, 1});
    EXPECT_EQ(array.Search(4), 0);
    EXPECT_EQ(array.Search(4, 1), 2);
    EXPECT_EQ(array.Search(4, 1, 2), -1);
    EXPECT_EQ(array.Search(9), -1);

    Array up;
    Array down;
    for (unsigned int i = 0; i < 20; ++i) {
        up.Add(2 * i);
        down.Insert(2 * i, 0);
    }
    for (unsigned int value = 0; value < 42; ++value) {
        const bool there = value % 2 == 0 && value < 40;
        EXPECT_EQ(up.BinSearchUp(value), there ? static_cast<int>(value / 2) : -1);
        EXPECT_EQ(down.BinSearchDown(value), there ? 19 - static_cast<int>(value / 2) : -1);
    }
    EXPECT_EQ(Array().BinSearchUp(1), -1);
}

TEST(Array, SortsAllShapesOfInput) {
    unsigned int state = 12345;
    const auto next = [&state] { return state = state * 1664525u + 1013904223u; };
    for (unsigned int size : {0u, 1u, 2u, 3u, 8u, 9u, 10u, 17u, 100u, 3000u}) {
        for (int shape = 0; shape < 6; ++shape) {
            Values values;
            for (unsigned int i = 0; i < size; ++i) {
                const unsigned int shapes[] = {i, size - i, 7, next() >> 8, next() >> 30, std::min(i, size - i)};
                values.push_back(shapes[shape]);
            }
            Array array;
            array.Append(values);
            array.Sort();
            std::sort(values.begin(), values.end());
            EXPECT_EQ(array.Values(), values) << "size " << size << ", shape " << shape;
        }
    }
}

}  // namespace

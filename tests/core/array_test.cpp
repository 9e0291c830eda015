#include "zorv/core/array.h"

#include <algorithm>
#include <vector>

#include <gtest/gtest.h>

namespace {

using Values = std::vector<unsigned int>;

struct Array : TZoArray<unsigned int> {
    explicit Array(int tableSize, const Values& values = {}) : TZoArray<unsigned int>(tableSize) {
        for (unsigned int value : values)
            Add(value);
    }
    /// The elements; checks that the rest of the table is null.
    Values Elements() const {
        Values values;
        for (int i = 0; i < capacity; ++i) {
            EXPECT_EQ(items[i] != nullptr, i < count);
            if (i < count) values.push_back(*items[i]);
        }
        return values;
    }
};

TEST(Array, GrowsByDoublingAndNeverMovesAnElement) {
    Array array(0, {5});
    unsigned int* const first = &array[0];
    for (unsigned int value : {6u, 7u})
        array.Add(value);
    EXPECT_EQ(std::tuple(array.capacity, &array[0]), std::tuple(4, first));
    array.Insert(array[2], 0);
    array.Add(array[1]);
    EXPECT_EQ(array.capacity, 8);
    EXPECT_EQ(array.Elements(), (Values{7, 5, 6, 7, 5}));
    for (int index : {1, 3, 3})
        array.Remove(index);
    EXPECT_EQ(array.Elements(), (Values{7, 6, 7}));

    Array other(1000, {9});
    EXPECT_NE(other, array);
    array = other;
    EXPECT_EQ(array, other);
    EXPECT_EQ(array.capacity, 1000);
    array.Clear();
    EXPECT_EQ(array.capacity, 256);
    EXPECT_EQ(array.Elements(), Values{});
}

TEST(Array, Searches) {
    const Array array(4, {4, 2, 4, 1});
    EXPECT_EQ(array.Search(4), 0);
    EXPECT_EQ(array.Search(4, 1), 2);
    EXPECT_EQ(array.Search(4, 1, 2), -1);
    const Array up(4, {2, 4, 6, 8, 10}), down(4, {10, 8, 6, 4, 2});
    for (int value = 0; value <= 12; ++value) {
        const bool there = value % 2 == 0 && value >= 2 && value <= 10;
        EXPECT_EQ(up.BinSearchUp(static_cast<unsigned int>(value)), there ? value / 2 - 1 : -1);
        EXPECT_EQ(down.BinSearchDown(static_cast<unsigned int>(value)), there ? 5 - value / 2 : -1);
    }
}

TEST(Array, SortsAllShapesOfInput) {
    unsigned int state = 12345;
    const auto next = [&state] { return state = state * 1664525u + 1013904223u; };
    for (unsigned int size : {0u, 1u, 2u, 3u, 8u, 9u, 17u, 100u, 3000u}) {
        for (int shape = 0; shape < 6; ++shape) {
            Values values;
            for (unsigned int i = 0; i < size; ++i) {
                const unsigned int shapes[] = {i, size - i, 7, next() >> 8, next() >> 30, std::min(i, size - i)};
                values.push_back(shapes[shape]);
            }
            Array array(1, values);
            array.Sort();
            std::sort(values.begin(), values.end());
            EXPECT_EQ(array.Elements(), values) << "size " << size << ", shape " << shape;
        }
    }
}

}  // namespace

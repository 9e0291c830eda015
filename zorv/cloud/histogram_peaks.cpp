#include <algorithm>
#include <cstddef>
#include <iterator>

#include "zorv/cloud/histogram.h"

namespace ZorvMath {

namespace {

/// What a peak stands out by, as a part of the range.
constexpr double kSelectivity = 0.25;

/// Stands for a difference of 0, so that flat runs fall: 2.2204e-16 in single precision.
constexpr double kFlat = -2.2203999918338061e-16;

/// A value where the histogram turns, or its end.
struct Turn {
    double value;
    int index;
};

int Sign(double value) {
    return value > 0.0 ? 1 : value < 0.0 ? -1 : 0;
}

/// The first value, those between a rise and a fall or a fall and a rise, and the last one.
std::vector<Turn> FindTurns(const std::vector<double>& values) {
    const auto step = [&values](std::size_t i) {
        const double difference = values[i + 1] - values[i];
        return difference == 0.0 ? kFlat : difference;
    };
    std::vector<Turn> turns{{values.front(), 0}};
    for (std::size_t i = 0; i + 2 < values.size(); ++i) {
        if (step(i) * step(i + 1) < 0.0) turns.push_back({values[i + 1], static_cast<int>(i + 1)});
    }
    turns.push_back({values.back(), static_cast<int>(values.size() - 1)});
    return turns;
}

}  // namespace

void FindHistogramPeaks(const std::vector<double>& values, std::vector<int>& peaks) {
    if (values.size() < 3) return;
    const auto [lowest, highest] = std::minmax_element(values.begin(), values.end());
    const double selected = (*highest - *lowest) * kSelectivity;

    std::vector<Turn> turns = FindTurns(values);
    if (turns.size() < 3) return;
    const auto byValue = [](const Turn& a, const Turn& b) { return a.value < b.value; };
    const double least = std::min_element(turns.begin(), turns.end(), byValue)->value;

    // Maxima and minima take turns from here on.
    const int first = Sign(turns[1].value - turns[0].value);
    if (first == Sign(turns[2].value - turns[1].value)) turns.erase(turns.begin() + (first > 0 ? 0 : 1));

    double leftMinimum = least;
    double highestYet = least;
    std::size_t place = 0;
    bool found = false;
    const std::size_t last = turns.size() - 1;
    for (std::size_t i = turns[0].value >= turns[1].value ? 0 : 1; i <= last; i += 2) {
        if (found) {
            highestYet = least;
            found = false;
        }
        const double value = turns[i].value;
        if (value > highestYet && value > leftMinimum + selected) {
            highestYet = value;
            place = i;
        }
        if (i == last) break;
        const double valley = turns[i + 1].value;
        if (highestYet > valley + selected) {
            found = true;
            leftMinimum = valley;
            peaks.push_back(turns[place].index);
        } else if (valley < leftMinimum) {
            leftMinimum = valley;
        }
    }
    if (turns[last].value > highestYet && turns[last].value > leftMinimum + selected) {
        peaks.push_back(turns[last].index);
    } else if (!found && highestYet > least) {
        peaks.push_back(turns[place].index);
    }
}

void FindHistogramPeaksCircular(const std::vector<double>& values, std::vector<int>& peaks) {
    if (values.empty()) return;
    const auto overlap = static_cast<std::ptrdiff_t>(0.1 * static_cast<double>(values.size()));
    std::vector<double> unrolled(values);
    unrolled.insert(unrolled.end(), values.begin(), values.begin() + overlap);
    std::vector<int> found;
    FindHistogramPeaks(unrolled, found);
    const auto end = static_cast<int>(values.size());
    std::copy_if(found.begin(), found.end(), std::back_inserter(peaks), [end](int index) { return index < end; });
}

}  // namespace ZorvMath

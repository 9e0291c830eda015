#include "zorv/cad/linear_regression.h"

#include <algorithm>
#include <utility>

bool ZoLinearRegression::Calc() {
    if (samples.size() < 2) return false;
    if (Fit()) return true;
    ExchangeAxes();
    const bool fitted = Fit();
    ExchangeAxes();
    if (fitted) {
        std::swap(low.x(), low.y());
        std::swap(high.x(), high.y());
    }
    return fitted;
}

void ZoLinearRegression::ExchangeAxes() {
    for (ZoPoint3d& sample : samples)
        std::swap(sample.x(), sample.y());
}

bool ZoLinearRegression::Fit() {
    const ZoPoint3d base = samples.front();
    const double n = static_cast<double>(samples.size());
    double sumX = 0.0, sumY = 0.0, sumXX = 0.0, sumXY = 0.0;
    for (const ZoPoint3d& sample : samples) {
        const double x = sample.x() - base.x();
        const double y = sample.y() - base.y();
        sumX += x;
        sumY += y;
        sumXX += x * x;
        sumXY += x * y;
    }
    const double determinant = n * sumXX - sumX * sumX;
    if (determinant == 0.0) return false;
    const double offset = (sumY * sumXX - sumXY * sumX) / determinant;
    slope = (n * sumXY - sumY * sumX) / determinant;
    intercept = offset + base.y() - slope * base.x();

    const auto byX = [](const ZoPoint3d& a, const ZoPoint3d& b) { return a.x() < b.x(); };
    low = *std::min_element(samples.begin(), samples.end(), byX);
    high = *std::max_element(samples.begin(), samples.end(), byX);
    for (ZoPoint3d* end : {&low, &high})
        end->y() = slope * (end->x() - base.x()) + offset + base.y();
    return true;
}

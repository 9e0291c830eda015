#pragma once

#include <vector>

#include "zorv/core/array2d.h"
#include "zorv/export.h"

/// Analysis of histograms.
namespace ZorvMath {

/// Appends the indices of the local maxima that stand out from their surroundings by at least a quarter of the range of
/// the values, ascending. Of two that no valley of that depth separates the higher one counts, of equal ones the first.
/// Fewer than three values have no peaks. The method is N. Yoder's peakfinder.
ZORV_API void FindHistogramPeaks(const std::vector<double>& values, std::vector<int>& peaks);

/// The same of values that begin anew behind their end, as angles do. The first tenth of them is looked at twice.
ZORV_API void FindHistogramPeaksCircular(const std::vector<double>& values, std::vector<int>& peaks);

/// Draws the values into a new raster, a column each and `scale` pixels for a difference of 1, with a margin of 5
/// pixels: ground 255, a dotted zero line 128, values 0, peaks 160 at the lower end of their column. Row 0 is the
/// lowest. The raster is empty where its height is no int, and where memory runs out, which throws std::bad_alloc.
ZORV_API void PlotHistogram(ValArray2DXY<unsigned char>& image, const std::vector<double>& values,
                            const std::vector<int>& peaks, double scale);

}  // namespace ZorvMath

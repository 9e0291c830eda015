#pragma once

#include <cstdint>

#include "zorv/export.h"

class ZoPhoto;

/// What the file name of an image tells of its place in a panorama. Names have the form
///
///     IMG_Pano_<series 2>_<series 1>_<ddmmyy>_<time>.<extension>        a single image
///     IMG_Pano_<yymmdd>_<time>.<extension>                              a stitched one
///
/// with the two words anywhere. Dates become numbers with the year first.
class ZORV_API ZoVivaPanoInfo {
  public:
    static constexpr int kMaxImageWidth = 2600;  ///< from here on an image is no single one
    static constexpr int kMaxImageHeigth = 2000;

    /// All zero for null and for a name of another form.
    explicit ZoVivaPanoInfo(ZoPhoto* photo);

    bool IsPanoImage() const { return isPanoImage; }
    bool IsStitchedImage() const { return isStitchedImage; }
    bool IsPanoStart() const { return seriesIndex1 == 0 && seriesIndex2 == 0; }
    int GetSeriesIndex1() const { return seriesIndex1; }
    int GetSeriesIndex2() const { return seriesIndex2; }
    double GetDateKey() const { return dateKey; }
    double GetTimeKey() const { return timeKey; }

    /// By date, then by time.
    bool operator<(const ZoVivaPanoInfo& other) const;

    /// One line on the debug channel.
    void dbgprintf(const char* prefix) const;

    std::uint32_t photoId = 0;  ///< of a single image
    bool isPanoImage = false;
    bool isStitchedImage = false;
    std::int32_t seriesIndex1 = 0;
    std::int32_t seriesIndex2 = 0;
    double dateKey = 0.0;
    double timeKey = 0.0;
};

#pragma once

#include <cstdint>
#include <iosfwd>

#include "zorv/core/list_node.h"
#include "zorv/export.h"
#include "zorv/points/point.h"
#include "zorv/points/point_list.h"

class ZoReaderObject;

/// How a point was measured. The values are the host's: the library stores and writes them and never looks at them.
enum eZoMeasureMode : std::int32_t { eZoMeasureModeNone = 0 };

/// One entry of a measurement log: a point, the image measurements that it was computed from, and how.
class ZORV_API ZoLogItem : public TZoListnode<ZoLogItem> {
  public:
    /// Empty and without a time stamp.
    ZoLogItem();
    /// Copies point and measurements (null for none) and stamps the time, which replaces the point's id.
    ZoLogItem(const ZoPoint& measured, const ZoPointList* measurements, eZoMeasureMode mode, unsigned int value);
    explicit ZoLogItem(ZoReaderObject* object);
    ZoLogItem(const ZoLogItem&) = default;
    ZoLogItem& operator=(const ZoLogItem&) = default;

    /// Reads the record as Write makes it and leaves its `}` at hand. The image points are added to those that are
    /// here. Returns 1; throws ZoParserStatus at the first token that does not fit.
    int Read(ZoReaderObject* object);
    /// Writes `id x y z dx dy dz mode value {photo x y ...}`. That is one line, unless it would grow beyond what the
    /// reader takes: then it is broken between two image points.
    std::ostream& Write(std::ostream& stream) const;

    /// Gives the point the current calendar time, in seconds since 1970, as its id.
    void TimeStamp();

    const ZoPoint& GetPoint() const { return point; }
    const ZoPointList& GetImagePoints() const { return imagePoints; }
    eZoMeasureMode GetMeasureMode() const { return measureMode; }
    unsigned int GetMeasureValue() const { return measureValue; }

    ZoPoint point;            ///< in object space; its id is the time stamp
    ZoPointList imagePoints;  ///< photo, x and y of each measurement
    eZoMeasureMode measureMode = eZoMeasureModeNone;
    std::uint32_t measureValue = 0;  ///< the host's
};

#pragma once

#include <cstdint>
#include <iosfwd>

#include "zorv/core/link.h"
#include "zorv/export.h"

class CZipWrapper;
class ZoPointList;
class ZoReaderObject;
enum eTrafo3DStatus : std::int32_t;

/// Axes of a local system, values of ZoLokalSystemDef::axisMode.
enum eZoLokalAxis : std::int32_t {
    eAxisX = 1,
    eAxisY = 2,
    eAxisZ = 3,
};

/// Coordinate planes of a local system, values of ZoLokalSystemDef::planeMode.
enum eZoLokalPlane : std::int32_t {
    ePlaneXY = 4,
    ePlaneYZ = 5,
    ePlaneZX = 6,
};

/// The known distance between two points, in the unit of the local system. A record with an id 0 is empty.
struct ZoScaleDef {
    std::uint32_t idA = 0;
    std::uint32_t idB = 0;
    double distance = 0.0;

    bool IsEmpty() const { return idA == 0 || idB == 0; }
};

/// How an object system is laid by hand, by ids of points: two points give an axis, a third one gives a coordinate
/// plane, a fourth one gets given coordinates, known distances give the scale.
///
/// The axis lies in the plane: axis X goes with XY or ZX, axis Y with XY or YZ, axis Z with YZ or ZX. The axis runs
/// from id0 towards id1, and the plane's other axis to the side of id2. ZoTrafo3d::CalcByLocalSystem makes a
/// transformation of the definition.
class ZORV_API ZoLokalSystemDef : public LinkHdl {
  public:
    static constexpr int kNScale = 5;

    ZoLokalSystemDef() = default;
    ZoLokalSystemDef(const ZoLokalSystemDef&) = default;
    ZoLokalSystemDef& operator=(const ZoLokalSystemDef&) = default;
    virtual ~ZoLokalSystemDef() = default;

    /// Where the axis does not lie in the plane: plane XY for the axes X and Y, plane YZ for the axis Z.
    void AdjustPlanebyAxisMode();
    void ClearScaleDef();
    /// Whether the id is one of the three that give axis and plane.
    bool IsUsedInDef(unsigned int id) const { return id == id0 || id == id1 || id == id2; }
    /// Forgets the points id0 and id2.
    void SetInvalid();
    /// Takes the first three points of the list, as far as it reaches; the first one is also the one whose coordinates
    /// are given. True when there are three; false, and nothing changes, for null.
    bool Suggest(const ZoPointList* list);

    /// Whether the definition can be computed with the points of the list; null leaves the list out of the test. With
    /// `checkScale` at least one distance must be known, longer than 1e-10, and all points of distances must be there.
    ///
    /// The status is written for false only: eTrafo3DBadScaleDef for a distance from a point to itself,
    /// eTrafo3DNoSolution for a point used twice, eTrafo3DPointMissing, eTrafo3DNoScaleDef.
    bool IsValid(eTrafo3DStatus& status, const ZoPointList* list, bool checkScale) const;

    /// Text form, with the first three distances; the others stay as they are. Returns 1; throws ZoParserStatus at a
    /// token that is no number, and what was read before it stays.
    int Read(ZoReaderObject* object);
    /// Writes what Read takes, on six lines without a line end behind the last, 16 significant digits.
    std::ostream& Write(std::ostream& stream) const;
    /// Archive record: all fields in order, all five distances.
    void ReadV9(CZipWrapper* archive);
    void WriteV9(CZipWrapper* archive) const;

    std::int32_t axisMode = eAxisX;     ///< the axis from id0 towards id1; a number of no axis has no transformation
    std::uint32_t id0 = 0;              ///< start of the axis
    std::uint32_t id1 = 0;              ///< end of the axis
    std::int32_t planeMode = ePlaneXY;  ///< the plane of id0, id1 and id2
    std::uint32_t id2 = 0;
    std::uint32_t id3 = 0;  ///< the point that gets the coordinates x, y, z
    double x = 0.0;         ///< in the local system
    double y = 0.0;
    double z = 0.0;
    ZoScaleDef scale[kNScale];
};

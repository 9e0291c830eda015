#pragma once

#include <cstdint>
#include <iosfwd>

#include "zorv/core/flag.h"
#include "zorv/core/link.h"
#include "zorv/core/list.h"
#include "zorv/export.h"
#include "zorv/points/point.h"

class CZipWrapper;
class ZoLine3d;
class ZoPointList;
class ZoReaderObject;

namespace zorv::detail {

/// A record that joins two others by their ids, in no order.
template <class T>
class JoiningNode : public TZoFlagNode<T> {
  public:
    JoiningNode() = default;
    JoiningNode(unsigned int first, unsigned int second) : id1(first), id2(second) {}

    bool HasId(unsigned int a) const { return id1 == a || id2 == a; }
    bool HasBothId(unsigned int a, unsigned int b) const { return HasId(a) && HasId(b); }
    bool HasEitherId(unsigned int a, unsigned int b) const { return HasId(a) || HasId(b); }

    std::uint32_t id1 = 0;
    std::uint32_t id2 = 0;
};

}  // namespace zorv::detail

/// A line of a rectification's definition: it joins two measured points of the image.
class ZORV_API ZoElspDefLine : public zorv::detail::JoiningNode<ZoElspDefLine> {
  public:
    /// The ids of the two end points.
    ZoElspDefLine(unsigned int first, unsigned int second) : JoiningNode(first, second) {}
    /// These two read at once; the first throws what Read throws.
    explicit ZoElspDefLine(ZoReaderObject* object) { Read(object); }
    explicit ZoElspDefLine(CZipWrapper* archive) { ReadV9(archive); }
    ZoElspDefLine(const ZoElspDefLine&) = default;
    ZoElspDefLine& operator=(const ZoElspDefLine&) = default;

    /// Text form: id, both point ids, xAxis, distance. Returns 1; throws ZoParserStatus.
    int Read(ZoReaderObject* object);
    std::ostream& Write(std::ostream& stream) const;
    /// Archive record: ZoObject, flags, both point ids, distance, xAxis, both extras.
    void ReadV9(CZipWrapper* archive);
    void WriteV9(CZipWrapper* archive) const;

    double distance = 0.0;
    std::int32_t xAxis = 0;  ///< not 0: the line gives the X axis
    double extra1 = 0.0;     ///< for the host; in the archive only
    double extra2 = 0.0;
};

/// What is known of two lines of a definition.
class ZORV_API ZoElspDefLineConstraint : public zorv::detail::JoiningNode<ZoElspDefLineConstraint> {
  public:
    enum ConstraintType : std::int32_t {
        ConstraintNone = 0,  ///< no constraint; in a question, any
        ConstraintParallel = 1,
        ConstraintPerpendicular = 2,
    };

    /// The ids of the two lines.
    ZoElspDefLineConstraint(unsigned int first, unsigned int second, ConstraintType kind, double size)
        : JoiningNode(first, second), type(kind), value(size) {}
    /// These two read at once; the first throws what Read throws.
    explicit ZoElspDefLineConstraint(ZoReaderObject* object) { Read(object); }
    explicit ZoElspDefLineConstraint(CZipWrapper* archive) { ReadV9(archive); }
    ZoElspDefLineConstraint(const ZoElspDefLineConstraint&) = default;
    ZoElspDefLineConstraint& operator=(const ZoElspDefLineConstraint&) = default;

    ConstraintType Constraint() const { return type; }
    bool IsParallel() const { return type == ConstraintParallel; }
    bool IsValid() const { return type != ConstraintNone; }
    bool IsConstraint(ConstraintType asked) const { return asked == ConstraintNone || asked == type; }

    /// Text form: both line ids, type, value; the id of the constraint itself is not part of it. Returns 1; throws
    /// ZoParserStatus.
    int Read(ZoReaderObject* object);
    std::ostream& Write(std::ostream& stream) const;
    /// Archive record: ZoObject, flags, both line ids, type, value.
    void ReadV9(CZipWrapper* archive);
    void WriteV9(CZipWrapper* archive) const;

    ConstraintType type = ConstraintNone;
    double value = 0.0;  ///< for the host
};

/// The lines of a definition, which the list owns.
class ZORV_API ZoElspDefLineList : public TZoListHeader<ZoElspDefLine>, public LinkHdl {
  public:
    /// Reads a line from the tokens at hand and appends it. Returns 1; throws ZoParserStatus, then nothing is added.
    long AddObject(ZoReaderObject* object);
    /// Archive record: the number of lines (8 bytes), then theirs. Reading appends.
    void ReadV9(CZipWrapper* archive);
    void WriteV9(CZipWrapper* archive) const;
};

/// The constraints of a definition, which the list owns.
class ZORV_API ZoElspDefLineConstraintList : public TZoListHeader<ZoElspDefLineConstraint>, public LinkHdl {
  public:
    /// Reads a constraint from the tokens at hand and appends it. Returns 1; throws ZoParserStatus, then nothing is
    /// added.
    long AddObject(ZoReaderObject* object);
    /// Archive record: the number of constraints (8 bytes), then theirs. Reading appends.
    void ReadV9(CZipWrapper* archive);
    void WriteV9(CZipWrapper* archive) const;
};

/// The definition of a rectification by what is known of lines in the image, without object coordinates: which are
/// parallel, which perpendicular, which one gives the X axis. Solving it is the host's.
///
/// Records that Make... returns belong to the definition.
class ZORV_API ZoElspParallelDef {
  public:
    using ConstraintType = ZoElspDefLineConstraint::ConstraintType;

    /// The points to which the lines refer; they stay the caller's and may be null.
    explicit ZoElspParallelDef(ZoPointList* pointList = nullptr) : points(pointList) {}
    ZoElspParallelDef(const ZoElspParallelDef&) = default;
    ZoElspParallelDef& operator=(const ZoElspParallelDef&) = default;
    virtual ~ZoElspParallelDef() = default;

    const ZoElspDefLineList& GetLines() const { return lines; }
    const ZoElspDefLineConstraintList& GetConstraints() const { return constraints; }
    ZoPointList* GetPoints() const { return points; }
    void SetPoints(ZoPointList* pointList) { points = pointList; }

    bool HasData() const { return !lines.IsEmpty(); }
    void Clear();
    /// Deletes the lines of which a point is missing, then the constraints of which a line is missing. Does nothing
    /// without a point list.
    void CheckAndRepair();

    /// The end points of a line, as copies or as a line through their x, y, z. False for null and where a point is
    /// missing.
    bool GetLine(ZoPoint& a, ZoPoint& b, const ZoElspDefLine* line) const;
    bool GetLine(ZoLine3d& l, const ZoElspDefLine* line) const;
    /// The midpoints of the two lines of a constraint; false for null and where a line or a point is missing.
    bool GetConstraintLine(ZoPoint& a, ZoPoint& b, const ZoElspDefLineConstraint* constraint) const;

    bool HasXAxisDef() const;
    /// Whether a line touches both points, or either.
    bool HasDefLineFromBikos(unsigned int a, unsigned int b, bool both) const;
    /// Whether a line touches either of the last two points of the list.
    bool HasDefLineWithLastBikos() const;
    /// Whether a constraint of that type, or of any, touches both lines, or either.
    bool HasConstraintDef(unsigned int a, unsigned int b, bool both, ConstraintType type) const;
    bool HasConstraintDefFromLastTwoLines(ConstraintType type) const;
    /// Whether a line between the two points can be added: they differ, exist and are not joined yet.
    bool IsDefLineValid(unsigned int a, unsigned int b) const;
    /// Whether the constraint can be added: the lines differ, exist and have none of that type yet.
    bool IsConstraintDefValid(unsigned int a, unsigned int b, ConstraintType type) const;

    /// A new line or constraint with the next free id; null where it is not valid.
    ZoElspDefLine* MakeDefLine(unsigned int a, unsigned int b);
    ZoElspDefLine* MakeDefLineFromLastTwoBikos();
    ZoElspDefLineConstraint* MakeConstraintDef(unsigned int a, unsigned int b, ConstraintType type);
    ZoElspDefLineConstraint* MakeConstraintDefFromLastTwoDefLines(ConstraintType type);
    /// Makes the lines of the last two constraints, when both are parallel ones, perpendicular to each other: the sides
    /// of a rectangle. False when they are not.
    bool MakeLastTwoParallelConstraintsPerpendicular();

    /// Text form: blocks DEFLINE and CONSTRAINT, any number of each, which are appended. Returns 1; throws
    /// ZoParserStatus.
    int Read(ZoReaderObject* object);
    std::ostream& Write(std::ostream& stream) const;
    /// Archive record: the lines, then the constraints.
    void ReadV9(CZipWrapper* archive);
    void WriteV9(CZipWrapper* archive) const;

    ZoPointList* points;
    ZoElspDefLineList lines;
    ZoElspDefLineConstraintList constraints;
};

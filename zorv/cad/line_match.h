#pragma once

#include "zorv/export.h"
#include "zorv/math/point3d.h"

/// Matches the ends of two lines so that they meet as well as they can, and tells how far apart they stay. Calculated
/// in the constructor.
///
/// Give the lines in the order outer end, inner end, inner end, outer end: the end that is farther from the meeting
/// point stays (the base), the other moves (the result).
class ZORV_API ZoCad2LinesMatch {
  public:
    enum eMatchMode : int {
        eMatch3d = 0,  ///< in space
        eMatchXY = 1,  ///< in the plane z = 0; z of the results is the mean of the inner ends
        eMatchXZ = 2,  ///< in the plane y = 0
        eMatchYZ = 3,  ///< in the plane x = 0
    };

    /// Each result is moved past the meeting point by its offset, away from its base. Lines at an angle (degrees) of
    /// no more than `angle` count as parallel. A line without length gives no result.
    ZoCad2LinesMatch(const ZoPoint3d& firstOuter, const ZoPoint3d& firstInner, const ZoPoint3d& secondInner,
                     const ZoPoint3d& secondOuter, double firstOffset, double secondOffset, double angle,
                     eMatchMode mode);
    ZoCad2LinesMatch(const ZoCad2LinesMatch&) = default;
    ZoCad2LinesMatch& operator=(const ZoCad2LinesMatch&) = default;
    virtual ~ZoCad2LinesMatch() = default;

    bool IsValid() const { return valid; }
    bool IsParallel() const { return parallel; }
    const ZoPoint3d& Base1() const { return base1; }
    const ZoPoint3d& Result1() const { return result1; }
    const ZoPoint3d& Base2() const { return base2; }
    const ZoPoint3d& Result2() const { return result2; }

    /// The gap between the two results, and the place in its middle.
    double Distance() const { return result1.Distance(result2); }
    ZoPoint3d MiddlePoint() const { return result1.MiddlePoint(result2); }
    /// Grade of the gap: 0 none (or a result on its base), 1 up to 5 % of the shorter line, 2 more.
    int ValueDistance() const;

    ZoPoint3d p1, p2, p3, p4;
    double offset1 = 0.0;
    double offset2 = 0.0;
    ZoPoint3d base1, result1;
    ZoPoint3d base2, result2;
    bool valid = false;
    bool parallel = false;

  private:
    bool Calc(double tolerance);
    void MatchParallel(const ZoVector3d& d1, const ZoVector3d& d2);
};

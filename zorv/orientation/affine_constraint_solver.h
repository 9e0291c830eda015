#pragma once

#include <vector>

#include "zorv/export.h"
#include "zorv/orientation/affine_constraint.h"

/// The shear that brings an image rectified up to an affine map to its true shape: x' = a x + b y, y' = y, with
/// a = 1 / beta and b = -alpha / beta of the point (alpha, beta) in which most circles meet. Calculated in the
/// constructor.
///
/// Of the two mirrored solutions it is the one with beta above 0. Sections of circles within a tenth of the extent of
/// all sections count as one point, and the first of them is taken as it is.
class ZORV_API ZoAffineConstraintSolver {
  public:
    /// Erases the invalid constraints from the vector. At least two have to remain.
    explicit ZoAffineConstraintSolver(std::vector<ZoAffineConstraint>& constraints) { Calc(constraints); }

    /// False for too few constraints, for circles that do not meet above beta = 0, and where the point is at beta = 0.
    /// a and b are 0 then.
    bool IsValid() const { return valid; }
    double GetAlpha() const { return alpha; }
    double GetBeta() const { return beta; }
    double GetA() const { return a; }
    double GetB() const { return b; }

    bool valid = false;
    double alpha = 0.0;
    double beta = 0.0;
    double a = 0.0;
    double b = 0.0;

  protected:
    /// Logs the sections in the file `c:\AffinConstraintRes.txt`, where that can be opened.
    void Calc(std::vector<ZoAffineConstraint>& constraints);
};

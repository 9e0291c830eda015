#pragma once

#include "zorv/export.h"

class ZoMatrix;

/// \file
/// Linear equations and determinants by elimination with relative pivots: the pivot of a column is the element that is
/// greatest in relation to the sum of its line, so that badly scaled lines do no harm. What lies below 1e-10 counts as
/// zero, in all tests.

/// Solves a x = b for any number of right-hand sides. a is square, b has as many rows. Returns 0, with the solution in
/// b and in a the upper triangle and, below the diagonal, the multipliers; or 1 for a singular a, both then partly
/// eliminated.
ZORV_API int GaussLoeserRelMax(ZoMatrix& a, ZoMatrix& b);

/// Solves u x = b for an upper triangle u and any number of right-hand sides; b becomes the solution. The diagonal is
/// not tested. Always 0.
ZORV_API int DreieckLoeserOben(ZoMatrix& u, ZoMatrix& b);

/// The determinant; 0 when the elimination finds the matrix singular.
ZORV_API double Det(const ZoMatrix& matrix);

#pragma once

#include "zorv/export.h"

/// \file
/// Triangle-triangle intersection after T. Moeller, "A fast triangle-triangle intersection test", Journal of Graphics
/// Tools 2(2), 1997, in its three forms.
///
/// Each vertex is an array of three doubles. A vertex whose distance from the other triangle's plane, measured in the
/// length of that plane's unnormalised normal, is below 1e-6 counts as lying in it. Triangles that touch intersect. The
/// result is 1 when the triangles have a point in common, else 0. Degenerate triangles give 0 or 1 and no fault.

/// Compares the intervals that both triangles cut out of the line of their planes.
ZORV_API int tri_tri_intersect(const double v0[3], const double v1[3], const double v2[3], const double u0[3],
                               const double u1[3], const double u2[3]);

/// The same comparison with both intervals multiplied by their common denominators: no division.
ZORV_API int NoDivTriTriIsect(const double v0[3], const double v1[3], const double v2[3], const double u0[3],
                              const double u1[3], const double u2[3]);

/// Gives the ends of the common segment too. `coplanar` becomes 1 for triangles in one plane, else 0; the ends are
/// written only for triangles that intersect and are not coplanar.
ZORV_API int tri_tri_intersect_with_isectline(const double v0[3], const double v1[3], const double v2[3],
                                              const double u0[3], const double u1[3], const double u2[3], int* coplanar,
                                              double isectpt1[3], double isectpt2[3]);

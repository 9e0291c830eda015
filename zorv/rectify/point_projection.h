#pragma once

#include "zorv/export.h"

class ZoPointList;

/// Turns points into the plane fitted to them: `out` gets copies of the points of `in`, in the axes of the arbitrary
/// axis algorithm for the plane's normal, so that their z are the points' heights along the normal, all nearly the
/// same. Ids, names and other fields stay. False, with `out` untouched, for null, fewer than three points, and points
/// that span no plane.
ZORV_API bool ZoProjectPointListTo2d(ZoPointList* out, const ZoPointList& in);

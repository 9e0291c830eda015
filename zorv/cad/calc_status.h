#pragma once

/// How far a construction got.
enum eZoCadStatus : int {
    eZoCadOk = 0,
    eZoCadNotCalculated = 1,  ///< too few points
    eZoCadFailed = 2,         ///< the points define nothing
};

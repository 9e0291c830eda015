#pragma once

#include "console.h"
#include <zorv/zorv.h>

/// Writes the cameras in each of their forms into the folder, as `stem` with the ending of the form, reads what can be
/// read, and checks that it is what was written.
void CheckRoundTrips(const ZoCameraList& cameras, const std::wstring& folder, const std::wstring& stem, Checks& check);

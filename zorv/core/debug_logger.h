#pragma once

#include "zorv/core/logger.h"

/// Appends every message of level 4 and below to "\ZorvProtokoll.log", in the root of the current drive. The file is
/// open only while a line is written, so that others may write too. A file that cannot be opened loses the line.
class ZORV_API ZoZorvDebugLogger : public ZoLogger {
  public:
    ZoZorvDebugLogger() : ZoLogger(4) {}

    int Log(int messageLevel, const wchar_t* text) override;
};

/// Adds the library's own debug logger to the registered master logger. Nothing happens without a master logger or
/// when it is installed already.
ZORV_API void InstallZorvDebugLogger();
/// Takes it away again. The master logger must be the one of the installation.
ZORV_API void UninstallZorvDebugLogger();
/// Whether it is installed in a master logger.
ZORV_API bool IsZorvDebugLoggerInstalled();

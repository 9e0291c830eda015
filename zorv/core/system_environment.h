#pragma once

#include "zorv/export.h"

/// The system that the host runs on, as the host tells it.
enum eOperatingSystem : int {
    eOperatingSystemUnknown = 0,
    eOperatingSystemWindows = 1,
    eOperatingSystemLinux = 2,
    eOperatingSystemMac = 3,
};

/// How the host runs, as the host tells it.
enum eZorvRunningMode : int {
    eZorvRunningModeUnknown = 0,
    eZorvRunningModeInteractive = 1,
    eZorvRunningModeBatch = 2,
};

/// Two process-wide values that the library keeps for its host and never looks at.
class ZORV_API ZoSystemEnviroment {
  public:
    static eOperatingSystem GetOperatingSystem();
    static void SetOperatingSystem(eOperatingSystem system);
    static eZorvRunningMode GetRunningMode();
    static void SetRunningMode(eZorvRunningMode mode);
};

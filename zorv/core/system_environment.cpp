#include "zorv/core/system_environment.h"

namespace {

eOperatingSystem operatingSystem = eOperatingSystemUnknown;
eZorvRunningMode runningMode = eZorvRunningModeUnknown;

}  // namespace

eOperatingSystem ZoSystemEnviroment::GetOperatingSystem() {
    return operatingSystem;
}

void ZoSystemEnviroment::SetOperatingSystem(eOperatingSystem system) {
    operatingSystem = system;
}

eZorvRunningMode ZoSystemEnviroment::GetRunningMode() {
    return runningMode;
}

void ZoSystemEnviroment::SetRunningMode(eZorvRunningMode mode) {
    runningMode = mode;
}

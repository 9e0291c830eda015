#include "zorv/core/platform/host_services.h"

namespace {

ZoHostServices& Services() {
    static ZoHostServices services;
    return services;
}

}  // namespace

void ZoSetHostServices(const ZoHostServices& services) {
    Services() = services;
}

const ZoHostServices& ZoGetHostServices() {
    return Services();
}

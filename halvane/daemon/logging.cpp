#include "halvane/daemon/logging.h"

#include "halvane/base/shared_instance_internal.h"

namespace halvane {

std::atomic<const HalvaneLogging*> gHalvaneLogging = nullptr;

const HalvaneLogging& HalvaneLogging::sharedSystem() {
    return sharedInstance(gHalvaneLogging);
}

}  // namespace halvane

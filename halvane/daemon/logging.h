// Represents the logging of the Wi-Fi code. The categories themselves are in halvane/utils/log.h:
// gLogCategory_WiFi, gLogCategory_WiFiScan and so on.
#ifndef HALVANE_DAEMON_LOGGING_H
#define HALVANE_DAEMON_LOGGING_H

#include <atomic>

#include "halvane/base/cxx20.h"
#include "halvane/base/export.h"

namespace halvane {

class HALVANE_EXPORT HalvaneLogging {
  public:
    // Creates a separate instance. All instances are alike.
    static HalvaneLogging init() { return {}; }

    // Returns the shared instance. The first call creates it, and it lives until the process ends.
    // Any thread may call this at any time.
    static const HalvaneLogging& sharedSystem();
};

// The shared instance; null until the first call of sharedSystem().
extern HALVANE_EXPORT std::atomic<const HalvaneLogging*> gHalvaneLogging;

}  // namespace halvane

#endif

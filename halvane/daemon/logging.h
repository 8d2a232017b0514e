// The holder of the Wi-Fi code's logging. The categories themselves are those of
// halvane/utils/log.h: gLogCategory_WiFi, gLogCategory_WiFiScan and so on.
#ifndef HALVANE_DAEMON_LOGGING_H
#define HALVANE_DAEMON_LOGGING_H

#include <atomic>

#include "halvane/base/export.h"

namespace halvane {

class HALVANE_EXPORT HalvaneLogging {
  public:
    // An instance of its own; all are alike.
    static HalvaneLogging init() { return {}; }

    // The shared instance, made on the first call; it lives until the process ends. May be called
    // from any thread, also at once.
    static const HalvaneLogging& sharedSystem();
};

// The shared instance; null until sharedSystem() is first called.
extern HALVANE_EXPORT std::atomic<const HalvaneLogging*> gHalvaneLogging;

}  // namespace halvane

#endif

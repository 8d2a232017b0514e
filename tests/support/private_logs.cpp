// Linked into every test program with the library in it: what the Wi-Fi categories log goes to
// standard error, and not to the log file of the machine.
#include "halvane/utils/log.h"

namespace halvane::testing {

namespace {

bool keepFromLogFile() {
#define HALVANE_KEEP_FROM_LOG_FILE(name) gLogCategory_##name.initConfig = nullptr;
    HALVANE_WIFI_LOG_CATEGORIES(HALVANE_KEEP_FROM_LOG_FILE)
#undef HALVANE_KEEP_FROM_LOG_FILE
    return true;
}

[[maybe_unused]] const bool isKept = keepFromLogFile();

}  // namespace

}  // namespace halvane::testing

/* Logs with a category of its own, at levels and to outputs that control strings set. */
#include "halvane/utils/log.h"

static HALVANE_LOG_CATEGORY(Roaming, kLogLevelNotice, kLogHeaderCategory | kLogHeaderLevel, NULL);

int main(void) {
    const uint8_t address[] = {0x02, 0x1A, 0x2B, 0x3C, 0x4D, 0x5E};
    if (LogControl("Roaming:output=file;stdout") != kStatusOK) return 1;

    HALVANE_LOG(&gLogCategory_Roaming, kLogLevelWarning, "%.6a at %d dBm\n", address, -81);
    HALVANE_LOG(&gLogCategory_Roaming, kLogLevelInfo, "held back\n");

    LogControl("Roaming:level=info,Roaming:flags=prefix;function");
    HALVANE_LOG(&gLogCategory_Roaming, kLogLevelInfo, "left %.6a\n", address);
    return 0;
}

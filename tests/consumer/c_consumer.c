/* A C11 program on the C layer. */
#include <stdio.h>
#include <string.h>

#include "halvane/utils/log.h"
#include "halvane/utils/printf.h"
#include "halvane/utils/scan_time.h"

static HALVANE_LOG_CATEGORY(Consumer, kLogLevelInfo, 0, NULL);

int main(void) {
    const unsigned char address[] = {0x02, 0x1A, 0x2B, 0x3C, 0x4D, 0x5E};
    char text[32];
    int channel = 0;

    SNPrintF(text, sizeof(text), "%.6a", address);
    if (strcmp(text, "02:1A:2B:3C:4D:5E") != 0) return 1;
    if (SNScanF("channel 36", SIZE_MAX, "channel %d", &channel) != 1 || channel != 36) return 1;
    if (UpTicksPerSecond() == 0) return 1;
    if (LogIsEnabled(&gLogCategory_Consumer, kLogLevelTrace)) return 1;
    puts(text);
    return 0;
}

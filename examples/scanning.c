/* Scans a line of text for its parts, which it finds in place, and measures how long that takes. */
#include <stdint.h>

#include "halvane/utils/printf.h"
#include "halvane/utils/scan_time.h"

int main(void) {
    static const char line[] = "station 02:1a:2b:3c:4d:5e on wlan0 at -61 dBm";
    uint8_t address[6];
    const char* interface;
    size_t length;
    int32_t signal;

    const uint64_t start = UpTicks();
    const int items =
        SNScanF(line, SIZE_MAX, "station %2hhx:%2hhx:%2hhx:%2hhx:%2hhx:%2hhx on %&s at %d dBm",
                &address[0], &address[1], &address[2], &address[3], &address[4], &address[5],
                &interface, &length, &signal);
    if (items != 8) return 1;

    FPrintF(stdout, "%.6a hears %.*s at %d dBm\n", address, (int)length, interface, signal);
    return UpTicksToSeconds(UpTicks() - start) < 60 ? 0 : 1;
}

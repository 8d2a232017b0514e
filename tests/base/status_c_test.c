/* The status codes as a C program sees them. */
#include <string.h>

#include "halvane/base/status.h"

#include "tests/support/check_line.h"

int firstFailingLineOfStatusFromC(void);

#define CHECK_ROW(name, value, text) \
    CHECK(name == (value));          \
    CHECK(strcmp(HalvaneStatusText(name), text) == 0);

int firstFailingLineOfStatusFromC(void) {
    CHECK(sizeof(HalvaneStatus) == 4 && (HalvaneStatus)-1 < 0);
    CHECK_ROW(kStatusOK, 0, "success")
    CHECK_ROW(kStatusConversionFailed, -6700, "conversion or reply failed")
    CHECK_ROW(kStatusBadPath, -6704, "bad path")
    CHECK_ROW(kStatusUnsupported, -6705, "unsupported, null or unrecognised input")
    CHECK_ROW(kStatusOutOfRange, -6710, "value out of range")
    CHECK_ROW(kStatusDigitsAfterGap, -6717, "digits after a gap")
    CHECK_ROW(kStatusNoMemory, -6728, "out of memory or nothing produced")
    CHECK_ROW(kStatusUnknownParameter, -6735, "unknown parameter")
    CHECK_ROW(kStatusForbidden, -6736, "forbidden part")
    CHECK_ROW(kStatusMalformed, -6742, "malformed text")
    CHECK_ROW(kStatusWrongLength, -6743, "wrong length")
    CHECK_ROW(kStatusTooFew, -6750, "too few parts or empty")
    CHECK_ROW(kStatusTruncated, -6751, "truncated or too long")
    CHECK_ROW(kStatusDone, -6752, "help or version printed")
    CHECK_ROW(kStatusCannotOpen, -6755, "cannot open file")
    CHECK_ROW(kStatusEmptyType, -6756, "empty type")
    CHECK_ROW(kStatusNoRoom, -6763, "no room")
    CHECK(strcmp(HalvaneStatusText(1), "unknown status") == 0);
    return 0;
}

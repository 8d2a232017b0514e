/* Status codes of the utility layer: a signed 32-bit integer, 0 for success.
 *
 * Usable from C11 and C++20. */
#ifndef HALVANE_BASE_STATUS_H
#define HALVANE_BASE_STATUS_H

#include <stdint.h>

#include "halvane/base/export.h"

/* What fallible functions of the C layer return: kStatusOK, or one of the codes below. */
typedef int32_t HalvaneStatus;

enum {
    kStatusOK = 0,                   /* success */
    kStatusConversionFailed = -6700, /* conversion or reply failed */
    kStatusBadPath = -6704,          /* bad path */
    kStatusUnsupported = -6705,      /* unsupported, null or unrecognised input */
    kStatusOutOfRange = -6710,       /* value out of range */
    kStatusDigitsAfterGap = -6717,   /* digits after a gap */
    kStatusNoMemory = -6728,         /* out of memory or nothing produced */
    kStatusUnknownParameter = -6735, /* unknown parameter */
    kStatusForbidden = -6736,        /* forbidden part */
    kStatusMalformed = -6742,        /* malformed text */
    kStatusWrongLength = -6743,      /* wrong length */
    kStatusTooFew = -6750,           /* too few parts or empty */
    kStatusTruncated = -6751,        /* truncated or too long */
    kStatusDone = -6752,             /* help or version printed */
    kStatusCannotOpen = -6755,       /* cannot open file */
    kStatusEmptyType = -6756,        /* empty type */
    kStatusNoRoom = -6763,           /* no room */
};

#ifdef __cplusplus
extern "C" {
#endif

/* Returns the text of a status, a static string, or "unknown status" for an unlisted code. */
HALVANE_EXPORT const char* HalvaneStatusText(HalvaneStatus status);

#ifdef __cplusplus
}
#endif

#endif

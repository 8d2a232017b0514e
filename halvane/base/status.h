/* Status codes of the utility layer: a signed 32-bit integer, 0 for success.
 *
 * Usable from C11 and C++20. The codes and their texts are one table, so that a
 * code cannot lack a text. */
#ifndef HALVANE_BASE_STATUS_H
#define HALVANE_BASE_STATUS_H

#include <stdint.h>

#include "halvane/base/export.h"

typedef int32_t HalvaneStatus;

/* X(constant, value, text) */
#define HALVANE_STATUS_CODES(X)                                             \
    X(kStatusOK, 0, "success")                                              \
    X(kStatusConversionFailed, -6700, "conversion or reply failed")         \
    X(kStatusBadPath, -6704, "bad path")                                    \
    X(kStatusUnsupported, -6705, "unsupported, null or unrecognised input") \
    X(kStatusOutOfRange, -6710, "value out of range")                       \
    X(kStatusDigitsAfterGap, -6717, "digits after a gap")                   \
    X(kStatusNoMemory, -6728, "out of memory or nothing produced")          \
    X(kStatusUnknownParameter, -6735, "unknown parameter")                  \
    X(kStatusForbidden, -6736, "forbidden part")                            \
    X(kStatusMalformed, -6742, "malformed text")                            \
    X(kStatusWrongLength, -6743, "wrong length")                            \
    X(kStatusTooFew, -6750, "too few parts or empty")                       \
    X(kStatusTruncated, -6751, "truncated or too long")                     \
    X(kStatusDone, -6752, "help or version printed")                        \
    X(kStatusCannotOpen, -6755, "cannot open file")                         \
    X(kStatusEmptyType, -6756, "empty type")                                \
    X(kStatusNoRoom, -6763, "no room")

#define HALVANE_STATUS_ENUMERATOR(name, value, text) name = (value),
enum { HALVANE_STATUS_CODES(HALVANE_STATUS_ENUMERATOR) };
#undef HALVANE_STATUS_ENUMERATOR

#ifdef __cplusplus
extern "C" {
#endif

/* The text of a status, a static string; "unknown status" for a code of no row. */
HALVANE_EXPORT const char* HalvaneStatusText(HalvaneStatus status);

#ifdef __cplusplus
}
#endif

#endif

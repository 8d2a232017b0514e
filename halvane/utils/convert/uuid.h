/* UUIDs (RFC 4122) to and from text.
 *
 * Usable from C11 and C++20. Every function may be called from any thread. The conventions of the
 * C layer stand in halvane/utils/printf.h.
 *
 * A UUID is 16 bytes. Its first three fields (4, 2 and 2 bytes) have their most significant byte
 * first, as they are printed, or last where `isLittleEndian` tells so. */
#ifndef HALVANE_UTILS_CONVERT_UUID_H
#define HALVANE_UTILS_CONVERT_UUID_H

#include <stdbool.h>
#include <stddef.h>
#include <stdint.h>

#include "halvane/base/export.h"
#include "halvane/base/status.h"

#ifdef __cplusplus
extern "C" {
#endif

enum { kUUIDSize = 16, kUUIDTextSize = 37 /* with the terminator */ };

/* Writes "xxxxxxxx-xxxx-xxxx-xxxx-xxxxxxxxxxxx" in lower case into a buffer of kUUIDTextSize, which
 * it answers. */
HALVANE_EXPORT char* UUIDtoCString(const void* uuid, bool isLittleEndian, char* buffer);

/* Reads that form, with digits of either case, from a text of `length` characters (SIZE_MAX:
 * NUL-terminated) into 16 bytes, which are untouched after a failure:
 *
 *   kStatusWrongLength  the text is not of 36 characters
 *   kStatusMalformed    it has not this form. Each pair of digits is a %2hhx field of
 *                       halvane/utils/scan/scanf.h, to which "+1", "-1" and "-" are numbers as
 * well, and which may have white space before it kStatusUnsupported  it is null */
HALVANE_EXPORT HalvaneStatus StringToUUID(const char* text, size_t length, bool isLittleEndian,
                                          void* uuid);

/* Copies 16 bytes with the bytes of each of the first three fields reversed, which turns one order
 * into the other. The two places may overlap, and be one. */
HALVANE_EXPORT void EndianSwapUUIDMove(const void* source, void* destination);

#ifdef __cplusplus
}
#endif

#endif

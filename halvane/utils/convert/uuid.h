/* UUIDs (RFC 4122) to and from text.
 *
 * Usable from C11 and C++20. Any thread may call any function. The conventions of the
 * C layer are in halvane/utils/printf.h.
 *
 * A UUID is 16 bytes. Its first three fields (4, 2 and 2 bytes) have their most significant byte
 * first, as they are printed, or last if `isLittleEndian` is true. */
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

/* Writes "xxxxxxxx-xxxx-xxxx-xxxx-xxxxxxxxxxxx" in lower case into a buffer of kUUIDTextSize
 * bytes, and returns the buffer. */
HALVANE_EXPORT char* UUIDtoCString(const void* uuid, bool isLittleEndian, char* buffer);

/* Reads that form, with digits of either case, from a text of `length` characters (SIZE_MAX:
 * NUL-terminated) into 16 bytes, which are unchanged after a failure:
 *
 *   kStatusWrongLength  the text does not have 36 characters
 *   kStatusMalformed    it does not have this form. Each pair of digits is a %2hhx field of
 *                       halvane/utils/scan/scanf.h, which also accepts "+1", "-1" and "-" as
 *                       numbers, and white space before them
 *   kStatusUnsupported  the text is null */
HALVANE_EXPORT HalvaneStatus StringToUUID(const char* text, size_t length, bool isLittleEndian,
                                          void* uuid);

/* Copies 16 bytes with the bytes of each of the first three fields reversed, which turns one order
 * into the other. The two places may overlap or be the same. */
HALVANE_EXPORT void EndianSwapUUIDMove(const void* source, void* destination);

#ifdef __cplusplus
}
#endif

#endif

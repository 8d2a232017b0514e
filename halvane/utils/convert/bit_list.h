/* Lists of the bits that are set in an integer: "0,2,4" is 0x15.
 *
 * Usable from C11 and C++20. Any thread may call any function. */
#ifndef HALVANE_UTILS_CONVERT_BIT_LIST_H
#define HALVANE_UTILS_CONVERT_BIT_LIST_H

#include <stddef.h>
#include <stdint.h>

#include "halvane/base/export.h"
#include "halvane/base/status.h"

#ifdef __cplusplus
extern "C" {
#endif

enum { kBitListTextSize = 86 /* of all 32 bits, with the terminator */ };

/* Writes the numbers of the set bits, ascending and separated by ',', into a buffer of
 * kBitListTextSize bytes, and returns the buffer. The least significant bit is 0. Without a set
 * bit the text is empty. *length (may be null) is the length of the text without the terminator. */
HALVANE_EXPORT char* BitListString_Make(uint32_t bits, char* buffer, size_t* length);

/* Reads numbers from 0 to 31, separated by ',', in any order and with repetitions, from a text of
 * `length` characters (SIZE_MAX: NUL-terminated). An empty text sets no bit. *bits (may be null) is
 * unchanged after a failure:
 *
 *   kStatusMalformed    a number is missing, or another character is in the list
 *   kStatusOutOfRange   a number is above 31
 *   kStatusUnsupported  the text is null */
HALVANE_EXPORT HalvaneStatus BitListString_Parse(const char* text, size_t length, uint32_t* bits);

#ifdef __cplusplus
}
#endif

#endif

/* Hardware (MAC) addresses to and from hexadecimal text.
 *
 * Usable from C11 and C++20. Any thread may call any function. The conventions of the
 * C layer are in halvane/utils/printf.h. */
#ifndef HALVANE_UTILS_CONVERT_HARDWARE_ADDRESS_H
#define HALVANE_UTILS_CONVERT_HARDWARE_ADDRESS_H

#include <stddef.h>
#include <stdint.h>

#include "halvane/base/export.h"
#include "halvane/base/status.h"

#ifdef __cplusplus
extern "C" {
#endif

/* The buffer size for the text of `count` bytes, terminator included. */
#define HALVANE_HARDWARE_ADDRESS_TEXT_SIZE(count) ((count) > 0 ? 3 * (size_t)(count) : 1)

enum { kMACAddressSize = 6, kMACAddressTextSize = 18 };

/* Reads `count` bytes from a text of `length` characters (SIZE_MAX: NUL-terminated) into
 * `address`. A null `address` only checks the text. A byte is one hexadecimal digit of either
 * case, or two adjacent ones. One character that is not a digit may separate two bytes. After a
 * byte of two digits the next byte may also follow at once: "0:1a:2b:3c:4d:5e",
 * "00-1A-2B-3C-4D-5E", "001a2b3c4d5e". Any number of ':', '-' and ' ' may come before a byte.
 * Text after the last byte is ignored.
 *
 *   kStatusMalformed    another character, or the end of the text, is where a byte must begin
 *   kStatusUnsupported  the text is null
 *
 * `address` is unchanged after a failure. */
HALVANE_EXPORT HalvaneStatus TextToHardwareAddress(const char* text, size_t length, size_t count,
                                                   void* address);

/* Returns the same as an integer; the first byte is the most significant one. Returns 0 for a
 * text that TextToHardwareAddress refuses, and for a count other than 6 and 8. */
HALVANE_EXPORT uint64_t TextToHardwareAddressScalar(const char* text, size_t length, size_t count);

/* Writes each of `count` bytes as two upper-case hexadecimal digits, separated by ':', into a
 * buffer of HALVANE_HARDWARE_ADDRESS_TEXT_SIZE(count) bytes, and returns the buffer. A count of
 * 0 or less gives an empty text. */
HALVANE_EXPORT char* HardwareAddressToCString(const void* address, int count, char* buffer);

#ifdef __cplusplus
}
#endif

#endif

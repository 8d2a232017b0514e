/* Binary-coded decimals, as decimal text: 99 is 0x99 in BCD, which is 153 in decimal.
 *
 * Usable from C11 and C++20. Any thread may call any function. */
#ifndef HALVANE_UTILS_CONVERT_BCD_H
#define HALVANE_UTILS_CONVERT_BCD_H

#include <stddef.h>
#include <stdint.h>

#include "halvane/base/export.h"
#include "halvane/base/status.h"

#ifdef __cplusplus
extern "C" {
#endif

enum { kBCDTextSize = 21 /* of any number, with the terminator */ };

/* The greatest number of 16 decimal digits, which is what 64 bits hold in BCD. */
#define kBCDMax UINT64_C(9999999999999999)

/* Reads decimal digits from a text of `length` characters (SIZE_MAX: NUL-terminated) as a
 * number, and returns the number that its hexadecimal digits form in decimal: "153" gives 99. A
 * hexadecimal digit above 9 counts by its value, so "10", which is 0xA, gives 10.
 *
 * *end (may be null) becomes the first character that is not a digit. If the text does not begin
 * with a digit, is null, or holds a number beyond 64 bits, the result is 0 and *end is the text. */
HALVANE_EXPORT uint64_t BCDTextToInt(const char* text, size_t length, const char** end);

/* The inverse: 99 gives "153". Writes the text with a terminator into a buffer of `size` bytes;
 * kBCDTextSize bytes are always enough. The buffer is unchanged after a failure:
 *
 *   kStatusOutOfRange  the value is above kBCDMax
 *   kStatusNoRoom      the buffer is too small */
HALVANE_EXPORT HalvaneStatus BCDTextFromInt(uint64_t value, char* buffer, size_t size);

#ifdef __cplusplus
}
#endif

#endif

/* Integers at the start of a text of known length.
 *
 * Usable from C11 and C++20. Every function may be called from any thread. */
#ifndef HALVANE_UTILS_TEXT_INTEGER_H
#define HALVANE_UTILS_TEXT_INTEGER_H

#include <stddef.h>

#include "halvane/base/export.h"

#ifdef __cplusplus
extern "C" {
#endif

/* strtol of a text that ends after `length` bytes or at a NUL, whichever comes first (SIZE_MAX:
 * NUL-terminated), in the "C" locale and for an int: white space is skipped, then comes an optional
 * sign, then for base 16 an optional "0x", then digits and letters of the base, 2 to 36. In base 0
 * "0x" tells 16, another leading "0" 8, anything else 10. "0x" counts only before a digit.
 *
 * *end becomes the place behind the number, or `text` where there is none, and the answer is 0
 * then; `end` may be null. A number beyond int gives INT_MAX or INT_MIN, with errno ERANGE and *end
 * behind all of its digits; another base is answered by 0 and EINVAL. errno stays as it is
 * otherwise. */
HALVANE_EXPORT int strtoi(const char* text, size_t length, const char** end, int base);

#ifdef __cplusplus
}
#endif

#endif

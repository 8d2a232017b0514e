/* Numbers from text.
 *
 * Usable from C11 and C++20. Every function may be called from any thread. */
#ifndef HALVANE_UTILS_CONVERT_TEXT_NUMBER_H
#define HALVANE_UTILS_CONVERT_TEXT_NUMBER_H

#include <stddef.h>
#include <stdint.h>

#include "halvane/base/export.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Reads an integer from a text of `length` characters (SIZE_MAX: NUL-terminated), as strtol does:
 * white space, a sign, a prefix, digits; whatever follows is left. A number below INT32_MIN or
 * above INT32_MAX becomes that limit. A text without a number, and a null one, give 0.
 *
 * The prefix tells the base: 16 for "0x", 2 for "0b", in either case, where a digit of that base
 * follows. Without a prefix it is `defaultBase`, 2 to 36; a default base of 0 is 8 for a number
 * that a 0 leads, else 10. A default base to which 'x' or 'b' is a digit has no such prefix, but
 * that 16 takes "0x". Any other default base gives 0. */
HALVANE_EXPORT int32_t TextToInt32(const char* text, size_t length, int defaultBase);

#ifdef __cplusplus
}
#endif

#endif

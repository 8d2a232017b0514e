/* Numbers from text.
 *
 * Usable from C11 and C++20. Any thread may call any function. */
#ifndef HALVANE_UTILS_CONVERT_TEXT_NUMBER_H
#define HALVANE_UTILS_CONVERT_TEXT_NUMBER_H

#include <stddef.h>
#include <stdint.h>

#include "halvane/base/export.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Reads an integer from a text of `length` characters (SIZE_MAX: NUL-terminated), as strtol does:
 * white space, a sign, a prefix, digits. The rest of the text is ignored. A number below INT32_MIN
 * or above INT32_MAX becomes that limit. A null text, or one without a number, gives 0.
 *
 * A prefix sets the base: 16 for "0x", 2 for "0b", in either case, if a digit of that base
 * follows. Without a prefix the base is `defaultBase`, 2 to 36. A default base of 0 means 8 for a
 * number that begins with 0, otherwise 10. If 'x' or 'b' is a digit in the default base, that
 * prefix does not count, except that base 16 accepts "0x". Any other default base gives 0. */
HALVANE_EXPORT int32_t TextToInt32(const char* text, size_t length, int defaultBase);

#ifdef __cplusplus
}
#endif

#endif

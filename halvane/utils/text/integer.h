/* Integers at the start of a text of known length.
 *
 * Usable from C11 and C++20. Any thread may call any function. */
#ifndef HALVANE_UTILS_TEXT_INTEGER_H
#define HALVANE_UTILS_TEXT_INTEGER_H

#include <stddef.h>

#include "halvane/base/export.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Like strtol in the "C" locale, but for an int and for a text that ends after `length` bytes or
 * at a NUL, whichever comes first (SIZE_MAX: NUL-terminated). It skips white space and reads an
 * optional sign, then for base 16 an optional "0x", then digits and letters of the base, 2 to
 * 36. In base 0 "0x" means 16, any other leading "0" means 8, anything else 10. "0x" counts only
 * before a digit.
 *
 * *end becomes the position after the number; without a number it becomes `text` and the result
 * is 0. `end` may be null. A number beyond int gives INT_MAX or INT_MIN with errno ERANGE, and
 * *end is after all of its digits. Any other base gives 0 and EINVAL. Otherwise errno does not
 * change. */
HALVANE_EXPORT int strtoi(const char* text, size_t length, const char** end, int base);

#ifdef __cplusplus
}
#endif

#endif

/* Four-character codes: four characters in an integer, the first in its most significant byte.
 *
 * Usable from C11 and C++20. Any thread may call any function. */
#ifndef HALVANE_UTILS_CONVERT_FOUR_CHAR_CODE_H
#define HALVANE_UTILS_CONVERT_FOUR_CHAR_CODE_H

#include <stddef.h>
#include <stdint.h>

#include "halvane/base/export.h"

#ifdef __cplusplus
extern "C" {
#endif

enum { kFourCharCodeTextSize = 5 /* with the terminator */ };

/* Writes the four characters, with a space for a 0 byte, into a buffer of kFourCharCodeTextSize
 * bytes, and returns the buffer. Other bytes are written unchanged, printable or not. */
HALVANE_EXPORT char* FourCharCodeToCString(uint32_t code, char* buffer);

/* Returns the code of the first four of `length` characters (SIZE_MAX: NUL-terminated). NUL and
 * missing characters become spaces. A null text counts as an empty one. */
HALVANE_EXPORT uint32_t TextToFourCharCode(const char* text, size_t length);

#ifdef __cplusplus
}
#endif

#endif

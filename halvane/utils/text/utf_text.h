/* How long texts of Unicode are, and where they can be cut.
 *
 * Usable from C11 and C++20. Every function may be called from any thread. */
#ifndef HALVANE_UTILS_TEXT_UTF_TEXT_H
#define HALVANE_UTILS_TEXT_UTF_TEXT_H

#include <stddef.h>
#include <stdint.h>

#include "halvane/base/export.h"

#ifdef __cplusplus
extern "C" {
#endif

/* The greatest length, in bytes and not above `maximum`, to which UTF-8 text can be cut without
 * parting the bytes of a character. A text that is no longer than `maximum` keeps its length,
 * whatever it holds. SIZE_MAX as `length`: NUL-terminated; nothing behind `maximum` bytes is read
 * but the one that may be the terminator.
 *
 * Only the last character within `maximum` is looked at: a lead byte and the continuation bytes
 * behind it. They stay where they are as many as the lead byte announces, 6 at most, and go
 * together where they are fewer; of more, those beyond the character go, as continuation bytes do
 * that nothing leads. The first half of a
 * surrogate pair, which some encoders write as if it were a character (ED, then A0 to AF), goes as
 * well. */
HALVANE_EXPORT size_t TruncateUTF8(const char* text, size_t length, size_t maximum);

/* The number of code units before the first 0, and not above `length`. SIZE_MAX: 0-terminated. */
HALVANE_EXPORT size_t UTF16strlen(const uint16_t* text, size_t length);

#ifdef __cplusplus
}
#endif

#endif

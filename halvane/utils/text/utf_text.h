/* The length of Unicode texts, and where they can be cut.
 *
 * Usable from C11 and C++20. Any thread may call any function. */
#ifndef HALVANE_UTILS_TEXT_UTF_TEXT_H
#define HALVANE_UTILS_TEXT_UTF_TEXT_H

#include <stddef.h>
#include <stdint.h>

#include "halvane/base/export.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Returns the greatest length, in bytes and at most `maximum`, to which UTF-8 text can be cut
 * without splitting a character. A text not longer than `maximum` keeps its length, whatever it
 * contains. A `length` of SIZE_MAX means NUL-terminated; nothing after `maximum` bytes is read,
 * except the byte that may be the terminator.
 *
 * Only the last character within `maximum` is examined: a lead byte and the continuation bytes
 * after it. A complete character stays. It has as many bytes as the lead byte announces, at most
 * 6. An incomplete one is cut off. Surplus continuation bytes are cut off, and so are
 * continuation bytes without a lead byte. The first half of a surrogate pair, which some
 * encoders write as a character (ED, then A0 to AF), is cut off too. */
HALVANE_EXPORT size_t TruncateUTF8(const char* text, size_t length, size_t maximum);

/* Returns the number of code units before the first 0, at most `length`. SIZE_MAX means
 * 0-terminated. */
HALVANE_EXPORT size_t UTF16strlen(const uint16_t* text, size_t length);

#ifdef __cplusplus
}
#endif

#endif

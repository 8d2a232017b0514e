/* Escapes text for XML, as content and as the value of an attribute.
 *
 * Usable from C11 and C++20. Any thread may call any function.
 *
 * '&' becomes "&amp;", '"' "&quot;", ''' "&#39;", '<' "&lt;" and '>' "&gt;". All other bytes
 * stay unchanged, including characters that XML does not allow. The text has `length` bytes,
 * NULs included. SIZE_MAX is the length of a NUL-terminated text. A null text is an empty one. */
#ifndef HALVANE_UTILS_TEXT_XML_ESCAPE_H
#define HALVANE_UTILS_TEXT_XML_ESCAPE_H

#include <stddef.h>

#include "halvane/base/export.h"
#include "halvane/base/status.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Stores the length of the escaped text in *escapedLength. Unless `buffer` is null, also stores
 * the text there, without a terminator. A buffer of six times the text's length is always large
 * enough. `escapedLength` may be null. */
HALVANE_EXPORT void XMLEscape(const char* text, size_t length, char* buffer, size_t* escapedLength);

/* Stores the escaped text in *copy as a terminated heap string, and its length in
 * *escapedLength, which may be null. kStatusNoMemory: both are unchanged. */
HALVANE_EXPORT HalvaneStatus XMLEscapeCopy(const char* text, size_t length, char** copy,
                                           size_t* escapedLength);

#ifdef __cplusplus
}
#endif

#endif

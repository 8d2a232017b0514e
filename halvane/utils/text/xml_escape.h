/* Text made fit to stand in XML, as content and as the value of an attribute.
 *
 * Usable from C11 and C++20. Every function may be called from any thread.
 *
 * '&' becomes "&amp;", '"' "&quot;", ''' "&#39;", '<' "&lt;" and '>' "&gt;". All other bytes stay,
 * also those of characters that XML does not allow. The text has `length` bytes, NULs included; a
 * length of SIZE_MAX is that of a NUL-terminated text, and a null text is an empty one. */
#ifndef HALVANE_UTILS_TEXT_XML_ESCAPE_H
#define HALVANE_UTILS_TEXT_XML_ESCAPE_H

#include <stddef.h>

#include "halvane/base/export.h"
#include "halvane/base/status.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Stores in *escapedLength how many bytes the escaped text has, and, unless `buffer` is null, the
 * text in `buffer`: that many bytes, no terminator. Six times the text's length is always enough.
 * `escapedLength` may be null. */
HALVANE_EXPORT void XMLEscape(const char* text, size_t length, char* buffer, size_t* escapedLength);

/* Stores the escaped text in *copy as a heap string, terminated, and its length in *escapedLength,
 * which may be null. kStatusNoMemory: both untouched. */
HALVANE_EXPORT HalvaneStatus XMLEscapeCopy(const char* text, size_t length, char** copy,
                                           size_t* escapedLength);

#ifdef __cplusplus
}
#endif

#endif

/* Search in texts: for a part, with or without regard to case, and for how far they hold accepted
 * characters only.
 *
 * Usable from C11 and C++20. Every function may be called from any thread. The time a search takes
 * grows with the length of the text and that of what is searched for, never with their product.
 *
 * Strings end after `length` bytes or at a NUL, whichever comes first; a length of SIZE_MAX is that
 * of a NUL-terminated text. Nothing past it is read. Without regard to case the letters A-Z are
 * a-z, whatever the locale is.
 *
 * The last occurrence of a byte is found by memrchr of <string.h>, which that declares where
 * _GNU_SOURCE is defined. */
#ifndef HALVANE_UTILS_TEXT_SEARCH_H
#define HALVANE_UTILS_TEXT_SEARCH_H

#include <stddef.h>
#include <string.h>

#include "halvane/base/export.h"

#ifdef __cplusplus
extern "C" {
#endif

/* The first place of `pattern` in the text without regard to case; null: there is none. An empty
 * pattern is found at the start. The result points into the text. */
HALVANE_EXPORT char* stristr(const char* text, const char* pattern);
HALVANE_EXPORT char* strncasestr(const char* text, size_t length, const char* pattern);

/* How many bytes at the start of the text are characters of `accepted`. No NUL is, so that one ends
 * the span whatever the length. One function under two names. */
HALVANE_EXPORT size_t strnspn(const char* text, size_t length, const char* accepted);
HALVANE_EXPORT size_t strnspnx(const char* text, size_t length, const char* accepted);

/* The first place of the bytes of `pattern` in those of `text`; null: there is none. An empty
 * pattern is found at the start. NULs are bytes like others, unless a length is SIZE_MAX: then that
 * side is a NUL-terminated text. Either may be null where its length is 0. The result points into
 * `text`.
 *
 * By the method of Boyer and Moore: the end of the window tells how far the pattern can move on, so
 * that most bytes of the text are never looked at. */
HALVANE_EXPORT void* BoyerMooreSearch(const void* text, size_t textLength, const void* pattern,
                                      size_t patternLength);

#ifdef __cplusplus
}
#endif

#endif

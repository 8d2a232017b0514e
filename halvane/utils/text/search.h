/* Searches texts for another text, with or without regard to case, and measures how much of a
 * text consists of accepted characters.
 *
 * Usable from C11 and C++20. Any thread may call any function. The time of a search is
 * proportional to the sum of both lengths, never to their product.
 *
 * A string ends after `length` bytes or at a NUL, whichever comes first. SIZE_MAX is the length
 * of a NUL-terminated text. Nothing past the end is read. Functions that ignore case treat the
 * letters A-Z as a-z, whatever the locale is.
 *
 * To find the last occurrence of a byte, use memrchr of <string.h>, which is declared if
 * _GNU_SOURCE is defined. */
#ifndef HALVANE_UTILS_TEXT_SEARCH_H
#define HALVANE_UTILS_TEXT_SEARCH_H

#include <stddef.h>
#include <string.h>

#include "halvane/base/export.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Return the first occurrence of `pattern` in the text, ignoring case; null if there is none. An
 * empty pattern is found at the start. The result points into the text. */
HALVANE_EXPORT char* stristr(const char* text, const char* pattern);
HALVANE_EXPORT char* strncasestr(const char* text, size_t length, const char* pattern);

/* Return the number of bytes at the start of the text that are in `accepted`. NUL is never
 * accepted, so it ends the span whatever the length is. Both names are the same function. */
HALVANE_EXPORT size_t strnspn(const char* text, size_t length, const char* accepted);
HALVANE_EXPORT size_t strnspnx(const char* text, size_t length, const char* accepted);

/* Returns the first occurrence of the bytes of `pattern` in `text`; null if there is none. An
 * empty pattern is found at the start. A NUL is an ordinary byte, but a side whose length is
 * SIZE_MAX is a NUL-terminated text. Either pointer may be null if its length is 0. The result
 * points into `text`.
 *
 * The method is Boyer and Moore's: the end of the search window determines how far the pattern
 * can advance, so most bytes of the text are never read. */
HALVANE_EXPORT void* BoyerMooreSearch(const void* text, size_t textLength, const void* pattern,
                                      size_t patternLength);

#ifdef __cplusplus
}
#endif

#endif

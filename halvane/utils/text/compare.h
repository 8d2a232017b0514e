/* Compares texts: whole texts, prefixes and suffixes.
 *
 * Usable from C11 and C++20. Any thread may call any function.
 *
 * Each function returns 0 for a match. Otherwise it returns -1 or 1: the first byte that
 * differs, as an unsigned value, is less or greater in the text than in the other one. If one of
 * them ends first, it is less. The functions with an "i" treat the letters A-Z as a-z, whatever
 * the locale is; bytes of other characters are compared unchanged.
 *
 * A text has `length` bytes, NULs included: "ab" followed by a NUL, of length 3, is greater than
 * the C string "ab". SIZE_MAX is the length of a NUL-terminated text. Nothing past the end is
 * read. Nothing past the first difference is read either, except to measure a text whose end is
 * compared. */
#ifndef HALVANE_UTILS_TEXT_COMPARE_H
#define HALVANE_UTILS_TEXT_COMPARE_H

#include <stddef.h>

#include "halvane/base/export.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Compare the text with all of `cstring`: "Cons" is less than "console", ignoring case. */
HALVANE_EXPORT int strncmpx(const char* text, size_t length, const char* cstring);
HALVANE_EXPORT int strnicmpx(const char* text, size_t length, const char* cstring);

/* Return 0 if the text starts with `prefix`. */
HALVANE_EXPORT int strcmp_prefix(const char* text, const char* prefix);
HALVANE_EXPORT int stricmp_prefix(const char* text, const char* prefix);
HALVANE_EXPORT int strncmp_prefix(const char* text, size_t length, const char* prefix);
HALVANE_EXPORT int strnicmp_prefix(const char* text, size_t length, const char* prefix);

/* Return 0 if the text ends with `suffix`. Otherwise they compare its last bytes, as many as
 * `suffix` has, with `suffix`. A shorter text is less. */
HALVANE_EXPORT int strncmp_suffix(const char* text, size_t length, const char* suffix);
HALVANE_EXPORT int strnicmp_suffix(const char* text, size_t length, const char* suffix);

/* Compares `length` bytes at `a` with those at `b`. A NUL ends neither, and SIZE_MAX has no
 * special meaning. Both may be null if `length` is 0. */
HALVANE_EXPORT int memicmp(const void* a, const void* b, size_t length);

#ifdef __cplusplus
}
#endif

#endif

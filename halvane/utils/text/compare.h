/* Comparison of texts, whole, by their start and by their end.
 *
 * Usable from C11 and C++20. Every function may be called from any thread.
 *
 * Each answers 0 where what it looks for holds; else -1 or 1, as the first byte that differs,
 * unsigned, is less or greater in the text than in what the text is compared with. Where one of
 * them ends first, it is the lesser. The forms with an "i" take the letters A-Z for a-z, whatever
 * the locale is; bytes of other characters are compared as they are.
 *
 * A text has `length` bytes, NULs included: "ab" and a NUL behind it, of length 3, is greater than
 * the C string "ab". A length of SIZE_MAX is that of a NUL-terminated text. Nothing past it is
 * read, nor is anything of a text past the first difference, but for its length where its end is
 * looked at. */
#ifndef HALVANE_UTILS_TEXT_COMPARE_H
#define HALVANE_UTILS_TEXT_COMPARE_H

#include <stddef.h>

#include "halvane/base/export.h"

#ifdef __cplusplus
extern "C" {
#endif

/* The text with the whole of `cstring`: "Cons" is less than "console" without regard to case. */
HALVANE_EXPORT int strncmpx(const char* text, size_t length, const char* cstring);
HALVANE_EXPORT int strnicmpx(const char* text, size_t length, const char* cstring);

/* 0: the text starts with `prefix`. */
HALVANE_EXPORT int strcmp_prefix(const char* text, const char* prefix);
HALVANE_EXPORT int stricmp_prefix(const char* text, const char* prefix);
HALVANE_EXPORT int strncmp_prefix(const char* text, size_t length, const char* prefix);
HALVANE_EXPORT int strnicmp_prefix(const char* text, size_t length, const char* prefix);

/* 0: the text ends with `suffix`. Else its last bytes, as many as `suffix` has, are compared with
 * it; a shorter text is less. */
HALVANE_EXPORT int strncmp_suffix(const char* text, size_t length, const char* suffix);
HALVANE_EXPORT int strnicmp_suffix(const char* text, size_t length, const char* suffix);

/* All of the `length` bytes at `a` with those at `b`: a NUL ends neither, and SIZE_MAX has no
 * meaning of its own. Both may be null where `length` is 0. */
HALVANE_EXPORT int memicmp(const void* a, const void* b, size_t length);

#ifdef __cplusplus
}
#endif

#endif

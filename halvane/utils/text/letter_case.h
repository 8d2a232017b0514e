/* Letters changed to lower or to upper case.
 *
 * Usable from C11 and C++20. Every function may be called from any thread; the text is the
 * caller's. */
#ifndef HALVANE_UTILS_TEXT_LETTER_CASE_H
#define HALVANE_UTILS_TEXT_LETTER_CASE_H

#include <stddef.h>

#include "halvane/base/export.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Changes the letters A-Z to a-z, or the other way, in place and whatever the locale is; all other
 * bytes stay. The text ends after `length` bytes or at a NUL, whichever comes first; a length of
 * SIZE_MAX is that of a NUL-terminated text. Answers `text`. */
HALVANE_EXPORT char* tolowerstr(char* text, size_t length);
HALVANE_EXPORT char* toupperstr(char* text, size_t length);

#ifdef __cplusplus
}
#endif

#endif

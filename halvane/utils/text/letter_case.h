/* Changes letters to lower or upper case.
 *
 * Usable from C11 and C++20. Any thread may call any function; the caller owns the text. */
#ifndef HALVANE_UTILS_TEXT_LETTER_CASE_H
#define HALVANE_UTILS_TEXT_LETTER_CASE_H

#include <stddef.h>

#include "halvane/base/export.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Change the letters A-Z to a-z, or the reverse, in place and whatever the locale is. All other
 * bytes stay. The text ends after `length` bytes or at a NUL, whichever comes first. SIZE_MAX is
 * the length of a NUL-terminated text. The functions return `text`. */
HALVANE_EXPORT char* tolowerstr(char* text, size_t length);
HALVANE_EXPORT char* toupperstr(char* text, size_t length);

#ifdef __cplusplus
}
#endif

#endif

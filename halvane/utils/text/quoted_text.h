/* Tokens of a text in which quotes and backslashes protect characters.
 *
 * Usable from C11 and C++20. Every function may be called from any thread.
 *
 * The text begins at `text` and ends before `end`; NULs are bytes like others. Each function reads
 * one token and answers whether there was one: true, with
 *
 *   *copied  how many bytes of the token are in `buffer`, `capacity` at most
 *   *total   how many bytes the token has; those beyond the capacity are not stored
 *   *next    the place behind the delimiter that ended it, or `end`
 *
 * or false, with nothing written. No terminator is written, and a token may hold NULs. A delimiter
 * at the very end has no empty token behind it: a text of tokens is read by
 *
 *   while (ParseEscapedString(text, end, ',', buffer, sizeof(buffer), &copied, &total, &text))
 *
 * The result parameters may be null where they are not wanted, `buffer` where `capacity` is 0. */
#ifndef HALVANE_UTILS_TEXT_QUOTED_TEXT_H
#define HALVANE_UTILS_TEXT_QUOTED_TEXT_H

#include <stdbool.h>
#include <stddef.h>

#include "halvane/base/export.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Skips white space, then reads up to the delimiter outside of quotes; false: only white space was
 * left. Parts in quotes and parts without may follow each other: a"b c"'d' is one token, ab cd.
 *
 *   outside of quotes  " and ' begin a quoted part; a backslash before a byte of no form below
 *                      makes it an ordinary one
 *   "..."              up to the next ". Of backslashes, \" and \\ and the forms below count; one
 *                      before anything else stays
 *   '...'              up to the next ', all of it as it is
 *
 *   \ newline          is removed; one before anything else of a token begins it, so that white
 *                      space behind it is not skipped, and alone it is an empty token
 *   \xHH \XHH          the byte of two hexadecimal digits
 *   \OOO               the byte of three octal digits, the first 0 to 3
 *
 * A quoted part that is never closed ends with the text; a backslash at the very end stays. */
HALVANE_EXPORT bool ParseQuotedEscapedString(const char* text, const char* end, char delimiter,
                                             char* buffer, size_t capacity, size_t* copied,
                                             size_t* total, const char** next);

/* The same without quotes and without other escapes: a backslash makes the byte behind it an
 * ordinary one, whatever it is, and one at the very end stays. White space is not skipped; false:
 * nothing was left. */
HALVANE_EXPORT bool ParseEscapedString(const char* text, const char* end, char delimiter,
                                       char* buffer, size_t capacity, size_t* copied, size_t* total,
                                       const char** next);

#ifdef __cplusplus
}
#endif

#endif

/* Tokens of a text in which quotes and backslashes protect characters.
 *
 * Usable from C11 and C++20. Any thread may call any function.
 *
 * The text begins at `text` and ends before `end`. A NUL is an ordinary byte. Each function reads
 * one token and returns whether there was one. If it returns true, it has set
 *
 *   *copied  the number of bytes of the token in `buffer`, at most `capacity`
 *   *total   the number of bytes of the token; bytes beyond the capacity are not stored
 *   *next    the position after the delimiter that ended the token, or `end`
 *
 * If it returns false, it has written nothing. No terminator is written, and a token may contain
 * NULs. A delimiter at the end of the text is not followed by an empty token. This loop reads
 * all tokens of a text:
 *
 *   while (ParseEscapedString(text, end, ',', buffer, sizeof(buffer), &copied, &total, &text))
 *
 * Unused result parameters may be null; `buffer` may be null if `capacity` is 0. */
#ifndef HALVANE_UTILS_TEXT_QUOTED_TEXT_H
#define HALVANE_UTILS_TEXT_QUOTED_TEXT_H

#include <stdbool.h>
#include <stddef.h>

#include "halvane/base/export.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Skips white space, then reads up to the delimiter outside of quotes. Returns false if only
 * white space was left. Quoted and unquoted parts may follow each other: a"b c"'d' is one token,
 * ab cd.
 *
 *   outside of quotes  " and ' begin a quoted part. A backslash makes the next byte an
 *                      ordinary one, unless they form an escape below.
 *   "..."              Ends at the next ". The backslash escapes are \" and \\ and those below. A
 *                      backslash before any other byte stays.
 *   '...'              Ends at the next '. Every byte stays as it is.
 *
 *   \ newline          Both are removed. At the beginning of a token they begin it: white space
 *                      after them is not skipped, and alone they are an empty token.
 *   \xHH \XHH          The byte of two hexadecimal digits.
 *   \OOO               The byte of three octal digits, the first 0 to 3.
 *
 * The end of the text closes an open quoted part. A backslash at the end of the text stays. */
HALVANE_EXPORT bool ParseQuotedEscapedString(const char* text, const char* end, char delimiter,
                                             char* buffer, size_t capacity, size_t* copied,
                                             size_t* total, const char** next);

/* The same without quotes and other escapes: a backslash makes any next byte an ordinary one. A
 * backslash at the end of the text stays. White space is not skipped. Returns false if nothing
 * was left. */
HALVANE_EXPORT bool ParseEscapedString(const char* text, const char* end, char delimiter,
                                       char* buffer, size_t capacity, size_t* copied, size_t* total,
                                       const char** next);

#ifdef __cplusplus
}
#endif

#endif

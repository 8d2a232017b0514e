/* Texts cut into lines, into pieces between separators, and into the items of a comma list.
 *
 * Usable from C11 and C++20. Every function may be called from any thread.
 *
 * A text begins at `text` and ends before `end`; NULs are bytes like others. The functions that
 * read one piece answer whether there was one, which nothing but the end of the text prevents;
 * else they write nothing. What they find are places in the text, nothing is copied and nothing
 * terminated. *next becomes the place behind what ended the piece: a text is read to its end by
 *
 *   for (; TextSep(text, end, ",", &length, &next); text = next) use(text, length);
 *
 * What ends a piece at the very end of the text has no empty piece behind it; elsewhere pieces may
 * be empty, and blanks are part of them. Result parameters may be null where they are not wanted.
 */
#ifndef HALVANE_UTILS_TEXT_SPLIT_H
#define HALVANE_UTILS_TEXT_SPLIT_H

#include <stdbool.h>
#include <stddef.h>

#include "halvane/base/export.h"
#include "halvane/base/status.h"
#include "halvane/utils/text/owned_text.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Reads the line at `text`, *length bytes without what ends it: a newline, a carriage return, or
 * both in this order. */
HALVANE_EXPORT bool ParseLine(const char* text, const char* end, size_t* length, const char** next);

/* Reads the piece at `text`, *length bytes up to the next character of `separators`. Without any
 * separators, that is all of the text. */
HALVANE_EXPORT bool TextSep(const char* text, const char* end, const char* separators,
                            size_t* length, const char** next);

/* Reads one item of a list such as "name=value,flag,other=a\,b", up to the next comma. The white
 * space before it is skipped, and where there is nothing else the answer is false. The name ends at
 * the first '=', the value is what follows it; *value is null and *valueLength 0 in an item without
 * '='. A backslash keeps the byte behind it from ending anything. Both stay in name and value:
 * ParseEscapedString (halvane/utils/text/quoted_text.h) takes them out. */
HALVANE_EXPORT bool ParseCommaSeparatedNameValuePair(const char* text, const char* end,
                                                     const char** name, size_t* nameLength,
                                                     const char** value, size_t* valueLength,
                                                     const char** next);

/* Stores the pieces that TextSep finds as *list, in their order, to be released with
 * StringListFree; null for an empty text. The text has `length` bytes (SIZE_MAX: NUL-terminated).
 * A NUL in a piece ends it for whoever takes it as a C string. kStatusNoMemory: *list is
 * untouched. */
HALVANE_EXPORT HalvaneStatus SplitText(const char* text, size_t length, const char* separators,
                                       StringList** list);

#ifdef __cplusplus
}
#endif

#endif

/* Splits texts into lines, into pieces between separators, and into the items of a
 * comma-separated list.
 *
 * Usable from C11 and C++20. Any thread may call any function.
 *
 * A text begins at `text` and ends before `end`. A NUL is an ordinary byte. A function that
 * reads one piece returns false and writes nothing at the end of the text, and true otherwise.
 * The pieces are places in the text: nothing is copied or terminated. *next becomes the position
 * after the separator that ended the piece. This loop reads all pieces of a text:
 *
 *   for (; TextSep(text, end, ",", &length, &next); text = next) use(text, length);
 *
 * A separator at the end of the text is not followed by an empty piece. Elsewhere pieces may be
 * empty. Blanks belong to the pieces. Unused result parameters may be null. */
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

/* Reads the line at `text`. *length excludes the line end: a newline, a carriage return, or a
 * carriage return and a newline. */
HALVANE_EXPORT bool ParseLine(const char* text, const char* end, size_t* length, const char** next);

/* Reads the piece at `text`: *length bytes up to the next character of `separators`. Without
 * separators the piece is the whole text. */
HALVANE_EXPORT bool TextSep(const char* text, const char* end, const char* separators,
                            size_t* length, const char** next);

/* Reads one item of a list such as "name=value,flag,other=a\,b", up to the next comma. White
 * space before the item is skipped; if nothing else is left, the function returns false. The
 * name ends at the first '='; the value follows it. In an item without '=', *value is null and
 * *valueLength is 0. A byte after a backslash ends nothing. Both bytes stay in the name or
 * value; ParseEscapedString (halvane/utils/text/quoted_text.h) removes the backslash. */
HALVANE_EXPORT bool ParseCommaSeparatedNameValuePair(const char* text, const char* end,
                                                     const char** name, size_t* nameLength,
                                                     const char** value, size_t* valueLength,
                                                     const char** next);

/* Stores the pieces that TextSep finds in *list, in order; null for an empty text. The caller
 * frees the list with StringListFree. The text has `length` bytes (SIZE_MAX: NUL-terminated). A
 * piece that contains a NUL seems to end there when it is used as a C string. kStatusNoMemory:
 * *list is unchanged. */
HALVANE_EXPORT HalvaneStatus SplitText(const char* text, size_t length, const char* separators,
                                       StringList** list);

#ifdef __cplusplus
}
#endif

#endif

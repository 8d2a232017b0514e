/* Splits command lines that people write as one text.
 *
 * Usable from C11 and C++20. Any thread may call any function. */
#ifndef HALVANE_UTILS_TEXT_COMMAND_LINE_TEXT_H
#define HALVANE_UTILS_TEXT_COMMAND_LINE_TEXT_H

#include "halvane/base/export.h"
#include "halvane/base/status.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Splits a NUL-terminated text at white space into arguments, with the quotes and escapes of
 * ParseQuotedEscapedString (halvane/utils/text/quoted_text.h). "" is an empty argument. A
 * backslash and a newline before an argument are skipped like white space. An escaped NUL ends
 * its argument when that is used as a C string.
 *
 * kStatusOK: *vector holds *count arguments and a null pointer after them. Its strings may be
 * changed in place, and its pointers reordered. Free it with FreeCommandLineArgV, not with
 * free(). kStatusNoMemory, and kStatusUnsupported for a null text: nothing was written. Neither
 * `count` nor `vector` may be null. */
HALVANE_EXPORT HalvaneStatus ParseCommandLineIntoArgV(const char* text, int* count, char*** vector);

/* `vector` may be null. */
HALVANE_EXPORT void FreeCommandLineArgV(char** vector);

#ifdef __cplusplus
}
#endif

#endif

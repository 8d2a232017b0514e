/* Makes names fit to be shown.
 *
 * Usable from C11 and C++20. Any thread may call any function. A text has `length` bytes, NULs
 * included. SIZE_MAX is the length of a NUL-terminated text. */
#ifndef HALVANE_UTILS_TEXT_CLEAN_TEXT_H
#define HALVANE_UTILS_TEXT_CLEAN_TEXT_H

#include <stdbool.h>
#include <stddef.h>

#include "halvane/base/export.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Whether every byte is printable ASCII, 0x20 to 0x7E. True for an empty text. */
HALVANE_EXPORT bool IsASCII7PrintableString(const char* text, size_t length);

/* Copy a text without the spaces and unprintable characters at its start and end. Unprintable
 * characters in between become '^', as in formatted output. At most size - 1 bytes and a
 * terminator are copied, or nothing if `size` is 0. `buffer` may be `text`. The functions return
 * `buffer`.
 *
 * CleanseDiskString is for the names that disks report, which are ASCII: every byte except 0x20
 * to 0x7E is unprintable. CleanseHFSVolumeName is for the names of volumes, which are UTF-8:
 * only ASCII control characters are unprintable, and no character is split. */
HALVANE_EXPORT char* CleanseDiskString(const char* text, size_t length, char* buffer, size_t size);
HALVANE_EXPORT char* CleanseHFSVolumeName(const char* text, size_t length, char* buffer,
                                          size_t size);

#ifdef __cplusplus
}
#endif

#endif

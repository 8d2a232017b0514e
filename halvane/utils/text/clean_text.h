/* Names made fit to be shown.
 *
 * Usable from C11 and C++20. Every function may be called from any thread. A text has `length`
 * bytes, NULs included; a length of SIZE_MAX is that of a NUL-terminated text. */
#ifndef HALVANE_UTILS_TEXT_CLEAN_TEXT_H
#define HALVANE_UTILS_TEXT_CLEAN_TEXT_H

#include <stdbool.h>
#include <stddef.h>

#include "halvane/base/export.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Whether every byte is printable ASCII, 0x20 to 0x7E. An empty text is. */
HALVANE_EXPORT bool IsASCII7PrintableString(const char* text, size_t length);

/* Copy a text without the spaces and unprintable characters at its start and its end; those within
 * become '^', as in formatted output. At most size - 1 bytes are copied, and a terminator, unless
 * `size` is 0. `buffer` may be `text`. Answers `buffer`.
 *
 * Names that disks tell of themselves are ASCII: every byte but 0x20 to 0x7E is unprintable. Names
 * of volumes are UTF-8: only control characters of ASCII are, and no character is cut in two. */
HALVANE_EXPORT char* CleanseDiskString(const char* text, size_t length, char* buffer, size_t size);
HALVANE_EXPORT char* CleanseHFSVolumeName(const char* text, size_t length, char* buffer,
                                          size_t size);

#ifdef __cplusplus
}
#endif

#endif

/* Bytes to and from hexadecimal text.
 *
 * Usable from C11 and C++20. Every function may be called from any thread. The conventions of the
 * C layer stand in halvane/utils/printf.h. Texts have a length in characters; SIZE_MAX is that of a
 * NUL-terminated text. */
#ifndef HALVANE_UTILS_CONVERT_HEX_DATA_H
#define HALVANE_UTILS_CONVERT_HEX_DATA_H

#include <stddef.h>
#include <stdint.h>

#include "halvane/base/export.h"
#include "halvane/base/status.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Bits of the flags of HexToData. */
enum {
    kHexToDataFlagZeroFill = 1 << 0,       /* the rest of the buffer becomes 0 */
    kHexToDataFlagSkipSpace = 1 << 1,      /* white space may stand between digits */
    kHexToDataFlagSkipSeparators = 1 << 2, /* '-', ':' and '_' may stand between digits */
    kHexToDataFlagNoOddDigit = 1 << 3      /* a last digit without a second one is left out */
};

/* Reads pairs of hexadecimal digits of either case as bytes, after any white space and one "0x" or
 * "0X". A last digit without a second one is the upper half of a byte, unless the flags leave it
 * out. What the flags skip may stand between any two digits, and at the end.
 *
 *   buffer   takes the first `capacity` bytes; null takes none
 *   written  how many bytes the buffer took; may be null
 *   total    how many bytes the text holds; may be null
 *   end      the first character that belongs to none of these; may be null
 *
 * 0, also for a text without digits, or kStatusUnsupported for a null text. */
HALVANE_EXPORT HalvaneStatus HexToData(const char* text, size_t length, uint32_t flags,
                                       void* buffer, size_t capacity, size_t* written,
                                       size_t* total, const char** end);

/* HexToData into memory of the right size, which the caller frees, also for no bytes at all.
 * `size` and `end` may be null. The outputs are untouched after kStatusUnsupported (a null text)
 * and kStatusNoMemory. */
HALVANE_EXPORT HalvaneStatus HexToDataCopy(const char* text, size_t length, uint32_t flags,
                                           uint8_t** data, size_t* size, const char** end);

/* A whole text as people write bytes: HexToData that skips white space and separators, and takes
 * nothing else. `size` may be null. Buffer and size are untouched after a failure.
 *
 *   kStatusMalformed    the text holds another character
 *   kStatusNoRoom       the buffer is too small
 *   kStatusUnsupported  the text is null */
HALVANE_EXPORT HalvaneStatus HexTextToData(const char* text, size_t length, void* buffer,
                                           size_t capacity, size_t* size);

/* The same into memory of the right size, which the caller frees; kStatusNoMemory where there is
 * none. */
HALVANE_EXPORT HalvaneStatus HexTextToDataCopy(const char* text, size_t length, uint8_t** data,
                                               size_t* size);

/* The buffer that the text of `count` bytes needs, with the terminator. */
#define HALVANE_HEX_TEXT_SIZE(count) (2 * (size_t)(count) + 1)

/* Digit tables for DataToHexCStringEx. */
#define kHexDigitsLowercase "0123456789abcdef"
#define kHexDigitsUppercase "0123456789ABCDEF"

/* Writes two characters of the table `digits`, which has 16, for each byte, into a buffer of
 * HALVANE_HEX_TEXT_SIZE(count), which it answers. `data` may be null for a count of 0. */
HALVANE_EXPORT char* DataToHexCStringEx(const void* data, size_t count, char* buffer,
                                        const char* digits);

#ifdef __cplusplus
}
#endif

#endif

/* Bytes to and from hexadecimal text.
 *
 * Usable from C11 and C++20. Any thread may call any function. The conventions of the
 * C layer are in halvane/utils/printf.h. Texts have a length in characters; SIZE_MAX is that of a
 * NUL-terminated text. */
#ifndef HALVANE_UTILS_CONVERT_HEX_DATA_H
#define HALVANE_UTILS_CONVERT_HEX_DATA_H

#include <stddef.h>
#include <stdint.h>

#include "halvane/base/export.h"
#include "halvane/base/hex_digits.h"
#include "halvane/base/status.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Bits of the flags of HexToData. */
enum {
    kHexToDataFlagZeroFill = 1 << 0,       /* the rest of the buffer becomes 0 */
    kHexToDataFlagSkipSpace = 1 << 1,      /* white space may stand between digits */
    kHexToDataFlagSkipSeparators = 1 << 2, /* '-', ':' and '_' may stand between digits */
    kHexToDataFlagNoOddDigit = 1 << 3      /* a last digit without a partner is ignored */
};

/* Reads pairs of hexadecimal digits of either case as bytes, after optional white space and an
 * optional "0x" or "0X". A last digit without a partner is the upper half of a byte, unless the
 * flags ignore it. The characters that the flags skip may come between any two digits and at the
 * end.
 *
 *   buffer   receives the first `capacity` bytes; null receives none
 *   written  the number of bytes stored in the buffer; may be null
 *   total    the number of bytes in the text; may be null
 *   end      the first character that belongs to none of these; may be null
 *
 * Returns 0, also for a text without digits, or kStatusUnsupported for a null text. */
HALVANE_EXPORT HalvaneStatus HexToData(const char* text, size_t length, uint32_t flags,
                                       void* buffer, size_t capacity, size_t* written,
                                       size_t* total, const char** end);

/* HexToData into memory of the right size, which the caller frees, even if it holds no bytes.
 * `size` and `end` may be null. The outputs are unchanged after kStatusUnsupported (a null text)
 * and kStatusNoMemory. */
HALVANE_EXPORT HalvaneStatus HexToDataCopy(const char* text, size_t length, uint32_t flags,
                                           uint8_t** data, size_t* size, const char** end);

/* Reads a whole text in the forms that people write: like HexToData with white space and separators
 * skipped, but nothing else may be in the text. `size` may be null. Buffer and size are unchanged
 * after a failure.
 *
 *   kStatusMalformed    the text holds another character
 *   kStatusNoRoom       the buffer is too small
 *   kStatusUnsupported  the text is null */
HALVANE_EXPORT HalvaneStatus HexTextToData(const char* text, size_t length, void* buffer,
                                           size_t capacity, size_t* size);

/* The same into memory of the right size, which the caller frees; kStatusNoMemory if out of
 * memory. */
HALVANE_EXPORT HalvaneStatus HexTextToDataCopy(const char* text, size_t length, uint8_t** data,
                                               size_t* size);

/* The buffer size for the text of `count` bytes, terminator included. */
#define HALVANE_HEX_TEXT_SIZE(count) (2 * (size_t)(count) + 1)

/* Writes two characters of the table `digits`, which has 16, for each byte into a buffer of
 * HALVANE_HEX_TEXT_SIZE(count) bytes, and returns the buffer. The tables kHexDigitsLowercase and
 * kHexDigitsUppercase are in halvane/base/hex_digits.h. `data` may be null if the count is 0. */
HALVANE_EXPORT char* DataToHexCStringEx(const void* data, size_t count, char* buffer,
                                        const char* digits);

#ifdef __cplusplus
}
#endif

#endif

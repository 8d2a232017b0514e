/* Numbers after names that make them unique: "Name (2)" or "name-2".
 *
 * Usable from C11 and C++20. Any thread may call any function, but only one thread at a time for
 * one text.
 *
 * There are two styles. The parenthesised suffix is a space and the number in parentheses. The
 * dashed suffix is a '-' and the number. When a suffix is read, the space or the '-' may be
 * missing. Numbers are decimal; a number beyond 64 bits counts as UINT64_MAX.
 *
 * A text has `length` bytes, NULs included, without a terminator: none is read or written. If
 * `length` is SIZE_MAX, the text is and stays NUL-terminated, and `capacity` includes the
 * terminator.
 *
 * Functions that change a text do so in place, and store its new length, without a terminator,
 * in *newLength. No argument may be null. */
#ifndef HALVANE_UTILS_TEXT_NUMERIC_SUFFIX_H
#define HALVANE_UTILS_TEXT_NUMERIC_SUFFIX_H

#include <stdbool.h>
#include <stddef.h>
#include <stdint.h>

#include "halvane/base/export.h"
#include "halvane/base/status.h"

#ifdef __cplusplus
extern "C" {
#endif

enum {
    kNumericSuffixThreshold = 10 /* of IncrementNumericSuffix */
};

/* Returns whether a text ends with a suffix: digits in parentheses, if the text has 4 or more
 * characters, or digits. */
HALVANE_EXPORT bool ContainsNumericSuffix(const char* text, size_t length, bool parenthesised);

/* Returns the number of the suffix and sets *newLength to the length without it. Without a
 * suffix it returns 0 and *newLength is the full length. The text does not change. */
HALVANE_EXPORT uint64_t RemoveNumericSuffix(const char* text, size_t length, bool parenthesised,
                                            size_t* newLength);

/* Appends " (number)" or "-number". The former replaces spaces at the end of the text. If the
 * suffix does not fit, the text is first cut as TruncateUTF8 (halvane/utils/text/utf_text.h)
 * does.
 *
 * kStatusNoRoom: the capacity cannot hold the suffix alone, plus the terminator of a terminated
 * text; nothing was written. */
HALVANE_EXPORT HalvaneStatus AppendNumericSuffix(char* text, size_t length, size_t capacity,
                                                 uint64_t number, bool parenthesised,
                                                 size_t* newLength);

/* Gives the text the next number. A text without a number gets 2. A number N below `threshold`
 * becomes N + 1. Other numbers become N + 1 plus a random number from 0 to 127, so that programs
 * that ask for the same name at once spread out. After the last 64-bit number comes 2. The first
 * form uses the threshold kNumericSuffixThreshold. Returns the same statuses as
 * AppendNumericSuffix. */
HALVANE_EXPORT HalvaneStatus IncrementNumericSuffix(char* text, size_t length, size_t capacity,
                                                    bool parenthesised, size_t* newLength);
HALVANE_EXPORT HalvaneStatus IncrementNumericSuffixEx(char* text, size_t length, size_t capacity,
                                                      bool parenthesised, size_t* newLength,
                                                      uint64_t threshold);

#ifdef __cplusplus
}
#endif

#endif

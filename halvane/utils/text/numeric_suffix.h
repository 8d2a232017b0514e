/* Numbers behind names that make them unique: "Name (2)" or "name-2".
 *
 * Usable from C11 and C++20. Every function may be called from any thread, on one text by one
 * thread at a time.
 *
 * There are two styles. In the parenthesised one the suffix is a space and the number in
 * parentheses; in the dashed one it is a '-' and the number. Where a suffix is read, the space or
 * the '-' may be missing. Numbers are decimal; those beyond 64 bits count as UINT64_MAX.
 *
 * A text has `length` bytes, NULs included, and no terminator: none is read or written. With a
 * length of SIZE_MAX the text is NUL-terminated, and stays so: the terminator is among the
 * `capacity` bytes that it may fill.
 *
 * Functions that change a text do so in place and store its new length, without a terminator, in
 * *newLength. No argument may be null. */
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

/* Whether a text ends with a suffix: with digits in parentheses, and 4 characters or more in all;
 * or with digits. */
HALVANE_EXPORT bool ContainsNumericSuffix(const char* text, size_t length, bool parenthesised);

/* The number of the suffix, with *newLength the length without it; 0 and all of the length where
 * there is none. The text itself stays as it is. */
HALVANE_EXPORT uint64_t RemoveNumericSuffix(const char* text, size_t length, bool parenthesised,
                                            size_t* newLength);

/* Appends " (number)", without the spaces that the text ends with, or "-number". Where that does
 * not fit, the text is cut before, as TruncateUTF8 (halvane/utils/text/utf_text.h) does.
 *
 * kStatusNoRoom: the capacity does not hold the suffix alone, with its terminator if the text has
 * one; nothing was written. */
HALVANE_EXPORT HalvaneStatus AppendNumericSuffix(char* text, size_t length, size_t capacity,
                                                 uint64_t number, bool parenthesised,
                                                 size_t* newLength);

/* Gives the text the next number: 2 where it has none; the one behind its number N where that is
 * below `threshold`; else N + 1 and a random number from 0 to 127, so that many who ask for the
 * same name at once spread out. Behind the last number of 64 bits comes 2. The first form has the
 * threshold kNumericSuffixThreshold. Results are those of AppendNumericSuffix. */
HALVANE_EXPORT HalvaneStatus IncrementNumericSuffix(char* text, size_t length, size_t capacity,
                                                    bool parenthesised, size_t* newLength);
HALVANE_EXPORT HalvaneStatus IncrementNumericSuffixEx(char* text, size_t length, size_t capacity,
                                                      bool parenthesised, size_t* newLength,
                                                      uint64_t threshold);

#ifdef __cplusplus
}
#endif

#endif

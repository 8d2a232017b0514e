/* Texts for numbers.
 *
 * Usable from C11 and C++20. Any thread may call any function. */
#ifndef HALVANE_UTILS_TEXT_VALUE_TEXT_H
#define HALVANE_UTILS_TEXT_VALUE_TEXT_H

#include <stddef.h>

#include "halvane/base/export.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Returns the text for `value` from the pairs after `size`. Each pair is a const char* and an
 * int, in this order. A null const char* ends the list:
 *
 *   MapValueToString(state, "state %d", buffer, sizeof(buffer),
 *                    "idle", 0, "running", 1, (const char*)NULL)
 *
 * For a value without a pair, snprintf of <stdio.h> formats `value`, an int, with `format` into
 * `buffer`, and the function returns `buffer`. The text is cut to size - 1 bytes and terminated.
 * If `buffer` is null or `size` is 0, the function returns `format`, which may be null. `format`
 * must be trusted like code. */
HALVANE_EXPORT const char* MapValueToString(int value, const char* format, char* buffer,
                                            size_t size, ...);

/* Returns the English suffix of an ordinal number: "st", "nd", "rd" or "th", a static string.
 * The sign of `number` makes no difference. */
HALVANE_EXPORT const char* NumberToOrdinalSuffixCString(int number);

#ifdef __cplusplus
}
#endif

#endif

/* Texts for numbers.
 *
 * Usable from C11 and C++20. Every function may be called from any thread. */
#ifndef HALVANE_UTILS_TEXT_VALUE_TEXT_H
#define HALVANE_UTILS_TEXT_VALUE_TEXT_H

#include <stddef.h>

#include "halvane/base/export.h"

#ifdef __cplusplus
extern "C" {
#endif

/* The text that belongs to `value` in the pairs behind `size`: each a const char* and an int, in
 * this order, with a null const char* behind the last:
 *
 *   MapValueToString(state, "state %d", buffer, sizeof(buffer),
 *                    "idle", 0, "running", 1, (const char*)NULL)
 *
 * For a value of no pair, snprintf of <stdio.h> formats `value`, an int, with `format` into
 * `buffer`, and the answer is `buffer`; the text is cut to size - 1 bytes and terminated. Without a
 * buffer, that is a null one or a `size` of 0, the answer is `format`, which may be null. A format
 * is trusted as code is. */
HALVANE_EXPORT const char* MapValueToString(int value, const char* format, char* buffer,
                                            size_t size, ...);

/* What English writes behind an ordinal number: "st", "nd", "rd" or "th", a static string. The sign
 * of `number` makes no difference. */
HALVANE_EXPORT const char* NumberToOrdinalSuffixCString(int number);

#ifdef __cplusplus
}
#endif

#endif

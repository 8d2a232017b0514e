/* The order in which people list names: numbers in names are ordered by value.
 *
 * Usable from C11 and C++20. Any thread may call any function. */
#ifndef HALVANE_UTILS_TEXT_NATURAL_ORDER_H
#define HALVANE_UTILS_TEXT_NATURAL_ORDER_H

#include <stdbool.h>
#include <stddef.h>

#include "halvane/base/export.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Returns -1, 0 or 1 if `a` comes before `b`, equals `b` or comes after it. Texts are compared
 * byte by byte, as unsigned values, and without regard to the case of ASCII letters unless
 * `caseSensitive` is true. Runs of ASCII digits, of any length, are compared by value; of two
 * equal values, the one with more leading zeros comes after: "a2", "a7", "a07", "a10". A text
 * comes after its own prefixes.
 *
 * This is a strict weak order, fit for sorting. If `caseSensitive` is true, only texts of the
 * same bytes are equal. Lengths are in bytes, NULs included; SIZE_MAX means NUL-terminated. A
 * null text counts as an empty one. */
HALVANE_EXPORT int TextCompareNatural(const char* a, size_t aLength, const char* b, size_t bLength,
                                      bool caseSensitive);

#ifdef __cplusplus
}
#endif

#endif

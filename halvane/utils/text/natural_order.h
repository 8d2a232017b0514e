/* The order in which people list names: by numbers where there are numbers.
 *
 * Usable from C11 and C++20. Every function may be called from any thread. */
#ifndef HALVANE_UTILS_TEXT_NATURAL_ORDER_H
#define HALVANE_UTILS_TEXT_NATURAL_ORDER_H

#include <stdbool.h>
#include <stddef.h>

#include "halvane/base/export.h"

#ifdef __cplusplus
extern "C" {
#endif

/* -1, 0 or 1: `a` comes before `b`, is its equal, or comes after it. Texts are compared byte by
 * byte, unsigned, and without regard to the case of ASCII letters unless `caseSensitive`; runs of
 * ASCII digits, of any length, are compared by their value, and of two equal values the one with
 * more leading zeros comes after: "a2", "a7", "a07", "a10". A text comes after its own start.
 *
 * This is a strict weak order, fit for sorting; with `caseSensitive` only texts of the same bytes
 * are equal. Each length is that of the text, NULs included; SIZE_MAX: NUL-terminated. A null text
 * is an empty one. */
HALVANE_EXPORT int TextCompareNatural(const char* a, size_t aLength, const char* b, size_t bLength,
                                      bool caseSensitive);

#ifdef __cplusplus
}
#endif

#endif

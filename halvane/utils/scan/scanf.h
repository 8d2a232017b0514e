/* Formatted scanning of a text of known length.
 *
 * Usable from C11 and C++20. Any thread may call any function; the caller owns the text and the
 * destinations.
 *
 * The input ends after `length` characters or at a NUL, whichever comes first. SIZE_MAX is the
 * length of a NUL-terminated text. Nothing past the end is read. White space is that of the "C"
 * locale. A null text or format counts as an empty one.
 *
 * The format holds:
 *
 *   white space   skips any white space in the input, possibly none
 *   %             a conversion: %[flags][width][size]conversion
 *   any other     must equal the next character of the input
 *
 *   flags   *  scans without assigning, and takes no destination
 *           &  for c, s and [: stores the place and length of the text, in const char** and
 *              size_t* (a null one is skipped), instead of a copy
 *           #  allows an empty field of c, s and [, which otherwise ends scanning
 *   width   digits, or '.' for an int argument (negative ends scanning): the greatest number of
 *           characters in a field, without the white space before it; 2147483647 by default
 *   size    hh int8_t, h int16_t, none int32_t, l ll j t z int64_t: the type of the stored
 *           integer, signed or unsigned. p is always uint64_t.
 *
 *   d u  o  x X p  b   an integer of base 10, 8, 16 ("0x" may lead), 2 ("0b" may lead)
 *   i       an integer whose prefix sets the base: "0x", "0b", "0", otherwise 10
 *   c       `width` characters, 1 without a width, not terminated. With & and without a width,
 *           all remaining characters; with both, at most that many.
 *   s       characters up to white space, terminated: the destination holds width + 1
 *   [set]   characters of the set, or not of it after '^', terminated as for s. A ']' that comes
 *           first belongs to the set; a '-' is a '-'. A size ends scanning.
 *   n       the number of characters consumed so far, into int32_t. It does not count as an
 *           assigned item. A size, a width or * ends scanning.
 *   %       a '%'
 *
 * Integers and s skip white space first, the others do not. An integer may have a sign. The
 * width includes the sign and the prefix. A prefix counts only before a digit of its base: "0x"
 * alone is 0 and leaves the "x". The value is computed modulo 2^64 and truncated to the size.
 *
 * Scanning stops at the first mismatch, at a null destination, and at anything that is not a
 * conversion of this list. Destinations that were not reached are unchanged. */
#ifndef HALVANE_UTILS_SCAN_SCANF_H
#define HALVANE_UTILS_SCAN_SCANF_H

#include <stdarg.h>
#include <stddef.h>

#include "halvane/base/export.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Returns the number of items assigned. The function has no format attribute, since the
 * conversions and sizes differ from those of scanf. */
HALVANE_EXPORT int SNScanF(const char* text, size_t length, const char* format, ...);

/* The same. `arguments` is indeterminate after the call, as after vsscanf. */
HALVANE_EXPORT int VSNScanF(const char* text, size_t length, const char* format, va_list arguments);

#ifdef __cplusplus
}
#endif

#endif

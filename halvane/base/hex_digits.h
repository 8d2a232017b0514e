/* The hexadecimal digits, as literals.
 *
 * Usable from C11 and C++20. */
#ifndef HALVANE_BASE_HEX_DIGITS_H
#define HALVANE_BASE_HEX_DIGITS_H

// The digits, each at the index of its value:
#define kHexDigitsLowercase "0123456789abcdef"
#define kHexDigitsUppercase "0123456789ABCDEF"

#endif

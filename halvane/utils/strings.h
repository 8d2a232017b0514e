/* The string utilities: all of their headers.
 * Usable from C11 and C++20. Write "halvane/utils/strings.h": <strings.h> is the system's.
 *
 * Functions of the C library are not repeated here: <string.h> declares strnlen and strndup
 * under POSIX (_POSIX_C_SOURCE of 200809L, _DEFAULT_SOURCE or _GNU_SOURCE), and memrchr under
 * _GNU_SOURCE. C++ compilers define _GNU_SOURCE; nothing here needs it.
 *
 * Conventions, in addition to those of halvane/utils/printf.h:
 *  1. A `length` of SIZE_MAX means a NUL-terminated text. With any other length a NUL is an
 *     ordinary byte, except for strncasestr, strnspn, strnspnx, strtoi, tolowerstr, toupperstr
 *     and UTF16strlen: for them a NUL before that length ends the text too.
 *  2. Nothing is read past the length, or written past a capacity or a size.
 *  3. Letter case, white space and digits are those of ASCII, whatever the locale is. */
#ifndef HALVANE_UTILS_STRINGS_H
#define HALVANE_UTILS_STRINGS_H

// IWYU pragma: begin_exports
#include <string.h>

#include "halvane/utils/convert/random.h"
#include "halvane/utils/text/clean_text.h"
#include "halvane/utils/text/command_line_text.h"
#include "halvane/utils/text/compare.h"
#include "halvane/utils/text/dns_name.h"
#include "halvane/utils/text/integer.h"
#include "halvane/utils/text/letter_case.h"
#include "halvane/utils/text/mime_type.h"
#include "halvane/utils/text/natural_order.h"
#include "halvane/utils/text/numeric_suffix.h"
#include "halvane/utils/text/owned_text.h"
#include "halvane/utils/text/quoted_text.h"
#include "halvane/utils/text/search.h"
#include "halvane/utils/text/split.h"
#include "halvane/utils/text/utf_text.h"
#include "halvane/utils/text/value_text.h"
#include "halvane/utils/text/xml_escape.h"
// IWYU pragma: end_exports

#endif

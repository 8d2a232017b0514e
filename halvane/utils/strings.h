/* The string utilities: all of their headers at once.
 * Usable from C11 and C++20. Write "halvane/utils/strings.h": <strings.h> is the system's.
 *
 * What the C library has is not here: strnlen and strndup are declared by <string.h> under POSIX
 * (_POSIX_C_SOURCE of 200809L, _DEFAULT_SOURCE or _GNU_SOURCE), memrchr under _GNU_SOURCE. C++
 * compilers define _GNU_SOURCE; nothing here needs it.
 *
 * Conventions, beside those of halvane/utils/printf.h:
 *  1. A `length` of SIZE_MAX is that of a NUL-terminated text. With any other, a NUL is a byte like
 *     any other, but for strncasestr, strnspn, strnspnx, strtoi, tolowerstr, toupperstr and
 *     UTF16strlen: to them a text ends at a NUL before it too.
 *  2. Nothing is read past the length, nor written past a capacity or a size.
 *  3. Upper and lower case are those of ASCII, and white space and digits too, whatever the locale
 *     is. */
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

/* Conversions: addresses, bytes, identifiers and numbers to and from text; byte order, arithmetic,
 * random data. All their headers at once.
 * Usable from C11 and C++20. */
#ifndef HALVANE_UTILS_CONVERT_H
#define HALVANE_UTILS_CONVERT_H

// IWYU pragma: begin_exports
#include "halvane/utils/bcd.h"
#include "halvane/utils/bit_list.h"
#include "halvane/utils/endian_swap.h"
#include "halvane/utils/four_char_code.h"
#include "halvane/utils/hardware_address.h"
#include "halvane/utils/hex_data.h"
#include "halvane/utils/integer_math.h"
#include "halvane/utils/ipv4_address.h"
#include "halvane/utils/ipv6_address.h"
#include "halvane/utils/random.h"
#include "halvane/utils/statistics.h"
#include "halvane/utils/text_number.h"
#include "halvane/utils/uuid.h"
#include "halvane/utils/version_number.h"
// IWYU pragma: end_exports

#endif

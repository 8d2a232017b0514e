/* All conversions: addresses, bytes, identifiers and numbers to and from text; byte order,
 * arithmetic, random data.
 * Usable from C11 and C++20. */
#ifndef HALVANE_UTILS_CONVERT_H
#define HALVANE_UTILS_CONVERT_H

// IWYU pragma: begin_exports
#include "halvane/utils/convert/bcd.h"
#include "halvane/utils/convert/bit_list.h"
#include "halvane/utils/convert/endian_swap.h"
#include "halvane/utils/convert/four_char_code.h"
#include "halvane/utils/convert/hardware_address.h"
#include "halvane/utils/convert/hex_data.h"
#include "halvane/utils/convert/integer_math.h"
#include "halvane/utils/convert/ipv4_address.h"
#include "halvane/utils/convert/ipv6_address.h"
#include "halvane/utils/convert/random.h"
#include "halvane/utils/convert/statistics.h"
#include "halvane/utils/convert/text_number.h"
#include "halvane/utils/convert/uuid.h"
#include "halvane/utils/convert/version_number.h"
// IWYU pragma: end_exports

#endif

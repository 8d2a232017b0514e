/* IPv6 addresses to and from text (RFC 4291 clause 2.2), with a scope (RFC 4007 clause 11), a
 * prefix and a port.
 *
 * Usable from C11 and C++20. Any thread may call any function. The conventions of the
 * C layer are in halvane/utils/printf.h. errno keeps its value. */
#ifndef HALVANE_UTILS_CONVERT_IPV6_ADDRESS_H
#define HALVANE_UTILS_CONVERT_IPV6_ADDRESS_H

#include <stdint.h>

#include "halvane/base/export.h"
#include "halvane/base/status.h"

#ifdef __cplusplus
extern "C" {
#endif

enum {
    kIPv6AddressSize = 16,     /* bytes of an address */
    kIPv6AddressTextSize = 69, /* of any address, scope and port, with the terminator */
    kIPv6PrefixMax = 128
};

/* Bits of the flags of StringToIPv6Address. */
enum {
    kIPv6AddressFlagNoPort = 1 << 0,   /* a ':' after the ']' is kStatusForbidden */
    kIPv6AddressFlagNoPrefix = 1 << 1, /* a '/' is kStatusForbidden */
    kIPv6AddressFlagNoScope = 1 << 2   /* a '%' is kStatusForbidden */
};

/* Reads an address: eight groups of one to four hexadecimal digits of either case, separated by
 * ':'. One "::" may replace one or more zero groups. A dotted decimal IPv4 address may replace the
 * last two groups. The address may be followed by these parts, each once and in any order:
 *
 *   ]        required if, and only if, the text begins with '['
 *   %scope   the name of an interface, which ends before '/', ':', ']' and white space. If the
 *            system knows no such interface, a name of letters, digits, '.', '-', '_' and '@'
 *            alone, otherwise a decimal index, so that "(fe80::1%5)" can be read
 *   /prefix  0 to 128
 *   :port    0 to 65535, only after the ']'
 *
 * The text is NUL-terminated. The first character that belongs to none of these ends it, and *end
 * points there. Each output pointer may be null. An output is unchanged if the text lacks its part,
 * and every output is unchanged after a failure:
 *
 *   kStatusOutOfRange   a group is above 0xFFFF, a part of the IPv4 address is above 255, or an
 *                       index, prefix or port is above its maximum
 *   kStatusMalformed    the text begins with a single ':'; holds a second "::" or ":::"; has more
 *                       than eight groups or a group of five digits; or lacks a required digit,
 *                       name or ']'
 *   kStatusTooFew       there is no group, or there are fewer than eight without "::", or fewer
 *                       than four parts in the IPv4 address
 *   kStatusForbidden    the flags forbid the part that follows
 *   kStatusUnsupported  the text is null, or the scope is neither the name of an interface nor a
 *                       number */
HALVANE_EXPORT HalvaneStatus StringToIPv6Address(const char* text, uint32_t flags, uint8_t* address,
                                                 uint32_t* scope, int* prefix, int* port,
                                                 const char** end);

/* Writes the 16 bytes of `address` into a buffer of kIPv6AddressTextSize bytes, and returns the
 * buffer. The form is that of the %a conversion of halvane/utils/printf.h: lower-case groups
 * without leading zeros; "::" for the first of the longest runs of zero groups, even for a single
 * group; "::ffff:a.b.c.d" for mapped and "::a.b.c.d" for compatible IPv4 addresses. A nonzero
 * scope follows as '%' and the interface's name, or its index if the system knows no name. With a
 * port above 0, all this stands between '[' and "]:port". */
HALVANE_EXPORT char* IPv6AddressToCString(const uint8_t* address, uint32_t scope, int port,
                                          char* buffer);

#ifdef __cplusplus
}
#endif

#endif

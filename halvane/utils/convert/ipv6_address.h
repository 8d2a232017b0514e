/* IPv6 addresses to and from text (RFC 4291 clause 2.2), with a scope (RFC 4007 clause 11), a
 * prefix and a port.
 *
 * Usable from C11 and C++20. Every function may be called from any thread. The conventions of the
 * C layer stand in halvane/utils/printf.h. errno keeps its value. */
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

/* Reads an address: eight groups of one to four hexadecimal digits of either case with ':' between
 * them. "::", once, stands for a run of at least one zero group. A dotted decimal IPv4 address may
 * stand for the last two groups. After the address there may be, each once and in any order:
 *
 *   ]        where a '[' leads the text, which then needs it
 *   %scope   the name of an interface, which ends before '/', ':', ']' and white space; where the
 *            system knows none of that name, one of letters, digits, '.', '-', '_' and '@' alone,
 *            or else an index in decimal, so that "(fe80::1%5)" is read
 *   /prefix  0 to 128
 *   :port    0 to 65535; after the ']' only
 *
 * The text is NUL-terminated. What belongs to none of these ends it, and *end points there. Each
 * output pointer may be null. An output is untouched where the text lacks its part, and every
 * output is after a failure:
 *
 *   kStatusOutOfRange   a group is above 0xFFFF, a part of the IPv4 address above 255, or an index,
 *                       prefix or port above its maximum
 *   kStatusMalformed    a single ':' leads; a second "::" or ":::"; more than eight groups; a group
 *                       of five digits; no digit, name or ']' where one has to be
 *   kStatusTooFew       there is no group, or fewer than eight without "::", or fewer than four
 *                       parts in the IPv4 address
 *   kStatusForbidden    the flags forbid the part that follows
 *   kStatusUnsupported  the text is null, or the scope neither the name of an interface nor a
 *                       number */
HALVANE_EXPORT HalvaneStatus StringToIPv6Address(const char* text, uint32_t flags, uint8_t* address,
                                                 uint32_t* scope, int* prefix, int* port,
                                                 const char** end);

/* Writes the 16 bytes of `address` into a buffer of kIPv6AddressTextSize, which it answers, as the
 * %a conversion of halvane/utils/printf.h does: lower-case groups without leading zeros, "::" for
 * the first of the longest runs of zero groups, also for a single one; "::ffff:a.b.c.d" for mapped
 * and "::a.b.c.d" for compatible IPv4 addresses. A scope that is not 0 follows as '%' and the name
 * of the interface, or the index where the system knows none. With a port above 0 all that stands
 * between '[' and "]:port". */
HALVANE_EXPORT char* IPv6AddressToCString(const uint8_t* address, uint32_t scope, int port,
                                          char* buffer);

#ifdef __cplusplus
}
#endif

#endif

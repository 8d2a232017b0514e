/* IPv4 addresses to and from dotted decimal text, with a port and a prefix.
 *
 * Usable from C11 and C++20. Any thread may call any function. The conventions of the
 * C layer are in halvane/utils/printf.h.
 *
 * Texts are NUL-terminated. Each output pointer may be null, and every output is unchanged after
 * a failure. Leading zeros are allowed and do not make a number octal: "010.0.0.1" is 10.0.0.1. */
#ifndef HALVANE_UTILS_CONVERT_IPV4_ADDRESS_H
#define HALVANE_UTILS_CONVERT_IPV4_ADDRESS_H

#include <stdint.h>

#include "halvane/base/export.h"
#include "halvane/base/status.h"

#ifdef __cplusplus
extern "C" {
#endif

enum {
    kIPv4AddressSize = 4,      /* bytes of an address */
    kIPv4AddressTextSize = 27, /* of any address and port, with the terminator */
    kIPv4PrefixMax = 32,
    kIPPortMax = 65535
};

/* Bits of the flags of StringToIPv4Address. */
enum {
    kIPv4AddressFlagNoPort = 1 << 0,  /* a ':' after the address is kStatusForbidden */
    kIPv4AddressFlagNoPrefix = 1 << 1 /* a '/' after it is kStatusForbidden */
};

/* Reads "a.b.c.d" into four bytes, a first. The address ends before the first character that is
 * neither a digit nor a '.' after a digit, and *end points there.
 *
 *   kStatusOutOfRange   a part is above 255
 *   kStatusMalformed    a '.' follows the fourth part
 *   kStatusTooFew       there are fewer than four parts
 *   kStatusUnsupported  the text is null */
HALVANE_EXPORT HalvaneStatus ParseIPv4Address(const char* text, uint8_t* address, const char** end);

/* Reads "a.b.c.d", "a.b.c.d:port", "a.b.c.d/prefix" or "a.b.c.d:port/prefix".
 *
 *   address  host byte order: a is the most significant byte
 *   port     0 to 65535; unchanged if the text has none
 *   mask     the `prefix` upper bits, but all of them for a prefix of 0; unchanged without a prefix
 *   router   the first address of the network, (address & mask) | 1; unchanged without a prefix
 *   end      the first character that belongs to none of these
 *
 * In addition to the statuses of ParseIPv4Address:
 *
 *   kStatusForbidden   the flags forbid the port or the prefix that follows
 *   kStatusMalformed   no digit follows the ':' or the '/'
 *   kStatusOutOfRange  the port is above 65535 or the prefix above 32 */
HALVANE_EXPORT HalvaneStatus StringToIPv4Address(const char* text, uint32_t flags,
                                                 uint32_t* address, int* port, uint32_t* mask,
                                                 uint32_t* router, const char** end);

/* Writes "a.b.c.d", or "a.b.c.d:port" for a port above 0, into a buffer of kIPv4AddressTextSize
 * bytes, and returns the buffer. The address is in host byte order: a is its most significant
 * byte. */
HALVANE_EXPORT char* IPv4AddressToCString(uint32_t address, int port, char* buffer);

#ifdef __cplusplus
}
#endif

#endif

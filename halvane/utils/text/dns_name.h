/* Names of the domain name system (RFC 1034 clause 3.5, RFC 1035 clauses 2.3.4 and 5.1).
 *
 * Usable from C11 and C++20. Every function may be called from any thread. */
#ifndef HALVANE_UTILS_TEXT_DNS_NAME_H
#define HALVANE_UTILS_TEXT_DNS_NAME_H

#include "halvane/base/export.h"
#include "halvane/base/status.h"

#ifdef __cplusplus
extern "C" {
#endif

enum {
    kDNSLabelBufferSize = 64 /* a label of 63 characters and its terminator */
};

/* Makes a label of a NUL-terminated name in UTF-8: "Anna's Mac" becomes "Annas-Mac". Letters and
 * digits of ASCII are kept, apostrophes (' and U+2019) dropped. Anything else becomes a '-', but
 * not at the start of the label and not after a '-'. A '-' of the name is kept wherever it stands,
 * but for one at the end of the name, which is treated like anything else.
 *
 * `buffer` holds kDNSLabelBufferSize bytes: at most 63 characters are written, and a terminator.
 * Neither argument may be null. */
HALVANE_EXPORT void ConvertUTF8StringToRFC1034LabelString(const char* text, char* buffer);

/* Whether a NUL-terminated name is well formed: labels of 1 to 63 characters with dots between
 * them, also behind the last, and 254 characters in all. A backslash and three decimal digits, of a
 * value up to 255, are one character; a backslash before anything else makes one with the character
 * behind it. A null name is an empty one.
 *
 * kStatusOK, or what is wrong first from the left: kStatusTooFew for an empty name,
 * kStatusMalformed for an empty label, a backslash at the end and one before a value above 255,
 * kStatusWrongLength for a label that is too long, kStatusTruncated for a name that is. */
HALVANE_EXPORT HalvaneStatus ValidDNSName(const char* name);

#ifdef __cplusplus
}
#endif

#endif

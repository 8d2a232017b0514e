/* Names of the domain name system (RFC 1034 clause 3.5, RFC 1035 clauses 2.3.4 and 5.1).
 *
 * Usable from C11 and C++20. Any thread may call any function. */
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

/* Makes a label from a NUL-terminated UTF-8 name: "Anna's Hub" becomes "Annas-Hub". ASCII
 * letters and digits are kept; apostrophes (' and U+2019) are dropped. Every other character
 * becomes a '-', unless it is at the start of the label or follows a '-'. A '-' of the name is
 * always kept, except at the end of the name, where it is treated like every other character.
 *
 * `buffer` has kDNSLabelBufferSize bytes: at most 63 characters and a terminator are written.
 * Neither argument may be null. */
HALVANE_EXPORT void ConvertUTF8StringToRFC1034LabelString(const char* text, char* buffer);

/* Checks whether a NUL-terminated name is well formed: labels of 1 to 63 characters, separated
 * by dots, optionally a dot at the end, and at most 254 characters in all. A backslash and three
 * decimal digits with a value up to 255 are one character. A backslash and any other character
 * are one character too. A null name counts as an empty one.
 *
 * Returns kStatusOK or the status of the first fault from the left: kStatusTooFew for an empty
 * name; kStatusMalformed for an empty label, a backslash at the end or one before a value above
 * 255; kStatusWrongLength for a label that is too long; kStatusTruncated for a name that is too
 * long. */
HALVANE_EXPORT HalvaneStatus ValidDNSName(const char* name);

#ifdef __cplusplus
}
#endif

#endif

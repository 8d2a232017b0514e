/* Packed version numbers to and from text.
 *
 * Usable from C11 and C++20. Any thread may call any function. Texts have a length in
 * characters; SIZE_MAX means NUL-terminated. A null text counts as an empty one.
 *
 * Reading skips leading white space and ends before the first character that does not continue the
 * number. A text without a number, or with a part that is too large, gives 0. */
#ifndef HALVANE_UTILS_CONVERT_VERSION_NUMBER_H
#define HALVANE_UTILS_CONVERT_VERSION_NUMBER_H

#include <stddef.h>
#include <stdint.h>

#include "halvane/base/export.h"

#ifdef __cplusplus
extern "C" {
#endif

/* A NumVersion: major in bits 24 to 31, minor in 20 to 23, bug fix in 16 to 19, stage in 8 to 15,
 * revision in 0 to 7. */
enum {
    kNumVersionStageDevelopment = 0x20, /* "d" */
    kNumVersionStageAlpha = 0x40,       /* "a" */
    kNumVersionStageBeta = 0x60,        /* "b" */
    kNumVersionStageFinal = 0x80,       /* "f" */
    kNumVersionTextSize = 14            /* with the terminator */
};

/* Writes "major.minor", then ".bugfix" if that is not 0, then the stage's letter and the revision:
 * "1.2.3b4". A final stage with revision 0 is omitted, and so are an unknown stage and its
 * revision. Returns the buffer, which has kNumVersionTextSize bytes. */
HALVANE_EXPORT char* NumVersionToCString(uint32_t version, char* buffer);

/* The inverse. Major is at most 255, minor and bug fix 15, revision 255. Missing parts are 0, and
 * a missing stage is final. The letter of the stage may be of either case. */
HALVANE_EXPORT uint32_t TextToNumVersion(const char* text, size_t length);

/* A source version: major * 10000 + minor * 100 + revision. */
enum { kSourceVersionTextSize = 16 /* with the terminator */ };

/* Writes "major.minor.revision", without zero parts at the end: "2", "2.1", "2.0.1". Returns
 * the buffer, which has kSourceVersionTextSize bytes. */
HALVANE_EXPORT char* SourceVersionToCString(uint32_t version, char* buffer);

/* The inverse. Major is at most 214747, minor and revision 99. Missing parts are 0. */
HALVANE_EXPORT uint32_t TextToSourceVersion(const char* text, size_t length);

#ifdef __cplusplus
}
#endif

#endif

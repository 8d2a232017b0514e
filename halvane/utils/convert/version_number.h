/* Packed version numbers to and from text.
 *
 * Usable from C11 and C++20. Every function may be called from any thread. Texts have a length in
 * characters; SIZE_MAX is that of a NUL-terminated text. A null text is taken as an empty one.
 *
 * Reading skips leading white space and ends before the first character that does not continue the
 * number, whatever follows. A text without a number, and one with a part that is too large, give
 * 0. */
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

/* Writes "major.minor", ".bugfix" where that is not 0, and the letter of the stage with the
 * revision: "1.2.3b4". The final stage is left out where the revision is 0, and so is a stage of
 * another value with its revision. Answers the buffer, of kNumVersionTextSize. */
HALVANE_EXPORT char* NumVersionToCString(uint32_t version, char* buffer);

/* The inverse. Major is at most 255, minor and bug fix 15, revision 255; what the text lacks is 0,
 * and the stage final. The letter of the stage may be of either case. */
HALVANE_EXPORT uint32_t TextToNumVersion(const char* text, size_t length);

/* A source version: major * 10000 + minor * 100 + revision. */
enum { kSourceVersionTextSize = 16 /* with the terminator */ };

/* Writes "major.minor.revision", without the parts at its end that are 0: "2", "2.1", "2.0.1".
 * Answers the buffer, of kSourceVersionTextSize. */
HALVANE_EXPORT char* SourceVersionToCString(uint32_t version, char* buffer);

/* The inverse. Major is at most 214747, minor and revision 99; what the text lacks is 0. */
HALVANE_EXPORT uint32_t TextToSourceVersion(const char* text, size_t length);

#ifdef __cplusplus
}
#endif

#endif

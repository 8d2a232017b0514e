/* Levels of log messages, level words, and the contents of a header. halvane/utils/log.h
 * includes this header and describes their use. */
#ifndef HALVANE_UTILS_LOG_LEVEL_H
#define HALVANE_UTILS_LOG_LEVEL_H

#include <stdint.h>

#include "halvane/base/export.h"

/* One enumeration, since C++20 requires that for values combined with '|'. */
enum {
    kLogLevelUninitialized = -1, /* the level of a category that was not tested yet */

    /* A message's level word combines a level in bits 0 to 7 with these flags. */
    kLogLevelMask = 0xFF,
    kLogFlagConsole = 0x40000,   /* copy the message to /dev/console */
    kLogFlagRaw = 0x80000,       /* no header, no rate limit */
    kLogFlagFunction = 0x100000, /* show the function in the header, whatever the category's
                                    flags are */

    /* LogCategory.flags: the parts of a header, "[program:pid,category,function@level] ". */
    kLogHeaderTime = 1 << 0, /* before the bracket */
    kLogHeaderPID = 1 << 1,
    kLogHeaderProgram = 1 << 2,
    kLogHeaderCategory = 1 << 3,
    kLogHeaderLevel = 1 << 4,
    kLogHeaderPrefix = 1 << 5, /* without kLogHeaderCategory only */
    kLogHeaderFunction = 1 << 6,

    kLogLevelStringSize = 64, /* bytes of a buffer for __LogCategory_LevelToString */

    /* The levels, named "all" to "off". */
    kLogLevelAll = 0,
    kLogLevelMin = 1,
    kLogLevelChatty = 10,
    kLogLevelVerbose = 20,
    kLogLevelTrace = 30,
    kLogLevelInfo = 40,
    kLogLevelNotice = 50,
    kLogLevelWarning = 60,
    kLogLevelAssert = 70,
    kLogLevelRequire = 80,
    kLogLevelError = 90,
    kLogLevelCritical = 100,
    kLogLevelAlert = 110,
    kLogLevelEmergency = 120,
    kLogLevelTragic = 130,
    kLogLevelMax = 254,
    kLogLevelOff = 255,
};

#ifdef __cplusplus
extern "C" {
#endif

/* Writes the name of the level nearest to the lowest 8 bits of `level`, and the distance to it
 * ("error+2"), into `buffer` of kLogLevelStringSize bytes. Returns `buffer`. */
HALVANE_EXPORT char* __LogCategory_LevelToString(uint32_t level, char* buffer);

/* Returns the level that a text names: a decimal number, or the first level whose name begins with
 * the text's letters, plus an offset such as "+5" or "-1". Returns 0 for an empty text, and -1 for
 * any other text: unknown letters, other characters after them, or a result below 0 or above
 * INT32_MAX. */
HALVANE_EXPORT int32_t __LogCategory_StringToLevel(const char* text);

#ifdef __cplusplus
}
#endif

#endif

/* Logging: named categories with levels, header flags, a rate limit and an output, set by control
 * strings. docs/logging.md is the reference of control strings, outputs and rotation. Usable from
 * C11 and C++20. The conventions of the C layer are in halvane/utils/printf.h.
 *
 *     HALVANE_LOG(&gLogCategory_WiFiScan, kLogLevelInfo, "%u networks\n", count);
 *
 * A message is logged if its level is at least the category's. A category initialises itself on
 * its first test. It takes its default level, then its own control string, then the preferences
 * under "logconfig".
 *
 * Threads: any thread may make any call except LogUtils_Finalize(). One lock covers categories,
 * settings, outputs and each message, so messages never mix. Code that runs within that lock,
 * such as a callback output or the description of a logged object, cannot log: its messages are
 * dropped, and LogControl, LogReopen and LogCategory_Remove return kStatusUnsupported. Storing
 * settings does not hold the lock.
 *
 * A message is in its file when the call returns, unless the output has a buffer
 * ("file;path=FILE;buffer=64K"). Its messages are written together: when the buffer is full, with
 * each message of level "error" or above, within a second, before fork(), and at exit(). A thread
 * of the library does so within the second; it starts with the first such message. A process that
 * is killed loses what was not written yet.
 *
 * No call changes errno. */
#ifndef HALVANE_UTILS_LOG_H
#define HALVANE_UTILS_LOG_H

#include <stdarg.h>
#include <stdbool.h>
#include <stddef.h>
#include <stdint.h>

#include "halvane/base/export.h"
#include "halvane/base/status.h"
#include "halvane/utils/log/categories.h"  // IWYU pragma: export
#include "halvane/utils/log/level.h"       // IWYU pragma: export

/* Describes to a callback output the message whose bytes it receives. */
typedef struct LogMessage {
    const LogCategory* category; /* that it was logged to */
    const char* function;        /* as the caller passed it */
    uint32_t level;              /* level word */
} LogMessage;

/* The function of an output "callback;func=0x...;arg=0x...". A message may arrive in several
 * pieces. The function must not throw. Messages that it logs are dropped. */
typedef void (*LogCallback)(const LogMessage* message, const char* text, size_t length, void* arg);

#ifdef __cplusplus
namespace halvane {
class PropertyListValue;
}
/* A value of a property list; from C an opaque one. */
typedef halvane::PropertyListValue HalvanePropertyListValue;

extern "C" {
#else
typedef struct HalvanePropertyListValue HalvanePropertyListValue;
#endif

/* --- Messages --- */

/* Format and write one message, whatever its level: test the level first, or use HALVANE_LOG.
 * `function` is the caller's signature, as in __PRETTY_FUNCTION__, or its name; the header shows
 * the name. A category that was never tested initialises itself first. Write errors are ignored.
 * The result is the number of bytes produced, header included; 0 if the rate limit drops the
 * message; or the formatting engine's negative status, after the part before the fault was
 * written. */
HALVANE_EXPORT int LogPrintF(LogCategory* category, const char* function, uint32_t level,
                             const char* format, ...);
HALVANE_EXPORT int LogPrintFVAList(LogCategory* category, const char* function, uint32_t level,
                                   const char* format, va_list arguments);

/* Initialises a category if necessary, and returns whether `level` passes; always false while
 * the preferences are read. Callers use LogIsEnabled. */
HALVANE_EXPORT bool __LogCategory_Initialize(LogCategory* category, uint32_t level);

/* Removes the category from the library's list, as a plug-in must before it is unloaded. The
 * caller owns the record again, and no call uses it. The settings stay. The output is closed if
 * no other category uses it. A later test initialises the category again. Returns kStatusOK,
 * also for a category that was never tested, or kStatusUnsupported within the lock.
 * REQUIRES: no other thread logs to the category, now or later. */
HALVANE_EXPORT HalvaneStatus LogCategory_Remove(LogCategory* category);

/* Returns whether a message of this level is logged. If not, the cost is one load and one
 * compare. */
static inline bool LogIsEnabled(LogCategory* category, uint32_t level) {
    const int32_t threshold = __atomic_load_n(&category->level, __ATOMIC_RELAXED);
    if ((int32_t)(level & kLogLevelMask) < threshold) return false;
    return threshold != kLogLevelUninitialized || __LogCategory_Initialize(category, level);
}

/* The signature of the function that uses the macro; in C its bare name. */
#ifdef __cplusplus
#define HALVANE_LOG_FUNCTION __PRETTY_FUNCTION__
#else
#define HALVANE_LOG_FUNCTION __func__
#endif

/* Logs if the level passes. Only then are the format and the following arguments evaluated. */
#define HALVANE_LOG(category, level, ...) \
    HALVANE_LOG_AS(category, HALVANE_LOG_FUNCTION, level, __VA_ARGS__)

/* The same under another function's signature. */
#define HALVANE_LOG_AS(category, function, level, ...)                             \
    do {                                                                           \
        LogCategory* const halvaneLogCategory = (category);                        \
        const uint32_t halvaneLogLevel = (level);                                  \
        if (LogIsEnabled(halvaneLogCategory, halvaneLogLevel)) {                   \
            LogPrintF(halvaneLogCategory, function, halvaneLogLevel, __VA_ARGS__); \
        }                                                                          \
    } while (0)

/* --- Control --- */

/* Applies a control string, "[?][+]pattern:name=value,...". Null forgets all settings made so far,
 * but the categories keep their values. The status describes the string's own settings:
 *   kStatusMalformed         an entry without ':' or '=': nothing is applied, and the entries
 *                            before it are kept for the next call; or an output's parameter
 *                            without '='
 *   kStatusEmptyType         an output without a type
 *   kStatusUnsupported       an unknown type of output; a bad "roll" or "backup"; no file
 *   kStatusUnknownParameter, kStatusWrongLength, kStatusBadPath, kStatusCannotOpen
 * If an output cannot be made, a category keeps its output; the other settings are still applied.
 * With '+', and if nothing failed, the status is that of storing them in the preferences:
 *   kStatusBadPath, kStatusCannotOpen, kStatusNoRoom (preferences.h)
 *   kStatusConversionFailed  the preferences cannot hold a setting of the string; all others are
 *                            stored */
HALVANE_EXPORT HalvaneStatus LogControl(const char* control);

/* The same for the text of a property-list string, up to the first U+0000.
 * kStatusConversionFailed for another value, null, or text that is not UTF-8. An empty text does
 * nothing and gives kStatusOK. */
HALVANE_EXPORT HalvaneStatus LogControlCF(const HalvanePropertyListValue* control);

/* Reopens the files of all outputs, creates their missing folders, and writes buffered messages,
 * for example after logrotate has moved the files. A write does this by itself if the file's path
 * leads elsewhere; in a burst of writes it may do so some milliseconds later. LogReopen() also
 * releases files that nobody writes to. Returns kStatusOK; kStatusCannotOpen if a file cannot be
 * opened, and keeps the old one; or kStatusUnsupported within the lock. */
HALVANE_EXPORT HalvaneStatus LogReopen(void);

/* Sets the application whose preferences hold "logconfig"; null, as at the start, means the
 * current program. The text is copied. Call this before any other function here: the preferences
 * are read only once, and again after a control string with '?'. */
HALVANE_EXPORT void LogSetAppID(const char* appID);

/* Reads the preferences, unless they were already read. Every other call does so itself. Returns
 * 0. */
HALVANE_EXPORT HalvaneStatus LogUtils_EnsureInitialized(void);

/* Forgets settings, outputs and application. Every category initialises itself again on its next
 * test.
 * REQUIRES: no other thread is in a call of this header. */
HALVANE_EXPORT void LogUtils_Finalize(void);

/* Reports all categories and settings: in *out as a heap string, or, if `out` is null, to the
 * category LogUtils at level "max". Fails with kStatusNoMemory, which is also logged, or within
 * the lock with kStatusUnsupported; *out is then unchanged. */
HALVANE_EXPORT HalvaneStatus LogUtils_Show(char** out);

/* Nonzero while the preferences are read. Programs must not write it. */
HALVANE_EXPORT extern int gLogUtilsInitializing;

#ifdef __cplusplus
}
#endif

#endif

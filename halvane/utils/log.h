/* Logging: named categories with levels, header flags, a rate limit and an output, set by control
 * strings. docs/logging.md is the reference of the control strings, outputs and rotation.
 * Usable from C11 and C++20; the conventions of the C layer stand in halvane/utils/printf.h.
 *
 *     HALVANE_LOG(&gLogCategory_WiFiScan, kLogLevelInfo, "%u networks\n", count);
 *
 * A message goes out if its level is at least the category's. A category sets itself up when it is
 * first tested: it takes its default level, its own control string, and what the preferences hold
 * under "logconfig", in that order.
 *
 * Threads: every call may be made from any thread, but for LogUtils_Finalize(). One lock covers
 * categories, settings, outputs and each message, so messages never mix. Within that lock, which is
 * to say in a callback output or in the description of an object that is being logged, nothing
 * logs: a message is dropped there, and LogControl, LogReopen and LogCategory_Remove return
 * kStatusUnsupported. Nobody waits for that lock while settings are stored.
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

/* What a callback output learns about the message whose bytes it gets. */
typedef struct LogMessage {
    const LogCategory* category;
    const char* function; /* as the caller gave it */
    uint32_t level;       /* level word */
} LogMessage;

/* The function of an output "callback;func=0x...;arg=0x...". A message may come in several pieces.
 * It must not throw, and what it logs is dropped. */
typedef void (*LogCallback)(const LogMessage* message, const char* text, size_t length, void* arg);

#ifdef __cplusplus
namespace halvane {
class PropertyListValue;
}
typedef halvane::PropertyListValue HalvanePropertyListValue;

extern "C" {
#else
typedef struct HalvanePropertyListValue HalvanePropertyListValue;
#endif

/* --- Messages --- */

/* Format and write one message, whatever its level: test first, or use HALVANE_LOG. `function` is
 * the caller's signature as __PRETTY_FUNCTION__ tells it, or its name; the header shows the name.
 * The result is the count of bytes produced, header included; 0 for a message that the rate limit
 * drops; or the formatting engine's negative status, with the part before the fault written.
 * Write errors are ignored. A category that was never tested sets itself up first. */
HALVANE_EXPORT int LogPrintF(LogCategory* category, const char* function, uint32_t level,
                             const char* format, ...);
HALVANE_EXPORT int LogPrintFVAList(LogCategory* category, const char* function, uint32_t level,
                                   const char* format, va_list arguments);

/* Sets a category up if that is still to do, and tells whether `level` passes; always false while
 * the preferences are read. Callers use LogIsEnabled. */
HALVANE_EXPORT bool __LogCategory_Initialize(LogCategory* category, uint32_t level);

/* Takes the category out of the library's list, as a plug-in must before it is unloaded: the record
 * is the caller's again, and no call touches it. The settings stay; the output is closed where no
 * other category has it. A category that is tested afterwards sets itself up anew. kStatusOK, also
 * for one that was never tested; kStatusUnsupported within the lock. REQUIRES: no other thread logs
 * to the category, now or later. */
HALVANE_EXPORT HalvaneStatus LogCategory_Remove(LogCategory* category);

/* Whether a message of this level goes out: one load and one compare where it does not. */
static inline bool LogIsEnabled(LogCategory* category, uint32_t level) {
    const int32_t threshold = __atomic_load_n(&category->level, __ATOMIC_RELAXED);
    if ((int32_t)(level & kLogLevelMask) < threshold) return false;
    return threshold != kLogLevelUninitialized || __LogCategory_Initialize(category, level);
}

/* The signature of the function it stands in; C's is the bare name. */
#ifdef __cplusplus
#define HALVANE_LOG_FUNCTION __PRETTY_FUNCTION__
#else
#define HALVANE_LOG_FUNCTION __func__
#endif

/* Logs if the level passes, and evaluates the format and what follows only then. */
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

/* Applies a control string, "[?][+]pattern:name=value,..."; null forgets all settings made so far,
 * which categories keep. Answers a status of the string's own settings:
 *   kStatusMalformed         an entry without ':' or '=': the ones before it are kept for the next
 *                            call, nothing is applied; or an output's parameter without '='
 *   kStatusEmptyType         an output without a type
 *   kStatusUnsupported       an output of another type; a bad "roll" or "backup"; no file
 *   kStatusUnknownParameter, kStatusWrongLength, kStatusBadPath, kStatusCannotOpen
 * An output that cannot be had leaves a category the one it has; the other settings are applied
 * all the same. With '+', if all is well, also the status of storing them in the preferences:
 *   kStatusBadPath, kStatusCannotOpen, kStatusNoRoom (preferences.h)
 *   kStatusConversionFailed  the preferences cannot hold a setting of the string; all others are
 *                            stored */
HALVANE_EXPORT HalvaneStatus LogControl(const char* control);

/* The same for the text of a property-list string, up to a U+0000 if it holds one.
 * kStatusConversionFailed for another value, null, or text that is not UTF-8; kStatusOK, and
 * nothing done, for an empty one. */
HALVANE_EXPORT HalvaneStatus LogControlCF(const HalvanePropertyListValue* control);

/* Opens the files of all outputs anew, with the folders to them: after a program such as logrotate
 * has moved them, say. The next write to a file does so by itself where the file's path leads
 * elsewhere, or in a burst of writes one some milliseconds later; this also lets go of a file that
 * nobody writes to. kStatusOK; kStatusCannotOpen where one cannot be opened, and goes on as it was;
 * kStatusUnsupported within the lock. */
HALVANE_EXPORT HalvaneStatus LogReopen(void);

/* Whose preferences hold "logconfig"; null, as at the start, means the current program's. The text
 * is copied. Call it before anything else here: the preferences are read only once, and again after
 * a control string with '?'. */
HALVANE_EXPORT void LogSetAppID(const char* appID);

/* Reads the preferences, unless that was done. Every other call does it by itself. Always 0. */
HALVANE_EXPORT HalvaneStatus LogUtils_EnsureInitialized(void);

/* Forgets settings, outputs and application, and lets every category set itself up anew on its next
 * test. REQUIRES: no other thread is in a call of this header. */
HALVANE_EXPORT void LogUtils_Finalize(void);

/* A report of all categories and settings: into *out as a heap string, or with a null `out` into
 * the category LogUtils at level "max". kStatusNoMemory, which is logged too, and within the lock
 * kStatusUnsupported: *out is untouched. */
HALVANE_EXPORT HalvaneStatus LogUtils_Show(char** out);

/* Nonzero while the preferences are read. For reading only. */
HALVANE_EXPORT extern int gLogUtilsInitializing;

#ifdef __cplusplus
}
#endif

#endif

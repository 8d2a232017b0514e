/* Categories of log messages, and the library's own categories. halvane/utils/log.h includes
 * this header and describes their use. */
#ifndef HALVANE_UTILS_LOG_CATEGORIES_H
#define HALVANE_UTILS_LOG_CATEGORIES_H

#include <stddef.h>
#include <stdint.h>

#include "halvane/base/export.h"
#include "halvane/utils/log/level.h"

/* An output, which the library owns. */
typedef struct LogOutput LogOutput;

/* A category: one static record, defined with HALVANE_LOG_CATEGORY. A program may change
 * defaultLevel, initConfig and flags before the category's first use. After that, only the
 * library changes the record. */
typedef struct LogCategory LogCategory;
struct LogCategory {
    int32_t level; /* lowest level that passes; kLogLevelUninitialized before the first test */
    int32_t defaultLevel;     /* a negative one counts as 0 */
    const char* initConfig;   /* control string applied on the first test, or null */
    uint32_t flags;           /* kLogHeader... */
    const char* name;         /* as control strings name it; it outlives the category */
    const char* prefix;       /* the name up to its first '_' */
    size_t prefixLength;      /* the prefix has no terminator */
    LogCategory* next;        /* of the library's list */
    LogOutput* output;        /* shared between categories; null before the first test */
    uint64_t ratePeriod;      /* up-ticks */
    uint64_t rateIntervalEnd; /* up-ticks; 0 while no interval is open */
    uint32_t rateMax;         /* messages per interval; 0 means no limit */
    uint32_t rateCount;       /* messages so far in this interval */
};

/* Defines gLogCategory_<name>. `config` may be null. In C++ put it inside extern "C" if C uses
 * it. */
#define HALVANE_LOG_CATEGORY(name, level, headerFlags, config) \
    LogCategory gLogCategory_##name = {kLogLevelUninitialized, \
                                       level,                  \
                                       config,                 \
                                       headerFlags,            \
                                       #name,                  \
                                       #name,                  \
                                       sizeof(#name) - 1,      \
                                       0,                      \
                                       0,                      \
                                       0,                      \
                                       0,                      \
                                       0,                      \
                                       0}

#ifdef __cplusplus
extern "C" {
#endif

/* The logging system's own category: level "all", the time in its header, to the console. */
HALVANE_EXPORT extern LogCategory gLogCategory_LogUtils;

/* The categories of the Wi-Fi code: level "error", time and category in the header, to the file
 * /var/log/halvaned.log, or to the console if that file cannot be opened. */
HALVANE_EXPORT extern LogCategory gLogCategory_WiFi;
HALVANE_EXPORT extern LogCategory gLogCategory_WiFiBPF;
HALVANE_EXPORT extern LogCategory gLogCategory_WiFiEAPOL;
HALVANE_EXPORT extern LogCategory gLogCategory_WiFiIE;
HALVANE_EXPORT extern LogCategory gLogCategory_WiFiIO80211;
HALVANE_EXPORT extern LogCategory gLogCategory_WiFiJoin;
HALVANE_EXPORT extern LogCategory gLogCategory_WiFiScan;
HALVANE_EXPORT extern LogCategory gLogCategory_WiFiWPS;
HALVANE_EXPORT extern LogCategory gLogCategory_WiFiXPC;

#ifdef __cplusplus
}
#endif

/* X(name) for each category of the Wi-Fi code, for a program that treats all of them alike. */
#define HALVANE_WIFI_LOG_CATEGORIES(X) \
    X(WiFi)                            \
    X(WiFiBPF)                         \
    X(WiFiEAPOL)                       \
    X(WiFiIE)                          \
    X(WiFiIO80211)                     \
    X(WiFiJoin)                        \
    X(WiFiScan)                        \
    X(WiFiWPS)                         \
    X(WiFiXPC)

#endif

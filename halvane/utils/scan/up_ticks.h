/* The time base: up-ticks, an unsigned 64-bit count of the monotonic clock.
 *
 * Usable from C11 and C++20. Any thread may call any function.
 *
 * A conversion multiplies the ticks by a constant factor in double precision and truncates the
 * product. It is exact to 53 bits, and a result just below a whole number may become the number
 * before. A result beyond 64 bits becomes UINT64_MAX. */
#ifndef HALVANE_UTILS_SCAN_UP_TICKS_H
#define HALVANE_UTILS_SCAN_UP_TICKS_H

#include <stdint.h>

#include "halvane/base/export.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Returns the current ticks, which never go back. The system decides where they start. */
HALVANE_EXPORT uint64_t UpTicks(void);

/* 1000000000 if the clock counts nanoseconds. Does not change while a process runs. */
HALVANE_EXPORT uint64_t UpTicksPerSecond(void);

/* Convert up-ticks to a unit. */
HALVANE_EXPORT uint64_t UpTicksToSeconds(uint64_t ticks);
HALVANE_EXPORT uint64_t UpTicksToMilliseconds(uint64_t ticks);
HALVANE_EXPORT uint64_t UpTicksToMicroseconds(uint64_t ticks);
HALVANE_EXPORT uint64_t UpTicksToNanoseconds(uint64_t ticks);

/* Convert a unit to up-ticks. */
HALVANE_EXPORT uint64_t SecondsToUpTicks(uint64_t seconds);
HALVANE_EXPORT uint64_t MillisecondsToUpTicks(uint64_t milliseconds);
HALVANE_EXPORT uint64_t MicrosecondsToUpTicks(uint64_t microseconds);
HALVANE_EXPORT uint64_t NanosecondsToUpTicks(uint64_t nanoseconds);

/* NTP fixed-point time (RFC 5905 clause 6): seconds in the upper 32 bits, the binary fraction of
 * a second in the lower 32. The functions use integer arithmetic, which is exact except for the
 * truncated last bit of the result. Seconds beyond 32 bits lose their upper part. */
HALVANE_EXPORT uint64_t UpTicksToNTP(uint64_t ticks);
HALVANE_EXPORT uint64_t NTPtoUpTicks(uint64_t ntp);

/* Sleeps for `ticks`, whose whole seconds are taken modulo 2^32. Returns the result of
 * nanosleep(2): 0, or -1 with errno set, which is EINTR if a signal ended the sleep early. */
HALVANE_EXPORT int SleepForUpTicks(uint64_t ticks);

/* Sleeps until UpTicks() reaches `deadline`; returns at once if that has passed. A signal may end
 * the sleep early. */
HALVANE_EXPORT void SleepUntilUpTicks(uint64_t deadline);

#ifdef __cplusplus
}
#endif

#endif

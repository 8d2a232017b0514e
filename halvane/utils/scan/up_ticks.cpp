#include "halvane/utils/scan/up_ticks.h"

#include "halvane/platform/os/up_time_internal.h"
#include "halvane/utils/scan/up_ticks_internal.h"

std::uint64_t UpTicks() {
    return halvane::upTimeNow();
}

std::uint64_t UpTicksPerSecond() {
    static const std::uint64_t perSecond = halvane::ticksPerSecondOf(halvane::upTimeTimebase());
    return perSecond;
}

// The first caller computes a function's static variable, only once even with several threads.
#define HALVANE_UP_TICKS_DEFINE(name, unused)                                           \
    std::uint64_t name(std::uint64_t value) {                                           \
        static const double factor =                                                    \
            halvane::up_ticks::factorOf##name(static_cast<double>(UpTicksPerSecond())); \
        return halvane::up_ticks::scaled(value, factor);                                \
    }
HALVANE_UP_TICKS_CONVERSIONS(HALVANE_UP_TICKS_DEFINE)
#undef HALVANE_UP_TICKS_DEFINE

std::uint64_t UpTicksToNTP(std::uint64_t ticks) {
    return halvane::up_ticks::UpTicksToNTP(ticks, UpTicksPerSecond());
}

std::uint64_t NTPtoUpTicks(std::uint64_t ntp) {
    return halvane::up_ticks::NTPtoUpTicks(ntp, UpTicksPerSecond());
}

int SleepForUpTicks(std::uint64_t ticks) {
    return halvane::upTimeSleep(halvane::up_ticks::sleepOf(ticks, UpTicksPerSecond()));
}

void SleepUntilUpTicks(std::uint64_t deadline) {
    const std::uint64_t now = UpTicks();
    if (now < deadline) SleepForUpTicks(deadline - now);
}

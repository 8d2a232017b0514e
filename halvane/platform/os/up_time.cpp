#include "halvane/platform/os/up_time_internal.h"

namespace halvane {

namespace {

constexpr std::uint64_t kNanosecondsPerSecond = 1'000'000'000;

std::uint64_t ticksOf(const timespec& time) {
    return static_cast<std::uint64_t>(time.tv_sec) * kNanosecondsPerSecond +
           static_cast<std::uint64_t>(time.tv_nsec);
}

std::uint64_t ticksNowOf(clockid_t clock) {
    timespec now{};
    clock_gettime(clock, &now);
    return ticksOf(now);
}

}  // namespace

std::optional<Timebase> upTimeTimebase() {
    return Timebase{1, 1};
}

std::uint64_t ticksPerSecondOf(const std::optional<Timebase>& timebase) {
    if (!timebase || timebase->numerator == 0 || timebase->denominator == 0) {
        return kNanosecondsPerSecond;
    }
    return timebase->denominator * kNanosecondsPerSecond / timebase->numerator;
}

std::uint64_t upTimeNow() {
    return ticksNowOf(CLOCK_MONOTONIC);
}

std::uint64_t upTimeLastStep() {
    return ticksNowOf(CLOCK_MONOTONIC_COARSE);
}

int upTimeSleep(const timespec& duration) {
    return nanosleep(&duration, nullptr);
}

}  // namespace halvane

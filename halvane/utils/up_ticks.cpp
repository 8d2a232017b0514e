#include "halvane/utils/up_ticks.h"

#include "halvane/platform/up_time_internal.h"

namespace {

constexpr double kTwoTo64 = 18446744073709551616.0;
constexpr std::uint64_t kNanosecondsPerSecond = 1'000'000'000;

std::uint64_t scaled(std::uint64_t value, double factor) {
    const double product = static_cast<double>(value) * factor;
    return product < kTwoTo64 ? static_cast<std::uint64_t>(product) : UINT64_MAX;
}

double ticksPerSecond() {
    return static_cast<double>(UpTicksPerSecond());
}

}  // namespace

std::uint64_t UpTicks() {
    return halvane::upTimeNow();
}

std::uint64_t UpTicksPerSecond() {
    static const std::uint64_t perSecond = halvane::ticksPerSecondOf(halvane::upTimeTimebase());
    return perSecond;
}

// A function static is computed by the first caller, once, whatever the number of threads.
#define HALVANE_DEFINE_CONVERSION(name, factorExpression) \
    std::uint64_t name(std::uint64_t value) {             \
        static const double factor = factorExpression;    \
        return scaled(value, factor);                     \
    }

HALVANE_DEFINE_CONVERSION(UpTicksToSeconds, 1 / ticksPerSecond())
HALVANE_DEFINE_CONVERSION(UpTicksToMilliseconds, 1000 / ticksPerSecond())
HALVANE_DEFINE_CONVERSION(UpTicksToMicroseconds, 1e6 / ticksPerSecond())
HALVANE_DEFINE_CONVERSION(UpTicksToNanoseconds, 1e9 / ticksPerSecond())
HALVANE_DEFINE_CONVERSION(SecondsToUpTicks, ticksPerSecond())
HALVANE_DEFINE_CONVERSION(MillisecondsToUpTicks, ticksPerSecond() / 1000)
HALVANE_DEFINE_CONVERSION(MicrosecondsToUpTicks, ticksPerSecond() / 1e6)
HALVANE_DEFINE_CONVERSION(NanosecondsToUpTicks, ticksPerSecond() / 1e9)

#undef HALVANE_DEFINE_CONVERSION

// No overflow in either direction as long as a second has fewer than 2^32 ticks.
std::uint64_t UpTicksToNTP(std::uint64_t ticks) {
    const std::uint64_t perSecond = UpTicksPerSecond();
    return (ticks / perSecond) << 32 | ((ticks % perSecond) << 32) / perSecond;
}

std::uint64_t NTPtoUpTicks(std::uint64_t ntp) {
    const std::uint64_t perSecond = UpTicksPerSecond();
    const std::uint64_t fraction = ntp & 0xFFFFFFFF;
    return ((fraction * perSecond) >> 32) + (ntp >> 32) * perSecond;
}

int SleepForUpTicks(std::uint64_t ticks) {
    const std::uint64_t perSecond = UpTicksPerSecond();
    const std::uint64_t nanoseconds = (ticks % perSecond) * kNanosecondsPerSecond / perSecond;
    timespec duration{};
    duration.tv_sec = static_cast<std::uint32_t>(ticks / perSecond);
    duration.tv_nsec = static_cast<decltype(duration.tv_nsec)>(nanoseconds);
    return halvane::upTimeSleep(duration);
}

void SleepUntilUpTicks(std::uint64_t deadline) {
    const std::uint64_t now = UpTicks();
    if (now < deadline) SleepForUpTicks(deadline - now);
}

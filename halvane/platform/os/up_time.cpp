#include <cerrno>

#include "halvane/platform/os/up_time_internal.h"

namespace halvane {

namespace {

constexpr std::uint64_t kNanosecondsPerSecond = 1'000'000'000;

// Static, and never torn down: a thread may ask for the time at any moment.
struct Simulation {
    std::atomic<bool> isOn = false;
    std::atomic<std::uint64_t> ticks = 0;
    std::atomic<unsigned> sleepCount = 0;
    std::atomic<std::int64_t> lastSeconds = 0;
    std::atomic<std::int64_t> lastNanoseconds = 0;
    std::atomic<int> sleepError = 0;
};
constinit Simulation gSimulation;

std::uint64_t ticksOf(const timespec& time) {
    return static_cast<std::uint64_t>(time.tv_sec) * kNanosecondsPerSecond +
           static_cast<std::uint64_t>(time.tv_nsec);
}

std::uint64_t ticksNowOf(clockid_t clock) {
    if (gSimulation.isOn.load(std::memory_order_relaxed)) return gSimulation.ticks;
    timespec now{};
    clock_gettime(clock, &now);
    return ticksOf(now);
}

int simulatedSleep(const timespec& duration) {
    gSimulation.lastSeconds = duration.tv_sec;
    gSimulation.lastNanoseconds = duration.tv_nsec;
    ++gSimulation.sleepCount;
    if (const int error = gSimulation.sleepError; error != 0) {
        errno = error;
        return -1;
    }
    gSimulation.ticks += ticksOf(duration);
    return 0;
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
    if (gSimulation.isOn) return simulatedSleep(duration);
    return nanosleep(&duration, nullptr);
}

ScopedUpTime::ScopedUpTime(std::uint64_t ticks) {
    gSimulation.ticks = ticks;
    gSimulation.sleepCount = 0;
    gSimulation.lastSeconds = 0;
    gSimulation.lastNanoseconds = 0;
    gSimulation.sleepError = 0;
    gSimulation.isOn = true;
}

ScopedUpTime::~ScopedUpTime() {
    gSimulation.isOn = false;
}

std::uint64_t ScopedUpTime::now() const {
    return gSimulation.ticks;
}

void ScopedUpTime::set(std::uint64_t ticks) {
    gSimulation.ticks = ticks;
}

void ScopedUpTime::advance(std::uint64_t ticks) {
    gSimulation.ticks += ticks;
}

unsigned ScopedUpTime::sleepCount() const {
    return gSimulation.sleepCount;
}

timespec ScopedUpTime::lastSleep() const {
    return {.tv_sec = gSimulation.lastSeconds, .tv_nsec = gSimulation.lastNanoseconds};
}

void ScopedUpTime::failSleepsWith(int error) {
    gSimulation.sleepError = error;
}

}  // namespace halvane

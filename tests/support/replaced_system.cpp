#include "tests/support/replaced_system.h"

#include <atomic>
#include <cerrno>

#include "halvane/platform/os/console_device_internal.h"
#include "halvane/platform/os/random_internal.h"
#include "halvane/platform/os/system_log_internal.h"
#include "halvane/platform/os/up_time_internal.h"

// The linker gives a wrapped function two names: one to which its calls go, and one that reaches
// the original. For the names that the compiler uses, see tests/support/wrapped_functions.cmake.
#define WRAP(mangled) asm("__wrap_" mangled)
#define REAL(mangled) asm("__real_" mangled)

namespace halvane {

namespace {

// These are static and never destroyed, because a thread may ask for the time at any moment.
struct Simulation {
    std::atomic<bool> isOn = false;
    std::atomic<std::uint64_t> ticks = 0;
    std::atomic<unsigned> sleepCount = 0;
    std::atomic<std::int64_t> lastSeconds = 0;
    std::atomic<std::int64_t> lastNanoseconds = 0;
    std::atomic<int> sleepError = 0;
};
constinit Simulation gSimulation;

constinit std::atomic<WallClock> gWallClock = nullptr;
constinit std::atomic<RandomSource> gRandomSource = nullptr;
constinit std::atomic<SystemLogger> gSystemLogger = nullptr;
constinit std::atomic<const char*> gConsoleDevice = nullptr;

int simulatedSleep(const timespec& duration) {
    constexpr std::uint64_t kNanosecondsPerSecond = 1'000'000'000;
    gSimulation.lastSeconds = duration.tv_sec;
    gSimulation.lastNanoseconds = duration.tv_nsec;
    ++gSimulation.sleepCount;
    if (const int error = gSimulation.sleepError; error != 0) {
        errno = error;
        return -1;
    }
    gSimulation.ticks += static_cast<std::uint64_t>(duration.tv_sec) * kNanosecondsPerSecond +
                         static_cast<std::uint64_t>(duration.tv_nsec);
    return 0;
}

}  // namespace

std::uint64_t realUpTimeNow() REAL("_ZN7halvane9upTimeNowEv");
std::uint64_t replacedUpTimeNow() WRAP("_ZN7halvane9upTimeNowEv");
std::uint64_t replacedUpTimeNow() {
    return gSimulation.isOn ? gSimulation.ticks.load() : realUpTimeNow();
}

std::uint64_t realUpTimeLastStep() REAL("_ZN7halvane14upTimeLastStepEv");
std::uint64_t replacedUpTimeLastStep() WRAP("_ZN7halvane14upTimeLastStepEv");
std::uint64_t replacedUpTimeLastStep() {
    return gSimulation.isOn ? gSimulation.ticks.load() : realUpTimeLastStep();
}

int realUpTimeSleep(const timespec& duration) REAL("_ZN7halvane11upTimeSleepERK8timespec");
int replacedUpTimeSleep(const timespec& duration) WRAP("_ZN7halvane11upTimeSleepERK8timespec");
int replacedUpTimeSleep(const timespec& duration) {
    return gSimulation.isOn ? simulatedSleep(duration) : realUpTimeSleep(duration);
}

WallTime realWallTime() REAL("_ZN7halvane8wallTimeEv");
WallTime replacedWallTime() WRAP("_ZN7halvane8wallTimeEv");
WallTime replacedWallTime() {
    const WallClock clock = gWallClock;
    return clock != nullptr ? clock() : realWallTime();
}

void realFillRandom(std::span<std::uint32_t> values)
    REAL("_ZN7halvane10fillRandomESt4spanIjLm18446744073709551615EE");
void replacedFillRandom(std::span<std::uint32_t> values)
    WRAP("_ZN7halvane10fillRandomESt4spanIjLm18446744073709551615EE");
void replacedFillRandom(std::span<std::uint32_t> values) {
    const RandomSource source = gRandomSource;
    source != nullptr ? source(values) : realFillRandom(values);
}

void realWriteToSystemLog(int priority, std::string_view text)
    REAL("_ZN7halvane16writeToSystemLogEiSt17basic_string_viewIcSt11char_traitsIcEE");
void replacedWriteToSystemLog(int priority, std::string_view text)
    WRAP("_ZN7halvane16writeToSystemLogEiSt17basic_string_viewIcSt11char_traitsIcEE");
void replacedWriteToSystemLog(int priority, std::string_view text) {
    const SystemLogger logger = gSystemLogger;
    logger != nullptr ? logger(priority, text) : realWriteToSystemLog(priority, text);
}

bool realWriteToConsoleDevice(std::string_view text, const char* device)
    REAL("_ZN7halvane20writeToConsoleDeviceESt17basic_string_viewIcSt11char_traitsIcEEPKc");
bool replacedWriteToConsoleDevice(std::string_view text, const char* device)
    WRAP("_ZN7halvane20writeToConsoleDeviceESt17basic_string_viewIcSt11char_traitsIcEEPKc");
bool replacedWriteToConsoleDevice(std::string_view text, const char* device) {
    const char* const replacement = gConsoleDevice;
    return realWriteToConsoleDevice(text, replacement != nullptr ? replacement : device);
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

void replaceWallClock(WallClock clock) {
    gWallClock = clock;
}

void replaceRandomSource(RandomSource source) {
    gRandomSource = source;
}

void replaceSystemLog(SystemLogger logger) {
    gSystemLogger = logger;
}

void replaceConsoleDevice(const char* path) {
    gConsoleDevice = path;
}

}  // namespace halvane

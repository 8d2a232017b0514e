#include <atomic>
#include <ctime>

#include "halvane/platform/os/wall_clock_internal.h"

namespace halvane {

namespace {

std::atomic<WallClock> replacement = nullptr;

WallTime systemTime() {
    std::timespec now{};
    std::timespec_get(&now, TIME_UTC);
    return {now.tv_sec, static_cast<std::uint32_t>(now.tv_nsec / 1000)};
}

}  // namespace

WallTime wallTime() {
    const WallClock clock = replacement.load(std::memory_order_relaxed);
    return clock != nullptr ? clock() : systemTime();
}

void replaceWallClock(WallClock clock) {
    replacement.store(clock, std::memory_order_relaxed);
}

}  // namespace halvane

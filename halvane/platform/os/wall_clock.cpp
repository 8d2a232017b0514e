#include <ctime>

#include "halvane/platform/os/wall_clock_internal.h"

namespace halvane {

WallTime wallTime() {
    std::timespec now{};
    ::clock_gettime(CLOCK_REALTIME, &now);
    return {now.tv_sec, static_cast<std::uint32_t>(now.tv_nsec / 1000)};
}

}  // namespace halvane

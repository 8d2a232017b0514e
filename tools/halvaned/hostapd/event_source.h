// Timers in an sd-event loop.
#ifndef TOOLS_HALVANED_HOSTAPD_EVENT_SOURCE_H
#define TOOLS_HALVANED_HOSTAPD_EVENT_SOURCE_H

#include <cstdint>
#include <ctime>
#include <systemd/sd-event.h>

#include "halvane/platform/bus/event_loop_internal.h"

namespace halvane::hosting {

// Calls `work` of `owner` once after that time, in microseconds. Null if the loop refuses, which it
// does for a lack of memory or descriptors alone.
// REQUIRES: the owner lives as long as the pointer.
template <auto work, typename Owner>
EventSourcePointer timerOf(sd_event* loop, std::uint64_t microseconds, Owner* owner) {
    constexpr std::uint64_t kAccuracy = 1000;
    const auto fired = [](sd_event_source*, std::uint64_t, void* data) {
        return guarded([data] { (static_cast<Owner*>(data)->*work)(); });
    };
    sd_event_source* source = nullptr;
    if (::sd_event_add_time_relative(loop, &source, CLOCK_MONOTONIC, microseconds, kAccuracy, fired,
                                     owner) < 0) {
        return nullptr;
    }
    return EventSourcePointer(source);
}

}  // namespace halvane::hosting

#endif

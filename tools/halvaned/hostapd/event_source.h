// Sources of events in an sd_event loop.
#ifndef TOOLS_HALVANED_HOSTAPD_EVENT_SOURCE_H
#define TOOLS_HALVANED_HOSTAPD_EVENT_SOURCE_H

#include <cerrno>
#include <cstdint>
#include <ctime>
#include <exception>
#include <memory>
#include <new>
#include <systemd/sd-event.h>
#include <utility>

namespace halvane::hosting {

struct EventSourceReleaser {
    void operator()(sd_event_source* source) const { ::sd_event_source_disable_unref(source); }
};
using EventSourcePointer = std::unique_ptr<sd_event_source, EventSourceReleaser>;

// A function that C code calls must not throw. It returns a negative errno instead, and its source
// is then disabled.
template <typename Work>
int guarded(Work work) noexcept {
    try {
        work();
        return 0;
    } catch (const std::bad_alloc&) {
        return -ENOMEM;
    } catch (const std::exception&) {
        return -EIO;
    }
}

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

// The loop that waits for the bus, signals, a child and the time.
#ifndef TOOLS_HALVANED_SIM_EVENT_LOOP_H
#define TOOLS_HALVANED_SIM_EVENT_LOOP_H

#include <cerrno>
#include <exception>
#include <memory>
#include <new>
#include <systemd/sd-event.h>

#include "tools/halvaned-sim/bus_error.h"

namespace halvane::sim {

struct EventReleaser {
    void operator()(sd_event* event) const { ::sd_event_unref(event); }
};
struct EventSourceReleaser {
    void operator()(sd_event_source* source) const { ::sd_event_source_disable_unref(source); }
};
using EventPointer = std::unique_ptr<sd_event, EventReleaser>;
using EventSourcePointer = std::unique_ptr<sd_event_source, EventSourceReleaser>;

inline EventPointer newEventLoop() {
    sd_event* event = nullptr;
    check(::sd_event_new(&event), "making an event loop");
    return EventPointer(event);
}

// A function that C code calls must not throw. It returns a negative errno instead.
template <typename Work>
int guarded(Work work) noexcept {
    try {
        return work();
    } catch (const std::bad_alloc&) {
        return -ENOMEM;
    } catch (const std::exception&) {
        return -EIO;
    }
}

}  // namespace halvane::sim

#endif

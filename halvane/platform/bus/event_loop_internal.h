// Owning pointers for the objects of an sd-event loop, and what its callbacks need.
//
// Threads: only the thread that runs the loop may use the objects.
#ifndef HALVANE_PLATFORM_BUS_EVENT_LOOP_INTERNAL_H
#define HALVANE_PLATFORM_BUS_EVENT_LOOP_INTERNAL_H

#include <cerrno>
#include <exception>
#include <memory>
#include <new>
#include <systemd/sd-event.h>
#include <type_traits>

#include "halvane/platform/bus/libsystemd_internal.h"

namespace halvane {

struct EventReleaser {
    void operator()(sd_event* loop) const { libsystemd().sd_event_unref(loop); }
};
struct EventSourceReleaser {
    void operator()(sd_event_source* source) const {
        libsystemd().sd_event_source_disable_unref(source);
    }
};
using EventPointer = std::unique_ptr<sd_event, EventReleaser>;
using EventSourcePointer = std::unique_ptr<sd_event_source, EventSourceReleaser>;

// Null if memory or descriptors are short.
inline EventPointer newEventLoop() {
    sd_event* loop = nullptr;
    return EventPointer(libsystemd().sd_event_new(&loop) < 0 ? nullptr : loop);
}

// A function that C code calls must not throw. Returns what `work` returns, or 0 if that is
// nothing, or a negative errno instead of an exception; the source of the event is then disabled.
template <typename Work>
int guarded(Work work) noexcept {
    try {
        if constexpr (std::is_void_v<std::invoke_result_t<Work>>) {
            work();
            return 0;
        } else {
            return work();
        }
    } catch (const std::bad_alloc&) {
        return -ENOMEM;
    } catch (const std::exception&) {
        return -EIO;
    }
}

}  // namespace halvane

#endif

// The loop that waits for the bus, signals, a child and the time.
#ifndef TOOLS_HALVANED_SIM_EVENT_LOOP_H
#define TOOLS_HALVANED_SIM_EVENT_LOOP_H

#include <systemd/sd-event.h>

#include "halvane/platform/bus/event_loop_internal.h"

#include "tools/halvaned-sim/bus_error.h"

namespace halvane::sim {

inline EventPointer madeEventLoop() {
    sd_event* event = nullptr;
    check(::sd_event_new(&event), "making an event loop");
    return EventPointer(event);
}

}  // namespace halvane::sim

#endif

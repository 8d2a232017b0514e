// Owning pointers for sd-bus objects. Two threads must not use one object at the same time.
#ifndef HALVANE_PLATFORM_BUS_POINTERS_INTERNAL_H
#define HALVANE_PLATFORM_BUS_POINTERS_INTERNAL_H

#include <memory>
#include <systemd/sd-bus.h>

#include "halvane/platform/bus/libsystemd_internal.h"

namespace halvane {

struct BusCloser {
    void operator()(sd_bus* bus) const { libsystemd().sd_bus_close_unref(bus); }
};
struct BusMessageReleaser {
    void operator()(sd_bus_message* message) const { libsystemd().sd_bus_message_unref(message); }
};

// Closes the connection and discards unsent data.
using BusPointer = std::unique_ptr<sd_bus, BusCloser>;
using BusMessagePointer = std::unique_ptr<sd_bus_message, BusMessageReleaser>;

}  // namespace halvane

#endif

// D-Bus messages without a bus: written, sealed, and read again.
#ifndef TESTS_SUPPORT_LOOSE_BUS_MESSAGE_H
#define TESTS_SUPPORT_LOOSE_BUS_MESSAGE_H

#include <array>
#include <stdexcept>
#include <sys/socket.h>
#include <systemd/sd-bus.h>
#include <unistd.h>

#include "halvane/platform/bus/pointers_internal.h"

namespace halvane::testing {

class LooseBusMessage {
  public:
    // Only a connection can make a message; this one has no peer.
    LooseBusMessage() {
        sd_bus* bus = nullptr;
        std::array<int, 2> ends{};
        if (::sd_bus_new(&bus) < 0 || ::socketpair(AF_UNIX, SOCK_STREAM, 0, ends.data()) != 0) {
            throw std::runtime_error("no bus");
        }
        bus_.reset(bus);
        far_ = ends[1];
        sd_bus_message* message = nullptr;
        if (::sd_bus_set_fd(bus, ends[0], ends[0]) < 0 || ::sd_bus_start(bus) < 0 ||
            ::sd_bus_message_new_signal(bus, &message, "/x", "org.example.X", "X") < 0) {
            throw std::runtime_error("no message");
        }
        message_.reset(message);
    }
    LooseBusMessage(const LooseBusMessage&) = delete;
    LooseBusMessage& operator=(const LooseBusMessage&) = delete;
    ~LooseBusMessage() { ::close(far_); }

    // The message to append to.
    sd_bus_message* get() const { return message_.get(); }

    // Seals the message, and returns it ready to be read from its start.
    sd_bus_message* sealed() const {
        if (::sd_bus_message_seal(get(), 1, 0) < 0 || ::sd_bus_message_rewind(get(), 1) < 0) {
            throw std::runtime_error("the message is not complete");
        }
        return get();
    }

  private:
    BusPointer bus_;
    BusMessagePointer message_;
    int far_ = -1;
};

}  // namespace halvane::testing

#endif

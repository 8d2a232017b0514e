// A message bus that does nothing by itself. It admits one client, records the client's calls, and
// sends what the test tells it to send. Everything happens on the test's thread.
#ifndef TESTS_SUPPORT_SCRIPTED_BUS_H
#define TESTS_SUPPORT_SCRIPTED_BUS_H

#include <array>
#include <cerrno>
#include <cstddef>
#include <cstring>
#include <optional>
#include <stdexcept>
#include <string>
#include <sys/socket.h>
#include <sys/un.h>
#include <systemd/sd-bus.h>
#include <systemd/sd-id128.h>
#include <unistd.h>
#include <vector>

#include "halvane/platform/bus/pointers_internal.h"
#include "halvane/platform/os/file_internal.h"

#include "tests/support/scoped_environment.h"

namespace halvane::testing {

// While it lives, it is the system bus of this process.
class ScriptedBus {
  public:
    static constexpr const char* kName = "org.freedesktop.DBus";

    ScriptedBus() { listen(); }
    ScriptedBus(const ScriptedBus&) = delete;
    ScriptedBus& operator=(const ScriptedBus&) = delete;

    // Admits the client.
    // REQUIRES: the client has connected, or is connecting.
    void accept() {
        const int client = ::accept4(listener_.number(), nullptr, nullptr, SOCK_CLOEXEC);
        sd_bus* bus = nullptr;
        check(::sd_bus_new(&bus));
        bus_.reset(bus);
        check(::sd_bus_set_fd(bus, client, client));
        check(::sd_bus_set_server(bus, 1, sd_id128_t{}));
        check(::sd_bus_add_filter(bus, nullptr, callArrived, this));
        check(::sd_bus_start(bus));
    }

    // Handles one message of the client. Returns whether there was one.
    bool process() {
        const int status = ::sd_bus_process(bus_.get(), nullptr);
        check(status);
        return status > 0;
    }

    // The methods that the client has called.
    std::vector<std::string> members() const {
        std::vector<std::string> members;
        for (const auto& call : calls_) members.push_back(::sd_bus_message_get_member(call.get()));
        return members;
    }

    // Replies to the call number `index`, counted from 0.
    template <typename... Values>
    void answer(std::size_t index, const char* types, Values... values) {
        check(::sd_bus_reply_method_return(calls_.at(index).get(), types, values...));
    }
    void answerError(std::size_t index, const char* name) {
        const sd_bus_error error = {name, "no text", 0};
        check(::sd_bus_reply_method_error(calls_.at(index).get(), &error));
    }

    // Announces that a name has passed from one owner to another.
    void tellOwner(const char* name, const char* before, const char* now) {
        signal(kName, {"/org/freedesktop/DBus", kName, "NameOwnerChanged"}, "sss", name, before,
               now);
    }

    // Sends a signal as `sender`, with a path, an interface, a member and a body.
    template <typename... Values>
    void signal(const char* sender, std::array<const char*, 3> what, const char* types,
                Values... values) {
        sd_bus_message* message = nullptr;
        check(::sd_bus_message_new_signal(bus_.get(), &message, what[0], what[1], what[2]));
        const BusMessagePointer owner(message);
        check(::sd_bus_message_set_sender(message, sender));
        check(::sd_bus_message_append(message, types, values...));
        check(::sd_bus_send(bus_.get(), message, nullptr));
    }

  private:
    static void check(int status) {
        if (status < 0) throw std::runtime_error(std::strerror(-status));
    }

    // Listens at an abstract name that the kernel picks. The name fits however long the path for
    // temporary files is.
    void listen() {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        auto* const place = reinterpret_cast<sockaddr*>(&address);
        socklen_t size = sizeof(address.sun_family);
        if (::bind(listener_.number(), place, size) != 0 || ::listen(listener_.number(), 1) != 0) {
            throw std::runtime_error(std::strerror(errno));
        }
        size = sizeof(address);
        if (::getsockname(listener_.number(), place, &size) != 0) {
            throw std::runtime_error(std::strerror(errno));
        }
        const std::size_t nameSize = size - offsetof(sockaddr_un, sun_path) - 1;  // behind a NUL
        environment_.emplace("DBUS_SYSTEM_BUS_ADDRESS",
                             "unix:abstract=" + std::string(address.sun_path + 1, nameSize));
    }

    static int callArrived(sd_bus_message* message, void* bus, sd_bus_error*) noexcept {
        static_cast<ScriptedBus*>(bus)->calls_.emplace_back(::sd_bus_message_ref(message));
        return 1;
    }

    const FileDescriptor listener_{::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0)};
    std::optional<ScopedEnvironment> environment_;
    BusPointer bus_;
    std::vector<BusMessagePointer> calls_;
};

}  // namespace halvane::testing

#endif

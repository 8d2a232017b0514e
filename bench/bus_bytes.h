// A request and its reply on a bus by sd-bus alone, without the library.
#ifndef BENCH_BUS_BYTES_H
#define BENCH_BUS_BYTES_H

#include <csignal>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>
#include <sys/prctl.h>
#include <sys/types.h>
#include <sys/wait.h>
#include <systemd/sd-bus.h>
#include <unistd.h>

#include "halvane/model/daemon_service.h"

namespace halvane::bench {

inline constexpr const char* kPath = "/org/halvane/halvaned";

inline void expect(bool holds) {
    if (!holds) std::abort();
}
inline void check(int status) {
    expect(status >= 0);
}

struct Unref {
    void operator()(sd_bus* bus) const { ::sd_bus_flush_close_unref(bus); }
    void operator()(sd_bus_message* message) const { ::sd_bus_message_unref(message); }
};
using Bus = std::unique_ptr<sd_bus, Unref>;
using Message = std::unique_ptr<sd_bus_message, Unref>;

inline Bus openBus() {
    sd_bus* bus = nullptr;
    check(::sd_bus_open_system(&bus));
    return Bus(bus);
}

// What a reply holds beside the status 0: data, or for queryLogging a text and no status.
struct ReplyBytes {
    std::string key;
    std::string bytes;
    bool isText = false;
};

// Sends a request, and waits for the reply.
inline Message requestMessage(sd_bus* bus, const char* command) {
    sd_bus_message* request = nullptr;
    check(::sd_bus_message_new_method_call(bus, &request, kDaemonServiceName, kPath,
                                           kDaemonServiceName, "Request"));
    const Message owner(request);
    check(::sd_bus_message_append(request, "a{sv}", 1, "command", "s", command));
    sd_bus_message* reply = nullptr;
    check(::sd_bus_call(bus, request, UINT64_MAX, nullptr, &reply));
    return Message(reply);
}

// The same, and reads the reply. The order of its keys is free.
inline ReplyBytes requestBytes(sd_bus* bus, const char* command) {
    const Message owner = requestMessage(bus, command);
    sd_bus_message* reply = owner.get();
    ReplyBytes result;
    check(::sd_bus_message_enter_container(reply, 'a', "{sv}"));
    while (::sd_bus_message_enter_container(reply, 'e', "sv") > 0) {
        const char *key = nullptr, *type = nullptr;
        check(::sd_bus_message_read(reply, "s", &key));
        check(::sd_bus_message_peek_type(reply, nullptr, &type));
        check(::sd_bus_message_enter_container(reply, 'v', type));
        if (*type == 'x') {
            std::int64_t status = -1;
            check(::sd_bus_message_read(reply, "x", &status));
            expect(status == 0);
        } else if (*type == 's') {
            const char* text = nullptr;
            check(::sd_bus_message_read(reply, "s", &text));
            result = {key, text, true};
        } else {
            const void* bytes = nullptr;
            std::size_t size = 0;
            check(::sd_bus_message_read_array(reply, 'y', &bytes, &size));
            result = {key, {static_cast<const char*>(bytes), size}, false};
        }
        check(::sd_bus_message_exit_container(reply));
        check(::sd_bus_message_exit_container(reply));
    }
    return result;
}

inline void append(sd_bus_message* message, const ReplyBytes& reply) {
    check(::sd_bus_message_open_container(message, 'a', "{sv}"));
    if (!reply.isText) {
        check(::sd_bus_message_append(message, "{sv}", "status", "x", std::int64_t{0}));
    }
    check(::sd_bus_message_open_container(message, 'e', "sv"));
    check(::sd_bus_message_append(message, "s", reply.key.c_str()));
    check(::sd_bus_message_open_container(message, 'v', reply.isText ? "s" : "ay"));
    if (reply.isText) {
        check(::sd_bus_message_append(message, "s", reply.bytes.c_str()));
    } else {
        check(::sd_bus_message_append_array(message, 'y', reply.bytes.data(), reply.bytes.size()));
    }
    check(::sd_bus_message_close_container(message));
    check(::sd_bus_message_close_container(message));
    check(::sd_bus_message_close_container(message));
}

// Owns the name of the daemon, and handles each request with `answer` until the bus goes. Writes
// one byte when it is ready.
[[noreturn]] inline void serveBytes(sd_bus_message_handler_t answer, void* data, int readyPipe) {
    const Bus bus = openBus();
    const sd_bus_vtable methods[] = {
        SD_BUS_VTABLE_START(0),
        SD_BUS_METHOD("Request", "a{sv}", "a{sv}", answer, SD_BUS_VTABLE_UNPRIVILEGED),
        SD_BUS_VTABLE_END};
    check(::sd_bus_add_object_vtable(bus.get(), nullptr, kPath, kDaemonServiceName, methods, data));
    check(::sd_bus_request_name(bus.get(), kDaemonServiceName, 0));
    expect(::write(readyPipe, "", 1) == 1);
    for (;;) {
        const int status = ::sd_bus_process(bus.get(), nullptr);
        if (status < 0) ::_exit(0);
        if (status == 0) check(::sd_bus_wait(bus.get(), UINT64_MAX));
    }
}

// A service in a process of its own.
class BytesService {
  public:
    BytesService(sd_bus_message_handler_t answer, void* data) {
        int ready[2] = {};
        check(::pipe(ready));
        process_ = ::fork();
        if (process_ == 0) {
            ::prctl(PR_SET_PDEATHSIG, SIGKILL);
            serveBytes(answer, data, ready[1]);
        }
        ::close(ready[1]);
        char byte = 0;
        expect(::read(ready[0], &byte, 1) == 1);
        ::close(ready[0]);
    }
    BytesService(const BytesService&) = delete;
    BytesService& operator=(const BytesService&) = delete;
    ~BytesService() {
        ::kill(process_, SIGKILL);
        ::waitpid(process_, nullptr, 0);
    }

  private:
    pid_t process_ = -1;
};

}  // namespace halvane::bench

#endif

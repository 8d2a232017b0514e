// A client of hostapd's control interface: datagrams over a socket of the file system. Requests are
// answered in their order, and events come in between.
//
// Threads: the thread that runs the loop.
#ifndef TOOLS_HALVANED_HOSTAPD_CONTROL_SOCKET_H
#define TOOLS_HALVANED_HOSTAPD_CONTROL_SOCKET_H

#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <systemd/sd-event.h>

#include "halvane/base/result.h"
#include "halvane/platform/bus/event_loop_internal.h"
#include "halvane/platform/os/file_internal.h"

#include "tools/halvaned/hostapd/event_source.h"

namespace halvane::hosting {

// Why a request has no reply.
enum class ControlFailure {
    Lost,      // the connection was lost before the reply
    TooLarge,  // the reply has more than kLargestMessage octets
    TooMany,   // kMostRequests wait already
};

class ControlSocket {
  public:
    static constexpr std::size_t kLargestMessage = 16384;  // hostapd's own limit is 4096
    static constexpr std::size_t kMostRequests = 256;      // that wait for replies

    // The text is valid during the call.
    using ReplyHandler = std::function<void(Result<std::string_view, ControlFailure>)>;

    struct Handlers {
        // A message that begins with '<'. Larger ones than kLargestMessage are dropped.
        std::function<void(std::string_view)> event = {};
        // The connection is lost, and a sentence says why. Called once, after the handlers of the
        // requests that waited.
        std::function<void(const std::string&)> lost = {};
    };

    struct Paths {
        std::string server;
        std::string folder;  // gets a file for the own end, which is removed in the end
    };

    // Returns a sentence if there is no such server (yet). `timeout`, in microseconds, is the time
    // for each reply. After it the connection is lost: a late reply would be taken for another.
    static Result<std::unique_ptr<ControlSocket>, std::string> connect(sd_event* loop,
                                                                       const Paths& paths,
                                                                       std::uint64_t timeout,
                                                                       Handlers handlers);
    ControlSocket(const ControlSocket&) = delete;
    ControlSocket& operator=(const ControlSocket&) = delete;

    // Calls no handler.
    ~ControlSocket();

    // Gives the connection up: what waits is lost, and nothing is received any more. The handler
    // for losses is not called.
    void close();

    // Sends the request when all earlier ones have their replies. The handler is called once:
    // during this call if the connection is lost or too many requests wait, else from the loop.
    // Handlers may request, and may destroy the ControlSocket.
    void request(std::string command, ReplyHandler reply);

  private:
    struct Request {
        std::string command;
        ReplyHandler reply;
    };

    ControlSocket(sd_event* loop, std::uint64_t timeout, Handlers handlers);

    std::string open(const Paths& paths);
    void sendFirst();
    void listenFor(std::uint32_t events);
    void readSome();
    void take(std::string_view message, bool isTooLarge);
    void reply(Result<std::string_view, ControlFailure> result);
    void expire();
    bool failRequests();
    void lose(const std::string& reason);

    static int happened(sd_event_source*, int, std::uint32_t events, void* socket);

    sd_event* const loop_;
    const std::uint64_t timeout_;
    Handlers handlers_;
    FileDescriptor socket_;
    std::string ownPath_;
    std::deque<Request> requests_;  // the first one is on its way
    bool isSent_ = false;           // whether it is
    EventSourcePointer source_;
    EventSourcePointer deadline_;
    // Expires with the object, for functions whose handlers may destroy it.
    std::shared_ptr<char> life_ = std::make_shared<char>();
};

}  // namespace halvane::hosting

#endif

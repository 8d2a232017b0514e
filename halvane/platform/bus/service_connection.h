// A connection to a named service of the system: requests with replies, and events.
//
// It runs over D-Bus. The service `name` owns the bus name `name`. It has an object whose path is
// the name with slashes for dots: "/org/halvane/halvaned" for org.halvane.halvaned. A request is
// the method call name.Request(a{sv}) -> a{sv} on that object. An event is the signal
// name.Event(a{sv}) from it. On the bus
//
//   string         is "s"
//   number         is "x"; an integer above 2^63-1 is "t", a real number "d"
//   boolean        is "b"
//   data           is "ay"
//   dictionary     is "a{sv}"
//   array          is "av"
//
// A received message may also hold other integer types, which become numbers; object paths and
// signatures, which become strings; and arrays and dictionaries of one type. Values of other types
// are skipped, such as structures and arrays of 16-bit integers. If a key occurs twice, the last
// value counts. The connection accepts no file descriptors: otherwise a sender could use up those
// of the process. The bus therefore passes it no message that holds one.
//
// Neither a request nor the connection's own calls to the bus have a time limit. One exception: if
// a bus accepts the connection but does not authenticate it within 90 seconds, the connection
// becomes Invalid.
//
// A request never starts the service: if nobody owns the name, the reply is an error. Only events
// of the current owner of the name are accepted; a signal from any other sender is dropped,
// whatever it claims to be. The connection relies on the bus to accept replies from the receiver of
// the request alone, as every system bus does.
//
// A message has at most kServiceMessageLimit bytes on the wire, which is the default limit of a
// bus. A bus disconnects the sender of a longer one. The connection therefore does not send a
// longer request, and a service that sends a longer reply disappears for a moment.
//
// A bus limits how many replies a client may wait for at a time, by default 128. It replies to a
// further request with an error.
//
// The connection always reads everything that the bus has for it, so memory grows while a queue is
// behind. If memory runs out, a message is dropped, or a request with its reply: its handler is
// destroyed without being called. If only the values of a reply do not fit, the reply is an error.
// The other events wait for memory, and so does what comes after them.
//
// A child process made by fork() must not use the connection: it has none of the threads. There
// calls do nothing except destroy the reply handlers that they get, uncalled. Destroying the
// connection waits for nothing and leaves its memory allocated. The bus considers the connection
// open as long as the child has its descriptor, which exec closes.
//
// Threads: any thread may make any call, the threads of the queues included. Replies and events are
// put on their queues in order of arrival.
#ifndef HALVANE_PLATFORM_BUS_SERVICE_CONNECTION_H
#define HALVANE_PLATFORM_BUS_SERVICE_CONNECTION_H

#include <chrono>
#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "halvane/base/export.h"
#include "halvane/platform/bus/ipc_message.h"
#include "halvane/platform/bus/service_event.h"
#include "halvane/platform/os/serial_queue.h"

namespace halvane {

// In bytes. Of these, 2048 are reserved for everything but the dictionary.
inline constexpr std::size_t kServiceMessageLimit = 33554432;

class AwaitedReply;

class HALVANE_EXPORT ServiceConnection {
  public:
    // REQUIRES of both: throws nothing, like SerialQueue::Work.
    using EventHandler = std::function<void(ServiceEvent)>;
    using ReplyHandler = std::function<void(ServiceReply)>;

    // The thread that calls the handler of a reply.
    // - Queue: that of the reply queue.
    // - Any: the connection's own thread instead, if the queue is idle and the reply small (64
    //   KiB). That is faster, but meanwhile the connection reads nothing. Replies that the bus has
    //   no part in are handled on the queue's thread all the same, such as that of a message that
    //   cannot be sent.
    enum class ReplyThread { Queue, Any };

    // Creates a connection to the service `serviceName` that handles events on `targetQueue`. It
    // does nothing before resume(). A queue may be destroyed before the connection; what it should
    // have handled is then dropped.
    static std::unique_ptr<ServiceConnection> create(std::string serviceName,
                                                     const SerialQueue& targetQueue);

    ServiceConnection(const ServiceConnection&) = delete;
    ServiceConnection& operator=(const ServiceConnection&) = delete;

    // Ends the connection, and waits for running handlers unless called from one. No handler is
    // called afterwards; those of pending requests are destroyed uncalled. A program that needs
    // every reply calls cancel() and waits for the replies first.
    // REQUIRES: running handlers wait neither for the destroying thread nor for a reply on this
    // connection.
    ~ServiceConnection();

    // Selects the bus: the system bus, or by default the user's session bus.
    // DBUS_SYSTEM_BUS_ADDRESS and DBUS_SESSION_BUS_ADDRESS may name others. No effect after
    // resume().
    void setPrivileged(bool isPrivileged);

    // Sets the D-Bus address of the bus, such as "unix:path=/run/dbus/system_bus_socket". The
    // environment is not read then. No effect after resume().
    void setBusAddress(std::string address);

    // Sets the handler of events:
    // - IPCMessage: an event of the service.
    // - ServiceAppeared: the connection finds the service running, or the service comes up later.
    // - ServiceError, Interrupted: the service went away, but not the bus. Pending requests get an
    //   error reply, unless the service only gave up its name and still replies.
    // - ServiceError, Invalid: the bus cannot be reached, has no room for another connection at
    //   present, or is gone; or cancel() was called. This is the last event and comes once. The
    //   handler is destroyed afterwards.
    // Without a handler events are dropped. No effect after resume().
    void setEventHandler(EventHandler handler);

    // Sets a handler that is called on the target queue, between events and at most once, if nobody
    // owns the service's name when the connection first asks. No effect after resume().
    // REQUIRES: throws nothing.
    void setAbsenceHandler(std::function<void()> handler);

    // Connects and sends the requests made so far. It waits for nothing except the look-up of a
    // host name, if the bus's address holds one. A missing bus causes the event Invalid. Only the
    // first call has an effect.
    // REQUIRES: nobody changes the environment during the call, unless the bus's address was set.
    void resume();

    // Sends `message` once the connection is resumed, and calls `handler` on `replyQueue` with the
    // reply, once. The reply is an error if
    // - the connection is Invalid, or becomes so before the reply arrives
    // - the service goes away before it replies (Interrupted), or nobody owns its name
    // - the service replies with an error, or with something other than a dictionary
    // - `message` cannot be sent: a string or key is not UTF-8 or holds U+0000; a value is a date,
    //   an object or null; containers nest deeper than D-Bus allows, which is 20 dictionaries or 30
    //   arrays in one another; or the message is longer than kServiceMessageLimit.
    // REQUIRES: if `thread` is Any, `handler` waits for nothing that this connection does.
    void sendMessageWithReply(IPCMessage message, const SerialQueue& replyQueue,
                              ReplyHandler handler, ReplyThread thread = ReplyThread::Queue);

    // The same without a queue. Calls `handler` at once, on the thread that serves the connection:
    // its own thread, or one that waits for a reply (Request). If the bus has no part in the reply,
    // it calls `handler` on the thread that sends the message.
    // REQUIRES: `handler` is short, waits for nothing and calls nothing of this connection.
    void sendMessageWithReplyAtOnce(IPCMessage message, ReplyHandler handler);

    // A request whose reply a thread waits for.
    class HALVANE_EXPORT Request;

    // Makes a request that is sent by Request::wait(), or by a later request of any kind if that is
    // sent first.
    // REQUIRES: wait() is called, or the connection ends.
    Request request(IPCMessage message);

    // Ends the connection for good and returns at once. Pending and later requests get an Invalid
    // error as their reply. The event handler gets the event Invalid, even without a resume().
    void cancel();

  private:
    class Core;
    explicit ServiceConnection(std::shared_ptr<Core> core);
    std::shared_ptr<Core> core_;
};

// It may outlive the connection.
//
// Threads: only one thread at a time may use an object.
class ServiceConnection::Request {
  public:
    // Waits until there is a reply, which may be an error as for sendMessageWithReply(), or until
    // it is certain that there will be none: the connection was destroyed, or memory ran out. Gives
    // up at `end`, if there is one; a late reply is dropped. Returns whether the wait came to its
    // end before that.
    //
    // The calling thread serves the connection while it waits: it handles what arrives in place of
    // the connection's own thread, and puts other replies and events on their queues. Of several
    // waiting threads one does so for all. The thread may be cancelled (pthread_cancel()) while
    // nothing arrives.
    // REQUIRES: not called by a handler that runs on a thread that serves the connection.
    bool wait(const std::optional<std::chrono::steady_clock::time_point>& end = {});

    // The reply; absent if there is none, or it was taken before.
    std::optional<ServiceReply> takeReply();

  private:
    friend class ServiceConnection;
    Request(std::shared_ptr<Core> core, std::shared_ptr<AwaitedReply> reply);

    std::shared_ptr<Core> core_;
    std::shared_ptr<AwaitedReply> reply_;
};

}  // namespace halvane

#endif

// A connection to a named service of the system: requests with replies, and events.
//
// It runs over D-Bus. The service `name` owns the bus name `name` and has an object whose path is
// the name with slashes for dots, "/org/halvane/halvaned" for org.halvane.halvaned. A request is
// the method call name.Request(a{sv}) -> a{sv} on that object, an event the signal
// name.Event(a{sv}) from it. On the bus
//
//   string         is "s"
//   number         is "x"; an integer above 2^63-1 is "t", a real number "d"
//   boolean        is "b"
//   data           is "ay"
//   dictionary     is "a{sv}"
//   array          is "av"
//
// and what arrives may also hold the other integer types, which become numbers, object paths and
// signatures, which become strings, and arrays and dictionaries of one type. Values of other types,
// structures and arrays of 16-bit integers among them, are skipped. Of a key that is there twice
// the last value counts. A bus passes no message that holds a descriptor: the connection takes
// none, or who sends them could leave the process without any.
//
// Requests have no time limit, and neither has what the connection asks of the bus itself. A bus
// that takes the connection but does not let it in is given up after 90 seconds: the connection is
// Invalid then.
//
// Requests start no service: where nobody owns the name, the reply is an error. Events are taken
// from the current owner of the name alone; a signal of anybody else is dropped, whatever it claims
// to be. That nobody but who was asked replies is the bus's to see to, as every system bus does.
//
// A message is at most kServiceMessageLimit bytes on the wire, which is what a bus takes unless it
// was told otherwise. Who sends a longer one loses the connection to the bus, so that a longer
// request is not sent, and a service that answers with one is gone for a moment.
//
// A bus lets nobody wait for more than so many replies at a time, 128 unless it was told otherwise;
// it answers a request beyond that with an error.
//
// The connection reads what the bus has for it at all times: while a queue is behind, memory grows.
// What memory does not hold is dropped, be it an event or a request with its reply, whose handler
// is destroyed without having been called; a reply whose values alone do not fit is an error.
//
// A child that fork() makes of the process may not use the connection, for it has none of the
// threads: there calls do nothing, but that handlers of replies are destroyed at once, without
// having been called, and destroying the connection waits for nothing and leaves its memory behind.
// The bus takes the connection for open as long as the child has its descriptor, which is closed by
// exec.
//
// Threads: any call from any thread, the threads of the queues included. Replies and events are
// handed to their queues in order of arrival.
#ifndef HALVANE_PLATFORM_BUS_SERVICE_CONNECTION_H
#define HALVANE_PLATFORM_BUS_SERVICE_CONNECTION_H

#include <cstddef>
#include <functional>
#include <memory>
#include <string>

#include "halvane/base/export.h"
#include "halvane/platform/bus/ipc_message.h"
#include "halvane/platform/bus/service_event.h"
#include "halvane/platform/os/serial_queue.h"

namespace halvane {

// Bytes, of which 2048 are set aside for what is not the dictionary.
inline constexpr std::size_t kServiceMessageLimit = 33554432;

class HALVANE_EXPORT ServiceConnection {
  public:
    // REQUIRES of both: throws nothing, as SerialQueue::Work.
    using EventHandler = std::function<void(ServiceEvent)>;
    using ReplyHandler = std::function<void(ServiceReply)>;

    // Which thread calls the handler of a reply: that of its queue; or, where the queue has nothing
    // to do and the reply is small (64 KiB), the connection's own in its place, which is sooner,
    // and reads nothing meanwhile. Replies that the bus has no part in, such as that of a message
    // which cannot be sent, are handled on the queue's thread in any case.
    enum class ReplyThread { Queue, Any };

    // A connection to the service `serviceName` whose events are handled on `targetQueue`. It does
    // nothing before resume(). A queue may go before the connection: what would have been handled
    // on it is dropped then.
    static std::unique_ptr<ServiceConnection> create(std::string serviceName,
                                                     const SerialQueue& targetQueue);

    ServiceConnection(const ServiceConnection&) = delete;
    ServiceConnection& operator=(const ServiceConnection&) = delete;

    // Ends the connection. Waits for handlers that are running; none is called afterwards, and
    // those of requests that wait for their reply are destroyed without having been called: who
    // needs every reply calls cancel() and waits for them first. Called from a handler, it does not
    // wait for that one.
    // REQUIRES: handlers that are running do not wait for the destroying thread, nor for a reply
    // on this connection.
    ~ServiceConnection();

    // Whether the service is on the system bus (DBUS_SYSTEM_BUS_ADDRESS names another one), or, as
    // it is unless this is called, on the bus of the user's session (DBUS_SESSION_BUS_ADDRESS).
    // No effect after resume().
    void setPrivileged(bool isPrivileged);

    // Names the bus to connect to, in place of the one that the environment names: a D-Bus address,
    // "unix:path=/run/dbus/system_bus_socket". The environment is not read then. No effect after
    // resume().
    void setBusAddress(std::string address);

    // What events are handed to:
    // - IPCMessage: an event of the service
    // - ServiceAppeared: when the connection finds the service there, or it comes up later
    // - ServiceError, Interrupted: the service went away, the bus did not. Its pending requests get
    //   an error reply, except where the service gave up its name alone and answers them still.
    // - ServiceError, Invalid: there was no bus to be reached, or one with no room for another
    //   connection at the moment; it is gone; or cancel() was called.
    //   The last event, once; afterwards the handler is destroyed.
    // No effect after resume(). Without a handler events are dropped.
    void setEventHandler(EventHandler handler);

    // Calls `handler` on the target queue if nobody owns the service's name when the connection
    // first asks: between events, once at most. No effect after resume().
    // REQUIRES: throws nothing.
    void setAbsenceHandler(std::function<void()> handler);

    // Connects, and sends what was requested so far. Waits for nothing, but for the look-up of a
    // host's name where the bus's address holds one: a bus that is not there is the event Invalid.
    // Once only; a later call does nothing.
    // REQUIRES: nobody changes the environment during the call, unless the bus's address was set.
    void resume();

    // Sends `message`, once the connection has been resumed, and calls `handler` on `replyQueue`
    // with the reply, once. That is an error where
    // - the connection is Invalid, or becomes so before the reply is there
    // - the service goes away before it has replied (Interrupted), or nobody owns its name
    // - the service replies with an error, or with something else than a dictionary
    // - `message` cannot be sent: a string or key is not UTF-8 or holds U+0000, a value is a date,
    //   an object or null, containers nest deeper than D-Bus allows, which is 20 dictionaries or 30
    //   arrays in one another, or the whole is longer than kServiceMessageLimit.
    // REQUIRES: where any thread may call it, `handler` waits for nothing that this connection
    // does.
    void sendMessageWithReply(IPCMessage message, const SerialQueue& replyQueue,
                              ReplyHandler handler, ReplyThread thread = ReplyThread::Queue);

    // The same without a queue: calls `handler` at once, on the connection's own thread, or on the
    // calling thread where the bus has no part in the reply.
    // REQUIRES: `handler` is short and waits for nothing; it calls nothing of this connection.
    void sendMessageWithReplyAtOnce(IPCMessage message, ReplyHandler handler);

    // Ends the connection for good, and returns at once: pending and later requests get an Invalid
    // error as their reply, the event handler the event Invalid, even where there was no resume().
    void cancel();

  private:
    class Core;
    explicit ServiceConnection(std::shared_ptr<Core> core);
    std::shared_ptr<Core> core_;
};

}  // namespace halvane

#endif

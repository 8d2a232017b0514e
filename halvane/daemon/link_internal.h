// The core of both daemon clients: the connection, the queue of its events, requests, and the end.
//
// For DaemonClient the link renews the connection when the bus comes back, and tells requests and
// events what happened. For HalvaneXPCClient it makes one connection and passes events and replies
// on as they come; its states are Connecting, BusGone once released, and Ending.
//
// Threads: any thread may make any call, except as end() states. Events and completions run on one
// queue. Blocked requests receive their replies without it, so that code on that queue may make
// them. Two more threads serve the connection and reconnect.
#ifndef HALVANE_DAEMON_LINK_INTERNAL_H
#define HALVANE_DAEMON_LINK_INTERNAL_H

#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>

#include "halvane/daemon/back_off_internal.h"
#include "halvane/daemon/daemon_events.h"
#include "halvane/daemon/daemon_result.h"
#include "halvane/daemon/pending_internal.h"
#include "halvane/platform/bus/ipc_message.h"
#include "halvane/platform/bus/service_connection.h"
#include "halvane/platform/bus/service_event.h"
#include "halvane/platform/os/delayed_call_internal.h"
#include "halvane/platform/os/process_internal.h"
#include "halvane/platform/os/serial_queue.h"

namespace halvane {

class DaemonLink : public std::enable_shared_from_this<DaemonLink> {
  public:
    using Completion = DaemonCompletions::Completion;

    // Whether a request turns notifications on or off; absent for any other request.
    using Wish = std::optional<bool>;

    // Receives the events as they come. It may throw std::bad_alloc.
    using Receiver = std::function<void(const ServiceEvent&)>;

    // A link that keeps the connection up.
    explicit DaemonLink(DaemonEvents events);

    // A link of one connection, which passes events to `receiver` on a queue of this label.
    DaemonLink(const char* queueLabel, Receiver receiver);

    DaemonLink(const DaemonLink&) = delete;
    DaemonLink& operator=(const DaemonLink&) = delete;
    ~DaemonLink();

    // Begins to connect. Called once by the owner, and then by the thread that reconnects.
    void connect();

    // Releases pending requests, and waits for running events and completions, unless called from
    // one. Nothing is called afterwards. In a forked child it leaves everything as it is, for good.
    // REQUIRES: what is running does not wait for the calling thread.
    void end();

    // Ends a link of one connection early: no more events come, and pending and later requests
    // fail. Replies that arrived before are still handled.
    void release();

    bool hasEnded() const { return completions_->isEnding(); }
    bool isInHomeProcess() const { return home_.isCurrent(); }

    DaemonState state() const;

    // May throw std::bad_alloc; the request is not sent then.
    DaemonReply request(IPCMessage message, const DaemonDeadline& deadline, Wish wish);

    // Calls `done` once. `done` throws nothing.
    void request(IPCMessage message, Completion done, Wish wish);

    // Sets the wish of a request that could not even be made.
    void remember(Wish wish);

    // Waits for the reply and passes it to `handler` on `replies`, on the calling thread if that
    // queue is idle. Destroys the handler uncalled if there is no reply, which includes the end of
    // the link. May throw std::bad_alloc.
    void send(IPCMessage message, const SerialQueue& replies,
              ServiceConnection::ReplyHandler handler);

  private:
    std::unique_ptr<ServiceConnection> makeConnection();
    void reconnect();

    void handle(const ServiceEvent& event);
    void receive(const ServiceEvent& event);
    void appeared();
    void lostDaemon();
    void lostBus();
    bool renew();
    bool isRenewalDue() const;

    bool enter(DaemonState state);
    void tell(DaemonState state);
    void tellRenewal(const DaemonResult<void>& result);
    std::shared_ptr<const DaemonEvents> events() const;

    DaemonError failure() const;
    template <typename Send>
    bool post(Wish wish, Send send);
    using Numbered = std::shared_ptr<DaemonNumberedRequest>;
    Numbered number(Completion& done) const;
    ServiceConnection::ReplyHandler handlerFor(const Numbered& request) const;

    const HomeProcess home_;
    const std::string busAddress_;
    const std::shared_ptr<DaemonCompletions> completions_ = std::make_shared<DaemonCompletions>();
    std::optional<SerialQueue> xpcConnectionQueue_;  // until end()
    const SerialQueue::Handle queueHandle_;
    const Receiver receiver_;  // empty if the link keeps the connection up

    mutable std::mutex mutex_;
    std::shared_ptr<const DaemonEvents> events_;
    DaemonState state_ = DaemonState::Connecting;
    std::unique_ptr<ServiceConnection> xpcConnection_;  // null while there is no connection
    BackOff backOff_;
    bool isSubscribed_ = false;        // the last request's setting
    bool isSubscriptionLost_ = false;  // the daemon does not know of it

    std::optional<DelayedCall> retry_;  // if the link keeps the connection up
    std::shared_ptr<DaemonLink> self_;  // set once abandoned
};

}  // namespace halvane

#endif

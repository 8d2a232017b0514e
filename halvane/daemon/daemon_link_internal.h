// The core of the daemon's client: a connection that is made anew when the bus comes back, requests
// in both forms, and the events.
//
// Threads: any call from any thread, but for what end() says. The events and completions run on one
// queue; the connection's own thread releases blocked requests, so that these may be made on that
// queue; a third thread makes connections anew.
#ifndef HALVANE_DAEMON_DAEMON_LINK_INTERNAL_H
#define HALVANE_DAEMON_DAEMON_LINK_INTERNAL_H

#include <memory>
#include <mutex>
#include <optional>
#include <string>

#include "halvane/daemon/back_off_internal.h"
#include "halvane/daemon/daemon_events.h"
#include "halvane/daemon/daemon_pending_internal.h"
#include "halvane/daemon/daemon_result.h"
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

    // Whether a request asks for notifications, or to have no more; absent for any other.
    using Wish = std::optional<bool>;

    explicit DaemonLink(DaemonEvents events);
    DaemonLink(const DaemonLink&) = delete;
    DaemonLink& operator=(const DaemonLink&) = delete;
    ~DaemonLink();

    // Begins to connect.
    void start();

    // Releases what waits, and waits for the events and completions that run, unless called from
    // one: none is called afterwards.
    // REQUIRES: what runs does not wait for the calling thread.
    void end();

    // In another process than its own, instead: leaves everything as it is, for good.
    void abandon() { self_ = shared_from_this(); }
    bool isInHomeProcess() const { return home_.isCurrent(); }

    DaemonState state() const;

    // Throws nothing.
    DaemonReply request(IPCMessage message, const DaemonDeadline& deadline, Wish wish);

    // Calls `done` once, where it may throw nothing.
    void request(IPCMessage message, Completion done, Wish wish);

  private:
    std::unique_ptr<ServiceConnection> makeConnection();
    void connect();
    void reconnect();

    void handle(ServiceEvent event);
    void appeared();
    void lostDaemon();
    void lostBus();
    void renew();

    bool enter(DaemonState state);
    void tell(DaemonState state);
    void tellRenewal(const DaemonResult<void>& result);
    std::shared_ptr<const DaemonEvents> events() const;

    DaemonError failure() const;
    template <typename Send>
    bool post(Wish wish, Send send);
    using Numbered = std::shared_ptr<DaemonNumberedRequest>;
    Numbered number(Completion& done);
    ServiceConnection::ReplyHandler handlerFor(const Numbered& request) const;

    const HomeProcess home_;
    const std::string busAddress_;
    const std::shared_ptr<DaemonCompletions> completions_ = std::make_shared<DaemonCompletions>();
    std::optional<SerialQueue> queue_;  // until the end
    const SerialQueue::Handle queueHandle_;

    mutable std::mutex mutex_;
    std::shared_ptr<const DaemonEvents> events_;
    DaemonState state_ = DaemonState::Connecting;
    std::unique_ptr<ServiceConnection> connection_;  // null while there is none
    BackOff backOff_;
    bool isSubscribed_ = false;        // what was last wished
    bool isSubscriptionLost_ = false;  // with the daemon that knew of it

    DelayedCall retry_;
    std::shared_ptr<DaemonLink> self_;  // once abandoned
};

}  // namespace halvane

#endif

// The core of the daemon client: a connection that is renewed when the bus comes back, requests in
// both forms, and the events.
//
// Threads: any thread may make any call, except as end() states. Events and completions run on one
// queue. The connection's own thread releases blocked requests, so that code on that queue may make
// them. A third thread reconnects.
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

    // Whether a request turns notifications on or off; absent for any other request.
    using Wish = std::optional<bool>;

    explicit DaemonLink(DaemonEvents events);
    DaemonLink(const DaemonLink&) = delete;
    DaemonLink& operator=(const DaemonLink&) = delete;
    ~DaemonLink();

    // Begins to connect.
    void start();

    // Releases pending requests, and waits for running events and completions, unless called from
    // one. Nothing is called afterwards.
    // REQUIRES: what is running does not wait for the calling thread.
    void end();

    // Replaces end() in a forked child: leaves everything as it is, for good.
    void abandon() { self_ = shared_from_this(); }
    bool isInHomeProcess() const { return home_.isCurrent(); }

    DaemonState state() const;

    // Throws nothing.
    DaemonReply request(IPCMessage message, const DaemonDeadline& deadline, Wish wish);

    // Calls `done` once. `done` throws nothing.
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
    Numbered number(Completion& done) const;
    ServiceConnection::ReplyHandler handlerFor(const Numbered& request) const;

    const HomeProcess home_;
    const std::string busAddress_;
    const std::shared_ptr<DaemonCompletions> completions_ = std::make_shared<DaemonCompletions>();
    std::optional<SerialQueue> queue_;  // until end()
    const SerialQueue::Handle queueHandle_;

    mutable std::mutex mutex_;
    std::shared_ptr<const DaemonEvents> events_;
    DaemonState state_ = DaemonState::Connecting;
    std::unique_ptr<ServiceConnection> connection_;  // null while there is no connection
    BackOff backOff_;
    bool isSubscribed_ = false;        // the last request's setting
    bool isSubscriptionLost_ = false;  // the daemon that knew of it is gone

    DelayedCall retry_;
    std::shared_ptr<DaemonLink> self_;  // set once abandoned
};

}  // namespace halvane

#endif

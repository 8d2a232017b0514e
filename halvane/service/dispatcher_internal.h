// The daemon without a bus: requests in, replies and notifications out.
//
// Threads: only one thread at a time may use an object and what it gave to the backend.
#ifndef HALVANE_SERVICE_DISPATCHER_INTERNAL_H
#define HALVANE_SERVICE_DISPATCHER_INTERNAL_H

#include <cstddef>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "halvane/model/daemon_status.h"
#include "halvane/model/station_change.h"
#include "halvane/platform/bus/ipc_message.h"
#include "halvane/service/backend.h"
#include "halvane/service/daemon_faults.h"
#include "halvane/service/daemon_limits.h"
#include "halvane/service/log_settings.h"
#include "halvane/service/request_internal.h"
#include "halvane/service/subscribers.h"

namespace halvane {

class Dispatcher final : public StationListener, public std::enable_shared_from_this<Dispatcher> {
  public:
    // Everything outlives the dispatcher.
    struct Parts {
        Backend& backend;
        LogSettings& logging;
        Subscribers& subscribers;
        DaemonFaults* faults = nullptr;
        DaemonLimits limits = {};
        // Whether so much waits for the bus that notifications wait, too. Throws nothing.
        std::function<bool()> isCongested = [] { return false; };
    };

    // Changes that may wait. Of more, the latest are dropped.
    static constexpr std::size_t kMostHeld = 1 << 18;

    // REQUIRES of both: throws nothing.
    using Respond = std::function<void(const DaemonAnswer&)>;
    using Notify = std::function<void(const IPCMessage& event, const std::string& subscriber)>;

    // Becomes the listener of the backend.
    static std::shared_ptr<Dispatcher> create(const Parts& parts, Notify notify);
    Dispatcher(const Dispatcher&) = delete;
    Dispatcher& operator=(const Dispatcher&) = delete;

    // What the backend still has to reply goes nowhere.
    virtual ~Dispatcher();

    // Carries out a request of the connection `sender`, and calls `respond` once, now or later.
    // Then, unless the reply comes later, notifies of its effects. If it throws std::bad_alloc, it
    // has not called `respond`, and never will.
    void handle(const std::string& sender, const IPCMessage& request, Respond respond);

    // The connection has left the bus.
    void departed(const std::string& name) { parts_.subscribers.remove(name); }

    // The daemon has left the bus.
    void left() {
        parts_.subscribers.clear();
        held_.clear();
    }

    void happened(const StationChange& change) override;

    // Whether notifications wait. A change waits once for all subscribers, and replies do not wait
    // with it.
    bool holdsNotifications() const { return !held_.empty(); }

    // Sends those that wait until the bus is congested again.
    void sendHeld();

  private:
    struct Waiting;
    using Pending = std::shared_ptr<Waiting>;

    Dispatcher(const Parts& parts, Notify notify);

    bool isBusyFor(const std::string& sender) const;
    void carryOut(const CommandInfo& command, const IPCMessage& message, const Pending& pending);
    void askBackend(const DecodedRequest& request, const Pending& pending);
    DaemonStatus subscribe(const std::string& sender, bool wants);
    void finish(const Waiting& waiting, const std::function<IPCMessage()>& reply) noexcept;
    void notify(const StationChange& change);
    void send(const StationChange& change);
    void notifyOfEffects();

    const Parts parts_;
    const Notify notify_;
    std::size_t waiting_ = 0;
    std::map<std::string, std::size_t> waitingOf_;
    bool isHandling_ = false;
    std::vector<StationChange> effects_;  // of the request that is being handled
    std::deque<StationChange> held_;
};

}  // namespace halvane

#endif

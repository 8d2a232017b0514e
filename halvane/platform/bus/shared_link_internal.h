// A link that several threads serve in turn: the connection's own thread, called the keeper, and
// the threads that wait for replies.
//
// One thread at a time leads: it alone waits for the bus and handles what arrives. A thread that
// awaits a reply leads while it waits, if no other does, and appoints another waiting thread when
// it has its reply. The keeper leads while nobody waits. A request and its reply therefore pass
// through no other thread. Meanwhile the bus's descriptor is hidden from the keeper, so that a
// change of the leader between the keeper and another thread wakes nobody.
//
// No wake-up is lost, by these rules:
// - Only the leader handles what arrives, and it does so under the lock of the link. A new leader
//   takes that lock before it first waits for the bus. It thus knows whether its reply has arrived.
// - Whoever releases that lock looks into the mailbox again. A thread that finds the link in use
//   can therefore leave its request there.
// - Whoever finds the link closed wakes the keeper, which ends the service.
//
// The link is shared once the bus has admitted it. Before that, and after the end, only the keeper
// uses it.
//
// Threads: any thread may make any call, except as stated.
#ifndef HALVANE_PLATFORM_BUS_SHARED_LINK_INTERNAL_H
#define HALVANE_PLATFORM_BUS_SHARED_LINK_INTERNAL_H

#include <condition_variable>
#include <memory>
#include <mutex>
#include <optional>
#include <vector>

#include "halvane/platform/bus/awaited_reply_internal.h"
#include "halvane/platform/bus/service_link_internal.h"
#include "halvane/platform/bus/service_mailbox_internal.h"
#include "halvane/platform/os/cancellation_internal.h"
#include "halvane/platform/os/descriptor_mask_internal.h"
#include "halvane/platform/os/wait_for_input_internal.h"
#include "halvane/platform/os/wake_event_internal.h"

namespace halvane {

class SharedLink {
  public:
    // Requests come from `mailbox`.
    explicit SharedLink(ServiceMailbox& mailbox) : mailbox_(mailbox) {}
    SharedLink(const SharedLink&) = delete;
    SharedLink& operator=(const SharedLink&) = delete;

    // Whether the system had the descriptors that sharing takes. If not, nobody may call keep().
    explicit operator bool() const { return mask_ && wake_; }

    // Serves `link` on the calling thread, the keeper, together with the threads that wait. Returns
    // the link when it has failed or the mailbox is stopped; no other thread uses it then.
    // REQUIRES: called once.
    std::unique_ptr<ServiceLink> keep(std::unique_ptr<ServiceLink> link);

    // Waits until `reply` is settled, or `end` has come. It sends what is in the mailbox. The
    // calling thread may be cancelled (pthread_cancel()) while nothing arrives.
    void wait(AwaitedReply& reply, const WaitEnd& end);

  private:
    class Place;
    struct Turn {
        bool hasInput = false;  // there may be messages to handle
        short events = 0;       // what to wait for otherwise
    };

    bool attend(bool& hasInput);
    bool waitAsKeeper();
    void share();
    void withdraw();

    void lead(AwaitedReply& reply, const WaitEnd& end, const CancellationHeld& held);
    bool handle(const AwaitedReply& reply, Turn& turn);
    void stepDown();
    void leave(AwaitedReply& reply);
    void handOn();
    bool isLed();
    bool isShared();

    bool sendAll(std::optional<std::vector<ServiceRequest>> requests);
    void sendWaiting();
    void publishEvents();

    ServiceMailbox& mailbox_;
    WakeEvent wake_;       // of the leader, unless that is the keeper
    DescriptorMask mask_;  // what the keeper sees of the bus

    // The lock of the link, taken before the other one.
    std::mutex linkMutex_;
    std::unique_ptr<ServiceLink> link_;

    std::mutex turnMutex_;
    std::condition_variable leaderLeft_;
    bool isShared_ = false;           // the keeper alone sets it, and reads it without the lock
    int descriptor_ = -1;             // of the bus, once the link is shared
    short events_ = 0;                // what the leader waits for; changed under both locks
    AwaitedReply* leader_ = nullptr;  // null if the keeper leads
    AwaitedReply* first_ = nullptr;   // those that wait behind the leader, the oldest first
};

}  // namespace halvane

#endif

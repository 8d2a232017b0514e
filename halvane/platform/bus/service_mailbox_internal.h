// What the threads of the program want of the one that serves a connection.
//
// Threads: any call from any thread.
#ifndef HALVANE_PLATFORM_BUS_SERVICE_MAILBOX_INTERNAL_H
#define HALVANE_PLATFORM_BUS_SERVICE_MAILBOX_INTERNAL_H

#include <mutex>
#include <optional>
#include <utility>
#include <vector>

#include "halvane/platform/bus/ipc_message.h"
#include "halvane/platform/bus/service_link_internal.h"
#include "halvane/platform/os/wake_event_internal.h"

namespace halvane {

struct ServiceRequest {
    IPCMessage message;
    ServiceLink::Answer answer;
};

class ServiceMailbox {
  public:
    // Signalled when there is something new for a thread that has taken what there was.
    WakeEvent& wake() { return wake_; }

    // Leaves the request; false, and it stays with the caller, where the mailbox is closed.
    bool put(ServiceRequest& request) {
        const std::lock_guard lock(mutex_);
        if (isClosed_) return false;
        requests_.push_back(std::move(request));
        wakeReader();
        return true;
    }

    // Asks the thread to end.
    void stop() {
        const std::lock_guard lock(mutex_);
        isStopped_ = true;
        wakeReader();
    }

    // The requests so far, in order; absent where the thread is to end, and then they stay for
    // close(). The next put() or stop() wakes.
    std::optional<std::vector<ServiceRequest>> take() {
        const std::lock_guard lock(mutex_);
        if (isStopped_) return std::nullopt;
        isReaderWaiting_ = true;
        return std::exchange(requests_, {});
    }

    // Takes what is left; nothing can be put any more.
    std::vector<ServiceRequest> close() {
        const std::lock_guard lock(mutex_);
        isClosed_ = true;
        return std::exchange(requests_, {});
    }

  private:
    // Once is enough until the reader has looked.
    void wakeReader() {
        if (std::exchange(isReaderWaiting_, false)) wake_.signal();
    }

    std::mutex mutex_;
    std::vector<ServiceRequest> requests_;
    bool isReaderWaiting_ = false;
    bool isStopped_ = false;
    bool isClosed_ = false;
    WakeEvent wake_;
};

}  // namespace halvane

#endif

// What the program's threads pass to the thread that serves a connection.
//
// Threads: any thread may make any call.
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
    // Signalled when something new arrives after the reader has taken everything.
    WakeEvent& wake() { return wake_; }

    // Adds the request. If the mailbox is closed, returns false and leaves the request with the
    // caller.
    bool put(ServiceRequest& request) {
        const std::lock_guard lock(mutex_);
        if (isClosed_) return false;
        requests_.push_back(std::move(request));
        wakeReader();
        return true;
    }

    // Tells the reader to end.
    void stop() {
        const std::lock_guard lock(mutex_);
        isStopped_ = true;
        wakeReader();
    }

    // Returns the requests so far, in order. Absent if the reader is to end; the requests then stay
    // for close(). The next put() or stop() wakes the reader.
    std::optional<std::vector<ServiceRequest>> take() {
        const std::lock_guard lock(mutex_);
        if (isStopped_) return std::nullopt;
        isReaderWaiting_ = true;
        return std::exchange(requests_, {});
    }

    // Returns the remaining requests. Nothing can be added any more.
    std::vector<ServiceRequest> close() {
        const std::lock_guard lock(mutex_);
        isClosed_ = true;
        return std::exchange(requests_, {});
    }

  private:
    // One signal suffices until the reader has looked.
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

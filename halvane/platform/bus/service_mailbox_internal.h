// What the program's threads pass to the threads that serve a connection. One of these is the
// reader: it is woken for what arrives. The others look by themselves.
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

    // Adds the request, and wakes the reader. If the mailbox is closed, returns false and leaves
    // the request with the caller.
    bool put(ServiceRequest& request) {
        const std::lock_guard lock(mutex_);
        if (!add(request)) return false;
        signalReader();
        return true;
    }

    // The same, but wakes nobody.
    bool putQuietly(ServiceRequest& request) {
        const std::lock_guard lock(mutex_);
        return add(request);
    }

    // Wakes the reader for what was added quietly.
    void wakeReader() {
        const std::lock_guard lock(mutex_);
        signalReader();
    }

    // Tells the reader to end.
    void stop() {
        const std::lock_guard lock(mutex_);
        isStopped_ = true;
        signalReader();
    }

    // Whether take() returns any requests.
    bool hasRequests() const {
        const std::lock_guard lock(mutex_);
        return !isStopped_ && !requests_.empty();
    }

    // Returns the requests so far, in order. Absent if the reader is to end; the requests then stay
    // for close().
    std::optional<std::vector<ServiceRequest>> take() {
        const std::lock_guard lock(mutex_);
        if (isStopped_) return std::nullopt;
        return std::exchange(requests_, {});
    }

    // The same for the reader, which the next put(), wakeReader() or stop() wakes.
    std::optional<std::vector<ServiceRequest>> takeAsReader() {
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
    bool add(ServiceRequest& request) {
        if (isClosed_) return false;
        requests_.push_back(std::move(request));
        return true;
    }

    // One signal suffices until the reader has looked.
    void signalReader() {
        if (std::exchange(isReaderWaiting_, false)) wake_.signal();
    }

    mutable std::mutex mutex_;
    std::vector<ServiceRequest> requests_;
    bool isReaderWaiting_ = false;
    bool isStopped_ = false;
    bool isClosed_ = false;
    WakeEvent wake_;
};

}  // namespace halvane

#endif

// A connection to a service with its two queues, and a record of what arrived.
#ifndef TESTS_SUPPORT_SERVICE_CLIENT_H
#define TESTS_SUPPORT_SERVICE_CLIENT_H

#include <condition_variable>
#include <cstddef>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "halvane/model/daemon_service.h"
#include "halvane/platform/bus/ipc_message.h"
#include "halvane/platform/bus/service_connection.h"
#include "halvane/platform/bus/service_event.h"
#include "halvane/platform/os/counting_semaphore.h"
#include "halvane/platform/os/serial_queue.h"

namespace halvane::testing {

// Collects what arrives on a queue, in order, and lets a test wait for it.
template <typename Item>
class Arrivals {
  public:
    void add(Item item) {
        const std::lock_guard lock(mutex_);
        items_.push_back(std::move(item));
        changed_.notify_all();
    }

    std::vector<Item> all() const {
        const std::lock_guard lock(mutex_);
        return items_;
    }

    // Waits for the item number `index`, counted from 0.
    Item wait(std::size_t index) {
        std::unique_lock lock(mutex_);
        changed_.wait(lock, [&] { return items_.size() > index; });
        return items_[index];
    }

  private:
    mutable std::mutex mutex_;
    std::condition_variable changed_;
    std::vector<Item> items_;
};

// Returns "appeared", "interrupted", "invalid", or the text under "name" of a message.
inline std::string eventName(const ServiceEvent& event) {
    if (std::holds_alternative<ServiceAppeared>(event)) return "appeared";
    if (const auto* error = std::get_if<ServiceError>(&event)) {
        return error->kind == ServiceError::Kind::Invalid ? "invalid" : "interrupted";
    }
    const auto* name = std::get<IPCMessage>(event).entries().find("name");
    const auto* text = name != nullptr ? name->as<std::string>() : nullptr;
    return text != nullptr ? *text : "message";
}

class ServiceClient {
  public:
    SerialQueue eventQueue{"test.connection.queue"};
    SerialQueue replyQueue{"test.reply.queue"};
    Arrivals<std::string> events;  // their names
    std::unique_ptr<ServiceConnection> connection;

    // Connects to the service on the system bus, and resumes the connection.
    explicit ServiceClient(const std::string& service = kDaemonServiceName)
        : connection(ServiceConnection::create(service, eventQueue)) {
        connection->setPrivileged(true);
        connection->setEventHandler([this](ServiceEvent event) { events.add(eventName(event)); });
        connection->resume();
    }

    // Sends a request and waits for its reply.
    ServiceReply request(IPCMessage message) {
        CountingSemaphore done(0);
        std::optional<ServiceReply> result;
        connection->sendMessageWithReply(std::move(message), replyQueue, [&](ServiceReply reply) {
            result = std::move(reply);
            done.signal();
        });
        done.wait();
        return *std::move(result);
    }

    // The same for a request whose reply does not matter.
    void exchange(IPCMessage message) { static_cast<void>(request(std::move(message))); }
};

}  // namespace halvane::testing

#endif

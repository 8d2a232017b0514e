#include <cstdint>
#include <new>
#include <optional>
#include <utility>

#include "halvane/model/daemon_status.h"
#include "halvane/platform/bus/message_check_internal.h"
#include "halvane/service/backend_reply.h"
#include "halvane/service/dispatcher_internal.h"
#include "halvane/service/message_internal.h"

namespace halvane {

// A request until it has its reply. If it is destroyed before that, the reply is lost.
struct Dispatcher::Waiting {
    Waiting(std::weak_ptr<Dispatcher> owner, const CommandInfo& its, std::string from,
            Respond handler)
        : dispatcher(std::move(owner)),
          command(its),
          sender(std::move(from)),
          respond(std::move(handler)) {}
    Waiting(const Waiting&) = delete;
    Waiting& operator=(const Waiting&) = delete;
    ~Waiting() {
        answer([] { return statusMessage(DaemonStatus::Lost); });
    }

    // The first answer counts.
    void answer(const std::function<IPCMessage()>& reply) noexcept {
        if (std::exchange(isAnswered, true)) return;
        if (const auto alive = dispatcher.lock()) alive->finish(*this, reply);
    }

    const std::weak_ptr<Dispatcher> dispatcher;
    const CommandInfo& command;
    const std::string sender;
    const Respond respond;
    bool isCounted = false;
    bool isAnswered = false;
};

namespace {

template <typename Record>
IPCMessage messageOf(const BackendResult<std::vector<Record>>& result) {
    return result ? listMessage(*result) : statusMessage(result.error());
}

IPCMessage messageOf(const BackendResult<void>& result) {
    return statusMessage(result ? DaemonStatus::Done : result.error());
}

// Converts to the reply of any function of a backend.
template <typename Pending>
class ReplyTo {
  public:
    explicit ReplyTo(const Pending& pending) : pending_(pending) {}

    template <typename T>
    operator BackendReply<T>() const {
        return BackendReply<T>([pending = pending_](const BackendResult<T>& result) {
            pending->answer([&result] { return messageOf(result); });
        });
    }

  private:
    const Pending& pending_;
};

}  // namespace

std::shared_ptr<Dispatcher> Dispatcher::create(const Parts& parts, Notify notify) {
    std::shared_ptr<Dispatcher> dispatcher(new Dispatcher(parts, std::move(notify)));
    parts.backend.setListener(dispatcher.get());
    return dispatcher;
}

Dispatcher::Dispatcher(const Parts& parts, Notify notify)
    : parts_(parts), notify_(std::move(notify)) {}

Dispatcher::~Dispatcher() {
    parts_.backend.setListener(nullptr);
}

void Dispatcher::handle(const std::string& sender, const IPCMessage& request, Respond respond) {
    const auto command = commandIn(request);
    if (!command) return respond({.reply = statusMessage(command.error())});
    if (parts_.faults != nullptr) {
        if (const auto answer = parts_.faults->insteadOf((*command)->name)) return respond(*answer);
    }
    const auto pending =
        std::make_shared<Waiting>(weak_from_this(), **command, sender, std::move(respond));
    const bool isNested = std::exchange(isHandling_, true);
    try {
        carryOut(**command, request, pending);
    } catch (const std::bad_alloc&) {
        // Whoever had the reply has dropped it, so that it is lost.
    }
    isHandling_ = isNested;
    if (!isNested) notifyOfEffects();
}

bool Dispatcher::isBusyFor(const std::string& sender) const {
    if (waiting_ >= parts_.limits.waiting) return true;
    const auto own = waitingOf_.find(sender);
    return own != waitingOf_.end() && own->second >= parts_.limits.waitingOfOne;
}

// A request that cannot be taken on is refused before its content is read, which may be large.
void Dispatcher::carryOut(const CommandInfo& command, const IPCMessage& message,
                          const Pending& pending) {
    const auto reply = [&](DaemonStatus status) {
        pending->answer([status] { return statusMessage(status); });
    };
    const bool isAsked = isForBackend(command.command);
    if (isAsked && isBusyFor(pending->sender)) return reply(DaemonStatus::Busy);
    const auto request = decoded(command, message);
    if (!request) return reply(request.error());
    if (isAsked) return askBackend(*request, pending);
    if (command.command == DaemonCommand::Subscribe) {
        return reply(subscribe(pending->sender, request->wantsNotifications));
    }
    if (command.command == DaemonCommand::SetLogging) {
        return reply(parts_.logging.apply(request->controls));
    }
    pending->answer([&] { return loggingMessage(parts_.logging.text()); });
}

void Dispatcher::askBackend(const DecodedRequest& request, const Pending& pending) {
    ++waitingOf_[pending->sender];
    ++waiting_;
    pending->isCounted = true;
    Backend& backend = parts_.backend;
    const ReplyTo reply(pending);
    switch (request.command) {
        case DaemonCommand::Devices:
            return backend.devices(reply);
        case DaemonCommand::Interfaces:
            return backend.interfaces(reply);
        case DaemonCommand::Channels:
            return backend.channels(*request.interface, reply);
        case DaemonCommand::Configurations:
            return backend.configurations(request.interface, reply);
        case DaemonCommand::Stations:
            return backend.stations(reply);
        case DaemonCommand::Add:
            return backend.add(*request.interface, *request.configuration, reply);
        case DaemonCommand::Remove:
            return backend.remove(*request.interface, *request.configuration, reply);
        case DaemonCommand::Enable:
            return backend.enable(*request.interface, reply);
        case DaemonCommand::Disable:
            return backend.disable(*request.interface, reply);
        case DaemonCommand::Role:
            return backend.changeRole(*request.interface, request.role, reply);
        case DaemonCommand::Start:
            return backend.start(*request.interface, reply);
        case DaemonCommand::Stop:
            return backend.stop(*request.interface, reply);
        case DaemonCommand::Kick:
            return backend.kick(*request.interface, request.station, reply);
        case DaemonCommand::SetLogging:
        case DaemonCommand::Logging:
        case DaemonCommand::Subscribe:
            return;
    }
}

DaemonStatus Dispatcher::subscribe(const std::string& sender, bool wants) {
    Subscribers& subscribers = parts_.subscribers;
    if (!wants) {
        subscribers.remove(sender);
    } else if (!subscribers.contains(sender)) {
        if (subscribers.names().size() >= parts_.limits.subscribers) {
            return DaemonStatus::TooManySubscribers;
        }
        subscribers.add(sender);
    }
    return DaemonStatus::Done;
}

void Dispatcher::finish(const Waiting& waiting, const std::function<IPCMessage()>& reply) noexcept {
    if (waiting.isCounted) {
        --waiting_;
        const auto own = waitingOf_.find(waiting.sender);
        if (--own->second == 0) waitingOf_.erase(own);
    }
    DaemonAnswer answer;
    try {
        IPCMessage message = reply();
        if (parts_.faults != nullptr) {
            message = parts_.faults->reply(waiting.command.name, std::move(message));
        }
        answer.reply = sendable(std::move(message));
    } catch (const std::bad_alloc&) {
        answer = {.kind = DaemonAnswer::Kind::NoMemory};
    }
    waiting.respond(answer);
}

// The reply to a request comes before its effects.
void Dispatcher::happened(const StationChange& change) {
    if (isHandling_) {
        effects_.push_back(change);
    } else {
        notify(change);
    }
}

void Dispatcher::notifyOfEffects() {
    for (const StationChange& change : std::exchange(effects_, {})) notify(change);
}

void Dispatcher::notify(const StationChange& change) {
    try {
        if (held_.empty() && !parts_.isCongested()) return send(change);
        if (held_.size() < kMostHeld && !parts_.subscribers.names().empty()) {
            held_.push_back(change);
        }
    } catch (const std::bad_alloc&) {
        // Memory does not hold the notification: it is dropped.
    }
}

void Dispatcher::sendHeld() {
    while (!held_.empty() && !parts_.isCongested()) {
        send(held_.front());
        held_.pop_front();
    }
}

void Dispatcher::send(const StationChange& change) {
    try {
        std::optional<IPCMessage> event =
            stationMessage(change.kind, change.interface, change.address.buffer());
        if (parts_.faults != nullptr) event = parts_.faults->event(*std::move(event));
        if (!event || !checkBusMessage(*event, kLargestDaemonReply).refusal.empty()) return;
        for (const std::string& subscriber : parts_.subscribers.names()) {
            notify_(*event, subscriber);
        }
    } catch (const std::bad_alloc&) {
        // Memory does not hold the notification: it is dropped.
    }
}

}  // namespace halvane

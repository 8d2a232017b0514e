#include "halvane/service/daemon_server.h"

#include <systemd/sd-event.h>
#include <utility>

#include "halvane/model/daemon_service.h"
#include "halvane/platform/bus/event_loop_internal.h"
#include "halvane/platform/bus/ipc_message.h"
#include "halvane/platform/bus/libsystemd_internal.h"
#include "halvane/platform/bus/service_host_internal.h"
#include "halvane/service/dispatcher_internal.h"

namespace halvane {

// The host goes first: it tells the dispatcher that it leaves the bus.
struct DaemonServer::Core {
    Core(sd_event* loop, const DaemonParts& parts, DaemonServerHandlers given)
        : handlers(std::move(given)),
          dispatcher(Dispatcher::create(
              {parts.backend, parts.logging,
               parts.subscribers != nullptr ? *parts.subscribers : subscribers, parts.faults,
               parts.limits, [this] { return pump && host.isCongested(); }},
              [this](const IPCMessage& event, const std::string& subscriber) {
                  host.send(event, subscriber);
              })),
          host(loop, kDaemonServiceName, hostHandlers()) {
        sd_event_source* source = nullptr;
        if (libsystemd().sd_event_add_post(loop, &source, somethingHappened, this) >= 0)
            pump.reset(source);
    }

    // The loop has done something: perhaps the bus has taken messages.
    static int somethingHappened(sd_event_source*, void* core) noexcept {
        static_cast<Core*>(core)->dispatcher->sendHeld();
        return 0;
    }

    // Notifications go before what follows.
    void sendAll() {
        while (dispatcher->holdsNotifications()) {
            host.flush();
            dispatcher->sendHeld();
        }
    }

    ServiceHost::Handlers hostHandlers() {
        return {
            .request =
                [this](const std::string& sender, const IPCMessage& request,
                       const ServiceHost::Call& call) {
                    dispatcher->handle(sender, request, [this, call](const DaemonAnswer& answer) {
                        respond(call, answer);
                    });
                },
            .departed = [this](const std::string& name) { dispatcher->departed(name); },
            .left = [this] { dispatcher->left(); },
            .lost =
                [this] {
                    if (handlers.onLoss) handlers.onLoss();
                },
            .nameless =
                [this](const std::string& reason) {
                    if (handlers.onNameless) handlers.onNameless(reason);
                },
        };
    }

    void respond(const ServiceHost::Call& call, const DaemonAnswer& answer) {
        switch (answer.kind) {
            case DaemonAnswer::Kind::Reply:
                return ServiceHost::reply(call, answer.reply);
            case DaemonAnswer::Kind::Silence:
                return;
            case DaemonAnswer::Kind::Error:
                return ServiceHost::replyError(call, answer.error, answer.text);
            case DaemonAnswer::Kind::Gone:
                return host.restartSoon();
            case DaemonAnswer::Kind::NoMemory:
                return ServiceHost::replyFailure(call);
        }
    }

    const DaemonServerHandlers handlers;
    Subscribers subscribers;
    const std::shared_ptr<Dispatcher> dispatcher;
    ServiceHost host;
    EventSourcePointer pump;  // null if memory is short; then no notification waits
};

DaemonServer::DaemonServer(sd_event* loop, const DaemonParts& parts, DaemonServerHandlers handlers)
    : core_(std::make_unique<Core>(loop, parts, std::move(handlers))) {}

DaemonServer::~DaemonServer() {
    core_->sendAll();
}

Result<void, std::string> DaemonServer::start() {
    return core_->host.start();
}

void DaemonServer::flush() {
    core_->sendAll();
    core_->host.flush();
}

Result<void, std::string> DaemonServer::dropName() {
    core_->sendAll();
    return core_->host.dropName();
}

Result<void, std::string> DaemonServer::takeName() {
    return core_->host.takeName();
}

Result<void, std::string> DaemonServer::restart() {
    core_->sendAll();
    return core_->host.restart();
}

}  // namespace halvane

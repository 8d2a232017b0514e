#include "halvane/service/daemon_server.h"

// IWYU pragma: no_include <systemd/sd-event.h>
#include <utility>

#include "halvane/model/daemon_service.h"
#include "halvane/platform/bus/ipc_message.h"
#include "halvane/platform/bus/service_host_internal.h"
#include "halvane/service/dispatcher_internal.h"

namespace halvane {

// The host goes first: it tells the dispatcher that it leaves the bus.
struct DaemonServer::Core {
    Core(sd_event* loop, const DaemonParts& parts, DaemonServerHandlers given)
        : handlers(std::move(given)),
          dispatcher(
              Dispatcher::create({parts.backend, parts.logging,
                                  parts.subscribers != nullptr ? *parts.subscribers : subscribers,
                                  parts.faults, parts.limits},
                                 [this](const IPCMessage& event, const std::string& subscriber) {
                                     host.send(event, subscriber);
                                 })),
          host(loop, kDaemonServiceName, hostHandlers()) {}

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
};

DaemonServer::DaemonServer(sd_event* loop, const DaemonParts& parts, DaemonServerHandlers handlers)
    : core_(std::make_unique<Core>(loop, parts, std::move(handlers))) {}

DaemonServer::~DaemonServer() = default;

Result<void, std::string> DaemonServer::start() {
    return core_->host.start();
}

void DaemonServer::flush() {
    core_->host.flush();
}

Result<void, std::string> DaemonServer::dropName() {
    return core_->host.dropName();
}

Result<void, std::string> DaemonServer::takeName() {
    return core_->host.takeName();
}

Result<void, std::string> DaemonServer::restart() {
    return core_->host.restart();
}

}  // namespace halvane

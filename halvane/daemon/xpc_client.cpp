#include "halvane/daemon/xpc_client.h"

#include <cstdint>
#include <utility>
#include <variant>

#include "halvane/daemon/xpc_link_internal.h"
#include "halvane/utils/log.h"

namespace halvane {

std::shared_ptr<HalvaneXPCClient> gHalvaneXPCClient;

namespace {

void log(std::uint32_t level, const char* text) {
    HALVANE_LOG_AS(&gLogCategory_WiFiXPC, "-[HalvaneXPCClient handleXPCEvent:]", level, text);
}

const char* textOf(ServiceError::Kind kind) {
    switch (kind) {
        case ServiceError::Kind::Invalid:
            return "connection was invalidated\n";
        case ServiceError::Kind::Interrupted:
            return "connection was interrupted\n";
        case ServiceError::Kind::Other:
            break;
    }
    return "unknown event\n";
}

}  // namespace

// Event handlers use link_, so the connection starts only when all members are ready.
HalvaneXPCClient::HalvaneXPCClient()
    : link_(
          std::make_shared<XPCLink>([this](const ServiceEvent& event) { handleXPCEvent(event); })) {
    link_->resume();
}

std::unique_ptr<HalvaneXPCClient> HalvaneXPCClient::init() {
    return std::unique_ptr<HalvaneXPCClient>(new HalvaneXPCClient);
}

HalvaneXPCClient::~HalvaneXPCClient() {
    link_->end();
}

std::shared_ptr<const HalvaneXPCClientDelegate> HalvaneXPCClient::delegate() const {
    if (!link_->isInHomeProcess()) return nullptr;
    const std::lock_guard lock(delegateMutex_);
    return delegate_;
}

void HalvaneXPCClient::setDelegate(std::shared_ptr<const HalvaneXPCClientDelegate> delegate) {
    if (!link_->isInHomeProcess()) return;
    const std::lock_guard lock(delegateMutex_);
    delegate_.swap(delegate);  // the former delegate is released with the argument, after the lock
}

void HalvaneXPCClient::setSubscribeAP(bool value) {
    subscribeAP_ = value;
    registerNotifications();
}

// A receiver of log lines may destroy the client.
void HalvaneXPCClient::handleXPCEvent(const ServiceEvent& event) {
    const auto link = link_;
    if (const auto* message = std::get_if<IPCMessage>(&event)) {
        log(kLogLevelVerbose, "Halvane Notification RX DICTIONARY\n");
        if (!link->hasEnded()) handleNewXPCDictionary(*message);
    } else if (std::holds_alternative<ServiceAppeared>(event)) {
        log(kLogLevelVerbose, "Halvane Notification RX CONNECTION\n");
    } else if (const auto* error = std::get_if<ServiceError>(&event)) {
        log(kLogLevelError, textOf(error->kind));
        if (error->kind == ServiceError::Kind::Invalid) link->releaseConnection();
    } else {
        log(kLogLevelError, "RX EVENT Unexpected Type\n");
    }
}

}  // namespace halvane

#include "tools/halvaned-sim/control_service.h"

#include <utility>

#include "halvane/model/daemon_service.h"
#include "halvane/platform/bus/bus_error_internal.h"
#include "halvane/platform/bus/event_loop_internal.h"
#include "halvane/platform/bus/service_host_internal.h"
#include "halvane/platform/bus/service_names_internal.h"
#include "halvane/service/message_internal.h"

#include "tools/halvaned-sim/bus_error.h"
#include "tools/halvaned-sim/bus_names.h"
#include "tools/halvaned-sim/event_loop.h"
#include "tools/halvaned-sim/notification.h"

namespace halvane::sim {

ControlService::ControlService(sd_event* event, const Parts& parts, QuitHandler onQuit)
    : event_(event), parts_(parts), onQuit_(std::move(onQuit)) {}

Result<void, std::string> ControlService::start() {
    auto bus = openSystemBus();
    if (!bus) return Unexpected(std::move(bus).error());
    bus_ = *std::move(bus);
    static const sd_bus_vtable methods[] = {
        SD_BUS_VTABLE_START(0),
        SD_BUS_METHOD_WITH_NAMES("Control", "s", SD_BUS_PARAM(line), "s", SD_BUS_PARAM(text),
                                 lineArrived, SD_BUS_VTABLE_UNPRIVILEGED),
        SD_BUS_VTABLE_END,
    };
    auto published = busAttempt(
        ::sd_bus_add_object_vtable(bus_.get(), nullptr, kControlPath, kControlName, methods, this),
        "publishing the control");
    if (!published) return published;
    auto attached = busAttempt(::sd_bus_attach_event(bus_.get(), event_, SD_EVENT_PRIORITY_NORMAL),
                               "using the bus");
    if (!attached) return attached;
    isReachable_ = ::sd_bus_request_name(bus_.get(), kControlName, 0) >= 0;
    return {};
}

ControlService::~ControlService() {
    if (!bus_) return;
    ::sd_bus_flush(bus_.get());
    ::sd_bus_detach_event(bus_.get());
}

int ControlService::lineArrived(sd_bus_message* message, void* userData, sd_bus_error*) {
    return guarded([=] {
        const char* line = nullptr;
        check(::sd_bus_message_read(message, "s", &line), "reading a line");
        const ControlResult result = static_cast<ControlService*>(userData)->follow(line);
        if (!result.refusal.empty()) {
            return ::sd_bus_reply_method_errorf(message, kRefusedError, "%s",
                                                result.refusal.c_str());
        }
        return ::sd_bus_reply_method_return(message, "s", result.text.c_str());
    });
}

ControlResult ControlService::follow(std::string_view line) {
    ControlResult result = control(parts_.simulation, line);
    parts_.backend.tellAll();
    parts_.server.flush();
    if (result.action) {
        auto performed = perform(*result.action);
        if (!performed) result.refusal = std::move(performed).error();
        result.action.reset();
    }
    if (result.text.size() > kLargestDaemonReply) {
        result.refusal = "the reply is larger than a bus accepts";
    }
    return result;
}

// Returns why it cannot be done, if it cannot.
Result<void, std::string> ControlService::perform(const BusAction& action) {
    switch (action.kind) {
        case BusAction::Kind::Drop:
            return parts_.server.dropName();
        case BusAction::Kind::Take:
            return parts_.server.takeName();
        case BusAction::Kind::Restart:
            return parts_.server.restart();
        case BusAction::Kind::Quit:
            onQuit_();
            return {};
        case BusAction::Kind::Spoof:
            spoof(*action.forged);
            return {};
    }
    return {};
}

void ControlService::spoof(const Notification& forged) {
    const auto names = ServiceNames::of(kDaemonServiceName);
    for (const std::string& subscriber : parts_.simulation.subscribers.names()) {
        check(sendServiceEvent(bus_.get(), *names, forged.message(), subscriber), "notifying");
    }
}

}  // namespace halvane::sim

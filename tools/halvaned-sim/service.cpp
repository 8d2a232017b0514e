#include "tools/halvaned-sim/service.h"

#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <utility>

#include "halvane/model/daemon_service.h"
#include "halvane/platform/bus/message_check_internal.h"
#include "halvane/platform/bus/message_reader_internal.h"
#include "halvane/platform/bus/message_writer_internal.h"

#include "tools/halvaned-sim/bus_error.h"
#include "tools/halvaned-sim/bus_names.h"
#include "tools/halvaned-sim/status.h"

namespace halvane::sim {

namespace {

// sd-bus queues messages that the bus has not yet accepted, up to a limit. A burst may exceed it.
constexpr std::size_t kEventsBetweenFlushes = 1024;

}  // namespace

Result<BusPointer, std::string> openSystemBus() {
    sd_bus* bus = nullptr;
    const int result = ::sd_bus_open_system(&bus);
    if (result < 0) return Unexpected(problemOf(result, "joining the bus"));
    return BusPointer(bus);
}

void sendEvent(sd_bus* bus, const IPCMessage& event, const std::string& subscriber) {
    sd_bus_message* message = nullptr;
    check(::sd_bus_message_new_signal(bus, &message, kObjectPath, kDaemonServiceName, "Event"),
          "notifying");
    const BusMessagePointer owner(message);
    check(writeBusMessage(message, event), "notifying");
    check(::sd_bus_send_to(bus, message, subscriber.c_str(), nullptr), "notifying");
}

Service::Service(sd_event* event, Simulation& simulation, Handlers handlers)
    : event_(event), simulation_(simulation), handlers_(std::move(handlers)) {}

Service::~Service() {
    leave();
}

Result<void, std::string> Service::start() {
    if (auto joined = join(); !joined) return joined;
    // The name comes last: a program that sees it finds everything ready.
    return takeName();
}

Result<void, std::string> Service::join() {
    auto bus = openSystemBus();
    if (!bus) return Unexpected(std::move(bus).error());
    bus_ = *std::move(bus);
    if (auto published = publish(); !published) return published;
    if (auto watched = watch(); !watched) return watched;
    return attempted(::sd_bus_attach_event(bus_.get(), event_, SD_EVENT_PRIORITY_NORMAL),
                     "using the bus");
}

void Service::leave() {
    if (!bus_) return;
    ::sd_bus_flush(bus_.get());
    ::sd_bus_detach_event(bus_.get());
    bus_.reset();
    simulation_.subscribers.clear();
}

// A connection that has taken the name meanwhile keeps it, as after dropName().
Result<void, std::string> Service::restart() {
    leave();
    if (auto joined = join(); !joined) {
        bus_.reset();
        handlers_.onLoss();
        return joined;
    }
    return takeName();
}

// Runs after the loop has returned from the connection that is to be left.
void Service::restartSoon() {
    sd_event_source* source = nullptr;
    const auto handler = [](sd_event_source*, void* service) {
        return guarded([service] {
            static_cast<Service*>(service)->restartUnasked();
            return 0;
        });
    };
    check(::sd_event_add_defer(event_, &source, handler, this), "restarting");
    restart_.reset(source);
}

// A loss has already been reported.
void Service::restartUnasked() {
    const auto restarted = restart();
    if (bus_ && !restarted) handlers_.onNameless(restarted.error());
}

Result<void, std::string> Service::publish() {
    static const sd_bus_vtable daemon[] = {
        SD_BUS_VTABLE_START(0),
        SD_BUS_METHOD_WITH_NAMES("Request", "a{sv}", SD_BUS_PARAM(message), "a{sv}",
                                 SD_BUS_PARAM(reply), requestArrived, SD_BUS_VTABLE_UNPRIVILEGED),
        SD_BUS_SIGNAL_WITH_NAMES("Event", "a{sv}", SD_BUS_PARAM(message), 0),
        SD_BUS_VTABLE_END,
    };
    return attempted(::sd_bus_add_object_vtable(bus_.get(), nullptr, kObjectPath,
                                                kDaemonServiceName, daemon, this),
                     "publishing the daemon");
}

Result<void, std::string> Service::watch() {
    constexpr const char kNamesLeft[] =
        "type='signal',sender='org.freedesktop.DBus',"
        "path='/org/freedesktop/DBus',interface='org.freedesktop.DBus',"
        "member='NameOwnerChanged',arg2=''";
    auto watched = attempted(::sd_bus_add_match(bus_.get(), nullptr, kNamesLeft, nameLeft, this),
                             "watching names");
    if (!watched) return watched;
    return attempted(
        ::sd_bus_match_signal(bus_.get(), nullptr, "org.freedesktop.DBus.Local",
                              "/org/freedesktop/DBus/Local", "org.freedesktop.DBus.Local",
                              "Disconnected", disconnected, this),
        "watching the bus");
}

int Service::requestArrived(sd_bus_message* message, void* userData, sd_bus_error* error) {
    return guarded([=] {
        auto& service = *static_cast<Service*>(userData);
        const auto request = readBusMessage(message);
        if (!request) {
            return ::sd_bus_error_set_const(error, SD_BUS_ERROR_INVALID_ARGS,
                                            "the dictionary cannot be read");
        }
        const std::string sender = ::sd_bus_message_get_sender(message);
        const int result = service.reply(message, answer(service.simulation_, sender, *request));
        service.send(service.simulation_.world.takeNotifications());
        return result;
    });
}

int Service::reply(sd_bus_message* request, const Answer& answer) {
    switch (answer.kind) {
        case Answer::Kind::Silence:
            return 1;
        case Answer::Kind::Error:
            return ::sd_bus_reply_method_errorf(request, kFailedError,
                                                "the simulation was told so");
        case Answer::Kind::Gone:
            restartSoon();
            return 1;
        case Answer::Kind::Reply:
            break;
    }
    const bool fits = checkBusMessage(answer.reply, kLargestReply).refusal.empty();
    sd_bus_message* message = nullptr;
    check(::sd_bus_message_new_method_return(request, &message), "replying");
    const BusMessagePointer owner(message);
    check(writeBusMessage(message, fits ? answer.reply
                                        : statusReply(static_cast<std::int64_t>(Status::TooLarge))),
          "replying");
    return check(::sd_bus_send(nullptr, message, nullptr), "replying");
}

void Service::send(const std::vector<Notification>& notifications) {
    std::size_t count = 0;
    for (const Notification& notification : notifications) {
        const auto event = eventFor(simulation_, notification);
        if (!event) continue;
        for (const std::string& subscriber : simulation_.subscribers.names()) {
            sendEvent(bus_.get(), *event, subscriber);
            if (++count % kEventsBetweenFlushes == 0) ::sd_bus_flush(bus_.get());
        }
    }
}

void Service::deliver() {
    send(simulation_.world.takeNotifications());
    // The bus handles messages of one connection in order, so its reply comes after all of them.
    ::sd_bus_call_method(bus_.get(), "org.freedesktop.DBus", "/org/freedesktop/DBus",
                         "org.freedesktop.DBus.Peer", "Ping", nullptr, nullptr, "");
}

Result<void, std::string> Service::dropName() {
    const int result = ::sd_bus_release_name(bus_.get(), kDaemonServiceName);
    if (result < 0) return Unexpected("the daemon's name is not owned");
    return {};
}

Result<void, std::string> Service::takeName() {
    const int result = ::sd_bus_request_name(bus_.get(), kDaemonServiceName, 0);
    if (result >= 0 || result == -EALREADY) return {};
    if (result == -EEXIST) {
        return Unexpected(std::string(kDaemonServiceName) +
                          " is there already: another daemon runs");
    }
    return Unexpected(std::string("owning ") + kDaemonServiceName + ": " + std::strerror(-result));
}

int Service::nameLeft(sd_bus_message* message, void* userData, sd_bus_error*) {
    return guarded([=] {
        const char* name = nullptr;
        check(::sd_bus_message_read(message, "s", &name), "reading a name");
        static_cast<Service*>(userData)->simulation_.subscribers.remove(name);
        return 0;
    });
}

int Service::disconnected(sd_bus_message*, void* userData, sd_bus_error*) {
    return guarded([=] {
        static_cast<Service*>(userData)->handlers_.onLoss();
        return 0;
    });
}

}  // namespace halvane::sim

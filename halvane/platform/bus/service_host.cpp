#include <cerrno>
#include <cstdint>
#include <cstring>
#include <new>
#include <string_view>
#include <utility>

#include "halvane/platform/bus/address_internal.h"
#include "halvane/platform/bus/bus_error_internal.h"
#include "halvane/platform/bus/libsystemd_internal.h"
#include "halvane/platform/bus/message_reader_internal.h"
#include "halvane/platform/bus/message_writer_internal.h"
#include "halvane/platform/bus/open_bus_internal.h"
#include "halvane/platform/bus/service_host_internal.h"

namespace halvane {

namespace {

constexpr const char kBusName[] = "org.freedesktop.DBus";
constexpr const char kBusPath[] = "/org/freedesktop/DBus";
constexpr const char kLocalName[] = "org.freedesktop.DBus.Local";
constexpr const char kLocalPath[] = "/org/freedesktop/DBus/Local";

// A function that C code calls must not throw. It returns a negative errno value instead.
template <typename Work>
int withoutThrowing(Work work) {
    try {
        return work();
    } catch (const std::bad_alloc&) {
        return -ENOMEM;
    }
}

// sd-bus queues messages that the bus has not yet accepted, up to a limit. A burst may reach it.
template <typename Send>
int withRoom(sd_bus* bus, Send send) {
    const int result = send();
    if (result != -ENOBUFS) return result;
    libsystemd().sd_bus_flush(bus);
    return send();
}

int sendReply(const BusMessagePointer& message) {
    sd_bus* const bus = libsystemd().sd_bus_message_get_bus(message.get());
    return withRoom(bus, [&] { return libsystemd().sd_bus_send(bus, message.get(), nullptr); });
}

// Null if memory is short.
ServiceHost::Call callOf(sd_bus_message* request) {
    auto call = std::make_shared<ServiceHost::PendingCall>();
    sd_bus_message *reply = nullptr, *failure = nullptr;
    call->request = request;
    libsystemd().sd_bus_message_new_method_return(request, &reply);
    call->reply.reset(reply);
    libsystemd().sd_bus_message_new_method_errno(request, &failure, ENOMEM, nullptr);
    call->failure.reset(failure);
    return call->reply && call->failure ? call : nullptr;
}

bool isFrom(sd_bus_message* message, std::string_view name) {
    const char* const sender = libsystemd().sd_bus_message_get_sender(message);
    return sender != nullptr && sender == name;
}

}  // namespace

Result<BusPointer, std::string> openSystemBus() {
    BusPointer bus;
    const int result = openBus(systemBusAddress(), kUsualCallLimit, bus);
    if (result < 0) return Unexpected(busProblem(result, "joining the bus"));
    return bus;
}

int sendServiceEvent(sd_bus* bus, const ServiceNames& names, const IPCMessage& event,
                     const std::string& subscriber) {
    sd_bus_message* message = nullptr;
    int result = libsystemd().sd_bus_message_new_signal(bus, &message, names.path.c_str(),
                                                        names.name.c_str(), HALVANE_SERVICE_EVENT);
    const BusMessagePointer owner(message);
    if (result >= 0) result = writeBusMessage(message, event);
    if (result < 0) return result;
    return withRoom(bus, [&] {
        return libsystemd().sd_bus_send_to(bus, message, subscriber.c_str(), nullptr);
    });
}

ServiceHost::ServiceHost(sd_event* loop, const std::string& serviceName, Handlers handlers)
    : loop_(loop), names_(*ServiceNames::of(serviceName)), handlers_(std::move(handlers)) {}

ServiceHost::~ServiceHost() {
    leave();
}

Result<void, std::string> ServiceHost::start() {
    if (auto joined = join(); !joined) return joined;
    // The name comes last: a program that sees it finds everything ready.
    return takeName();
}

Result<void, std::string> ServiceHost::join() {
    auto bus = openSystemBus();
    if (!bus) return Unexpected(std::move(bus).error());
    bus_ = *std::move(bus);
    if (auto published = publish(); !published) return published;
    if (auto watched = watch(); !watched) return watched;
    return busAttempt(libsystemd().sd_bus_attach_event(bus_.get(), loop_, SD_EVENT_PRIORITY_NORMAL),
                      "using the bus");
}

void ServiceHost::leave() {
    if (!bus_) return;
    libsystemd().sd_bus_flush(bus_.get());
    libsystemd().sd_bus_detach_event(bus_.get());
    bus_.reset();
    handlers_.left();
}

// A connection that has taken the name meanwhile keeps it, as after dropName().
Result<void, std::string> ServiceHost::restart() {
    leave();
    if (auto joined = join(); !joined) {
        bus_.reset();
        handlers_.lost();
        return joined;
    }
    return takeName();
}

// Without room for the event source the connection is lost, since it cannot come back.
void ServiceHost::restartSoon() {
    sd_event_source* source = nullptr;
    if (libsystemd().sd_event_add_defer(loop_, &source, restartIsDue, this) < 0) handlers_.lost();
    restart_.reset(source);
}

// A loss has already been reported.
void ServiceHost::restartUnasked() {
    const auto restarted = restart();
    if (bus_ && !restarted) handlers_.nameless(restarted.error());
}

Result<void, std::string> ServiceHost::publish() {
    // The macro takes its address.
    static const unsigned& sd_bus_object_vtable_format = *libsystemd().sd_bus_object_vtable_format;
    static const sd_bus_vtable members[] = {
        SD_BUS_VTABLE_START(0),
        SD_BUS_METHOD_WITH_NAMES(HALVANE_SERVICE_REQUEST, "a{sv}", SD_BUS_PARAM(message), "a{sv}",
                                 SD_BUS_PARAM(reply), requestArrived, SD_BUS_VTABLE_UNPRIVILEGED),
        SD_BUS_SIGNAL_WITH_NAMES(HALVANE_SERVICE_EVENT, "a{sv}", SD_BUS_PARAM(message), 0),
        SD_BUS_VTABLE_END,
    };
    return busAttempt(
        libsystemd().sd_bus_add_object_vtable(bus_.get(), nullptr, names_.path.c_str(),
                                              names_.name.c_str(), members, this),
        "publishing the daemon");
}

Result<void, std::string> ServiceHost::watch() {
    constexpr const char kNamesLeft[] =
        "type='signal',sender='org.freedesktop.DBus',"
        "path='/org/freedesktop/DBus',interface='org.freedesktop.DBus',"
        "member='NameOwnerChanged',arg2=''";
    auto watched =
        busAttempt(libsystemd().sd_bus_add_match(bus_.get(), nullptr, kNamesLeft, nameLeft, this),
                   "watching names");
    if (!watched) return watched;
    return busAttempt(
        libsystemd().sd_bus_match_signal(bus_.get(), nullptr, kLocalName, kLocalPath, kLocalName,
                                         "Disconnected", disconnected, this),
        "watching the bus");
}

// sd-bus replies with an error if this returns one.
int ServiceHost::requestArrived(sd_bus_message* message, void* host, sd_bus_error* error) noexcept {
    return withoutThrowing([=] {
        const auto request = readBusMessage(message);
        if (!request) {
            return libsystemd().sd_bus_error_set_const(error, SD_BUS_ERROR_INVALID_ARGS,
                                                       "the dictionary cannot be read");
        }
        const auto call = callOf(message);
        if (call == nullptr) return -ENOMEM;
        const char* const sender = libsystemd().sd_bus_message_get_sender(message);
        static_cast<ServiceHost*>(host)->handlers_.request(sender != nullptr ? sender : "",
                                                           *request, call);
        call->request = nullptr;
        return 1;
    });
}

void ServiceHost::reply(const Call& call, const IPCMessage& message) {
    int result = writeBusMessage(call->reply.get(), message);
    if (result >= 0) result = sendReply(call->reply);
    // A caller must not wait in vain.
    if (result == -ENOMEM) replyFailure(call);
}

void ServiceHost::replyFailure(const Call& call) {
    sendReply(call->failure);
}

void ServiceHost::replyError(const Call& call, const std::string& name, const std::string& text) {
    libsystemd().sd_bus_reply_method_errorf(call->request, name.c_str(), "%s", text.c_str());
}

void ServiceHost::send(const IPCMessage& event, const std::string& subscriber) {
    sendServiceEvent(bus_.get(), names_, event, subscriber);
}

bool ServiceHost::isCongested() const {
    constexpr std::uint64_t kMany = 4096;
    std::uint64_t count = 0;
    return bus_ && libsystemd().sd_bus_get_n_queued_write(bus_.get(), &count) >= 0 && count > kMany;
}

// The bus handles messages of one connection in order, so its reply comes after all of them.
void ServiceHost::flush() {
    libsystemd().sd_bus_call_method(bus_.get(), kBusName, kBusPath, "org.freedesktop.DBus.Peer",
                                    "Ping", nullptr, nullptr, "");
}

Result<void, std::string> ServiceHost::dropName() {
    const int result = libsystemd().sd_bus_release_name(bus_.get(), names_.name.c_str());
    if (result < 0) return Unexpected(std::string("the daemon's name is not owned"));
    return {};
}

Result<void, std::string> ServiceHost::takeName() {
    const int result = libsystemd().sd_bus_request_name(bus_.get(), names_.name.c_str(), 0);
    if (result >= 0 || result == -EALREADY) return {};
    if (result == -EEXIST) {
        return Unexpected(names_.name + " is there already: another daemon runs");
    }
    return Unexpected("owning " + names_.name + ": " + std::strerror(-result));
}

// Anybody can send this signal to the connection, but only the bus has the bus's name.
int ServiceHost::nameLeft(sd_bus_message* message, void* host, sd_bus_error*) noexcept {
    return withoutThrowing([=] {
        const char* name = nullptr;
        if (!isFrom(message, kBusName)) return 0;
        if (libsystemd().sd_bus_message_read_basic(message, SD_BUS_TYPE_STRING, &name) <= 0)
            return 0;
        static_cast<ServiceHost*>(host)->handlers_.departed(name);
        return 0;
    });
}

int ServiceHost::disconnected(sd_bus_message* message, void* host, sd_bus_error*) noexcept {
    return withoutThrowing([=] {
        if (isFrom(message, kLocalName)) static_cast<ServiceHost*>(host)->handlers_.lost();
        return 0;
    });
}

int ServiceHost::restartIsDue(sd_event_source*, void* host) noexcept {
    return withoutThrowing([=] {
        static_cast<ServiceHost*>(host)->restartUnasked();
        return 0;
    });
}

}  // namespace halvane

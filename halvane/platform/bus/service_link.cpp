#include <cerrno>
#include <chrono>
#include <iterator>
#include <memory>
#include <new>
#include <poll.h>
#include <string_view>
#include <system_error>
#include <systemd/sd-bus.h>
#include <utility>

#include "halvane/base/result.h"
#include "halvane/platform/bus/ipc_message.h"
#include "halvane/platform/bus/libsystemd_internal.h"
#include "halvane/platform/bus/message_reader_internal.h"
#include "halvane/platform/bus/message_writer_internal.h"
#include "halvane/platform/bus/open_bus_internal.h"
#include "halvane/platform/bus/service_event.h"
#include "halvane/platform/bus/service_link_internal.h"
#include "halvane/platform/bus/service_names_internal.h"
#include "halvane/platform/os/wait_for_input_internal.h"

namespace halvane {

namespace {

constexpr const char* kBusName = "org.freedesktop.DBus";
constexpr const char* kBusPath = "/org/freedesktop/DBus";
constexpr std::string_view kNoReply = "org.freedesktop.DBus.Error.NoReply";
constexpr std::string_view kUnknownService = "org.freedesktop.DBus.Error.ServiceUnknown";
constexpr const char* kNoOwner = "org.freedesktop.DBus.Error.NameHasNoOwner";
constexpr const char* kAccessDenied = "org.freedesktop.DBus.Error.AccessDenied";

std::string_view senderOf(sd_bus_message* message) {
    const char* sender = libsystemd().sd_bus_message_get_sender(message);
    return sender != nullptr ? sender : "";
}

ServiceError errorOfStatus(int status) {
    using Cause = ServiceError::Cause;
    const bool isLost = status == -ENOTCONN || status == -ECONNRESET || status == -EPIPE;
    return {ServiceError::Kind::Other,
            "the request could not be sent: " + std::generic_category().message(-status),
            isLost ? Cause::NoBus : Cause::Unsendable};
}

ServiceError::Cause causeOf(std::string_view name) {
    if (name == kUnknownService || name == kNoOwner) return ServiceError::Cause::NoService;
    if (name == kAccessDenied) return ServiceError::Cause::Forbidden;
    return ServiceError::Cause::Refused;
}

// The bus sends kNoReply if the receiver goes away before it replies.
ServiceError errorOfReply(const sd_bus_error& error) {
    const std::string name = error.name != nullptr ? error.name : "";
    const auto kind =
        name == kNoReply ? ServiceError::Kind::Interrupted : ServiceError::Kind::Other;
    return {kind, error.message != nullptr ? name + ": " + error.message : name, causeOf(name)};
}

ServiceReply replyOf(sd_bus_message* message) {
    if (const sd_bus_error* error = libsystemd().sd_bus_message_get_error(message)) {
        return Unexpected(errorOfReply(*error));
    }
    if (auto reply = readBusMessage(message)) return *std::move(reply);
    return Unexpected(ServiceError{ServiceError::Kind::Other,
                                   "the reply is no dictionary that can be read",
                                   ServiceError::Cause::Unreadable});
}

}  // namespace

std::unique_ptr<ServiceLink> ServiceLink::open(const ServiceNames& names,
                                               const std::string& address,
                                               ServiceOwner::EventSink sink,
                                               std::function<void()> absence,
                                               std::function<void()> pause) {
    BusPointer bus;  // a slow bus must not end the calls that follow the service
    if (openBus(address, kNoCallLimit, bus) < 0) return nullptr;
    std::unique_ptr<ServiceLink> link(new ServiceLink(names, std::move(bus), std::move(sink),
                                                      std::move(absence), std::move(pause)));
    return link->follow() ? std::move(link) : nullptr;
}

ServiceLink::ServiceLink(ServiceNames names, BusPointer bus, ServiceOwner::EventSink sink,
                         std::function<void()> absence, std::function<void()> pause)
    : names_(std::move(names)),
      owner_(std::move(sink)),
      absence_(std::move(absence)),
      pause_(std::move(pause)),
      bus_(std::move(bus)) {}

ServiceLink::~ServiceLink() = default;

bool ServiceLink::isOpen() const {
    return !hasFailed_ && libsystemd().sd_bus_is_open(bus_.get()) > 0;
}

bool ServiceLink::isReady() const {
    return libsystemd().sd_bus_is_ready(bus_.get()) > 0;
}

// The matches for owner changes come before the question for the owner, so that no change between
// the two is missed. The match for events comes last, so that the owner is known before its events.
bool ServiceLink::follow() {
    const std::string changes =
        std::string("type='signal',sender='org.freedesktop.DBus',path='/org/freedesktop/DBus',") +
        "interface='org.freedesktop.DBus',member='NameOwnerChanged',arg0='" + names_.name + "'";
    const std::string events = "type='signal',sender='" + names_.name + "',path='" + names_.path +
                               "',interface='" + names_.name +
                               "',member='" HALVANE_SERVICE_EVENT "'";
    sd_bus* bus = bus_.get();
    return libsystemd().sd_bus_add_match_async(bus, nullptr, changes.c_str(), ownerChanged,
                                               matchAnswered, this) >= 0 &&
           libsystemd().sd_bus_call_method_async(bus, nullptr, kBusName, kBusPath, kBusName,
                                                 "GetNameOwner", ownerAnswered, this, "s",
                                                 names_.name.c_str()) >= 0 &&
           libsystemd().sd_bus_add_match_async(bus, nullptr, events.c_str(), eventArrived,
                                               matchAnswered, this) >= 0;
}

void ServiceLink::fail() {
    hasFailed_ = true;
}

// Without room for the owner's name its events cannot be recognised, so the connection fails.
template <typename Note>
void ServiceLink::noteOwner(Note note) {
    try {
        note();
    } catch (const std::bad_alloc&) {
        fail();
    }
}

void ServiceLink::send(const IPCMessage& message, Answer answer) {
    pending_.push_back({this, std::move(answer), {}});
    const auto pending = std::prev(pending_.end());
    pending->self = pending;
    const int status = call(message, *pending);
    if (status >= 0) return;
    const Answer failed = std::move(pending->answer);
    pending_.erase(pending);
    failed(Unexpected(errorOfStatus(status)));
}

int ServiceLink::call(const IPCMessage& message, Pending& pending) {
    sd_bus_message* request = nullptr;
    int status = libsystemd().sd_bus_message_new_method_call(
        bus_.get(), &request, names_.name.c_str(), names_.path.c_str(), names_.name.c_str(),
        HALVANE_SERVICE_REQUEST);
    const BusMessagePointer owner(request);
    if (status >= 0) status = libsystemd().sd_bus_message_set_auto_start(request, 0);
    if (status >= 0) status = writeBusMessage(request, message);
    if (status < 0) return status;
    return libsystemd().sd_bus_call_async(bus_.get(), nullptr, request, replyArrived, &pending,
                                          kNoCallLimit);
}

bool ServiceLink::process(int most) {
    const bool hasMore = processSome(most);
    if (pause_) pause_();
    return hasMore;
}

bool ServiceLink::processSome(int most) {
    for (int i = 0; i < most && isOpen(); ++i) {
        const int status = libsystemd().sd_bus_process(bus_.get(), nullptr);
        if (status < 0) fail();
        if (status <= 0) return false;
    }
    return isOpen();
}

bool ServiceLink::wait(WakeEvent& wake) const {
    const std::uint64_t deadline = this->deadline();
    WaitEnd end;
    if (deadline != kNever) end.emplace(std::chrono::microseconds(deadline));
    return waitForInput(descriptor(), events(), wake, end);
}

int ServiceLink::descriptor() const {
    return libsystemd().sd_bus_get_fd(bus_.get());
}

// If sd-bus cannot tell, process() can find out why.
short ServiceLink::events() const {
    const int events = libsystemd().sd_bus_get_events(bus_.get());
    return static_cast<short>(events < 0 ? POLLIN | POLLOUT : events);
}

// If sd-bus cannot tell the deadline, process() can find out why.
std::uint64_t ServiceLink::deadline() const {
    std::uint64_t deadline = kNever;
    return libsystemd().sd_bus_get_timeout(bus_.get(), &deadline) < 0 ? 0 : deadline;
}

void ServiceLink::close(const std::function<void(Answer&)>& take) {
    bus_.reset();  // first, so that no reply arrives for a destroyed object
    for (Pending& pending : pending_) take(pending.answer);
    pending_.clear();
}

// If the bus refuses to name the owner, for example by its policy, nothing is known about the
// owner. Events are dropped until a change names it.
int ServiceLink::ownerAnswered(sd_bus_message* message, void* link, sd_bus_error*) noexcept {
    const char* owner = "";
    if (libsystemd().sd_bus_message_is_method_error(message, kNoOwner) > 0 ||
        (libsystemd().sd_bus_message_is_method_error(message, nullptr) <= 0 &&
         libsystemd().sd_bus_message_read_basic(message, SD_BUS_TYPE_STRING, &owner) > 0)) {
        auto* self = static_cast<ServiceLink*>(link);
        self->noteOwner([&] { self->owner_.answered(owner); });
        if (*owner == '\0' && self->absence_) self->absence_();
    }
    return 1;
}

// Anybody can send this signal directly to the connection, but only the bus has the bus's name.
int ServiceLink::ownerChanged(sd_bus_message* message, void* link, sd_bus_error*) noexcept {
    const char *name = nullptr, *before = nullptr, *now = nullptr;
    if (senderOf(message) != kBusName ||
        libsystemd().sd_bus_message_read(message, "sss", &name, &before, &now) <= 0) {
        return 0;
    }
    auto* self = static_cast<ServiceLink*>(link);
    if (name == self->names_.name) {
        self->noteOwner([&] { self->owner_.changed(before, now); });
    }
    return 0;
}

int ServiceLink::eventArrived(sd_bus_message* message, void* link, sd_bus_error*) noexcept {
    static_cast<ServiceLink*>(link)->owner_.received(senderOf(message),
                                                     [message] { return readBusMessage(message); });
    return 1;
}

// Without its matches the connection would miss events.
int ServiceLink::matchAnswered(sd_bus_message* message, void* link, sd_bus_error*) noexcept {
    if (libsystemd().sd_bus_message_is_method_error(message, nullptr) > 0) {
        static_cast<ServiceLink*>(link)->fail();
    }
    return 1;
}

int ServiceLink::replyArrived(sd_bus_message* message, void* pending, sd_bus_error*) noexcept {
    auto* waiting = static_cast<Pending*>(pending);
    const Answer answer = std::move(waiting->answer);
    waiting->link->pending_.erase(waiting->self);
    try {
        answer(replyOf(message));
    } catch (const std::bad_alloc&) {
        // Memory does not hold the reply: it is dropped.
    }
    return 1;
}

}  // namespace halvane

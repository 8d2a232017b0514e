#include <algorithm>
#include <array>
#include <cerrno>
#include <ctime>
#include <iterator>
#include <poll.h>
#include <system_error>
#include <utility>

#include "halvane/platform/bus_message_reader_internal.h"
#include "halvane/platform/bus_message_writer_internal.h"
#include "halvane/platform/service_link_internal.h"
#include "halvane/platform/up_time_internal.h"

namespace halvane {

namespace {

constexpr const char* kBusName = "org.freedesktop.DBus";
constexpr const char* kBusPath = "/org/freedesktop/DBus";
constexpr std::string_view kNoReply = "org.freedesktop.DBus.Error.NoReply";
constexpr std::uint64_t kNoTimeLimit = UINT64_MAX;

std::string_view senderOf(sd_bus_message* message) {
    const char* sender = ::sd_bus_message_get_sender(message);
    return sender != nullptr ? sender : "";
}

ServiceError errorOfStatus(int status) {
    return {ServiceError::Kind::Other,
            "the request could not be sent: " + std::generic_category().message(-status)};
}

// The bus answers so for who goes away before it has replied.
ServiceError errorOfReply(const sd_bus_error& error) {
    const std::string name = error.name != nullptr ? error.name : "";
    const auto kind =
        name == kNoReply ? ServiceError::Kind::Interrupted : ServiceError::Kind::Other;
    return {kind, error.message != nullptr ? name + ": " + error.message : name};
}

ServiceReply replyOf(sd_bus_message* message) {
    if (const sd_bus_error* error = ::sd_bus_message_get_error(message)) {
        return errorOfReply(*error);
    }
    if (auto reply = readBusMessage(message)) return std::move(*reply);
    return ServiceError{ServiceError::Kind::Other, "the reply is no dictionary that can be read"};
}

// How long until a point in time of the monotonic clock, in microseconds; null: for ever.
const timespec* timeUntil(std::uint64_t deadline, timespec& storage) {
    if (deadline == kNoTimeLimit) return nullptr;
    constexpr std::uint64_t kMicro = 1000000;
    const std::uint64_t now = upTimeNow() / (ticksPerSecondOf(upTimeTimebase()) / kMicro);
    const std::uint64_t left = deadline > now ? deadline - now : 0;
    storage.tv_sec = static_cast<time_t>(left / kMicro);
    storage.tv_nsec = static_cast<long>(left % kMicro * 1000);
    return &storage;
}

}  // namespace

std::optional<ServiceNames> ServiceNames::of(const std::string& serviceName) {
    if (serviceName.find('\0') != std::string::npos ||
        ::sd_bus_service_name_is_valid(serviceName.c_str()) <= 0 ||
        ::sd_bus_interface_name_is_valid(serviceName.c_str()) <= 0) {
        return std::nullopt;
    }
    ServiceNames names = {serviceName, "/" + serviceName};
    std::ranges::replace(names.path, '.', '/');
    return names;
}

std::unique_ptr<ServiceLink> ServiceLink::open(const ServiceNames& names, bool isSystemBus,
                                               ServiceOwner::EventSink sink) {
    sd_bus* bus = nullptr;
    const int status = isSystemBus ? ::sd_bus_open_system(&bus) : ::sd_bus_open_user(&bus);
    if (status < 0) return nullptr;
    std::unique_ptr<ServiceLink> link(new ServiceLink(names, BusPointer(bus), std::move(sink)));
    return link->follow() ? std::move(link) : nullptr;
}

ServiceLink::ServiceLink(ServiceNames names, BusPointer bus, ServiceOwner::EventSink sink)
    : names_(std::move(names)), owner_(std::move(sink)), bus_(std::move(bus)) {}

ServiceLink::~ServiceLink() = default;

bool ServiceLink::isOpen() const {
    return !hasFailed_ && ::sd_bus_is_open(bus_.get()) > 0;
}

// The matches go before the question, so that no change is missed between the two.
bool ServiceLink::follow() {
    const std::string changes =
        std::string("type='signal',sender='org.freedesktop.DBus',path='/org/freedesktop/DBus',") +
        "interface='org.freedesktop.DBus',member='NameOwnerChanged',arg0='" + names_.name + "'";
    const std::string events = "type='signal',sender='" + names_.name + "',path='" + names_.path +
                               "',interface='" + names_.name + "',member='Event'";
    sd_bus* bus = bus_.get();
    return ::sd_bus_add_match_async(bus, nullptr, changes.c_str(), ownerChanged, matchAnswered,
                                    this) >= 0 &&
           ::sd_bus_add_match_async(bus, nullptr, events.c_str(), eventArrived, matchAnswered,
                                    this) >= 0 &&
           ::sd_bus_call_method_async(bus, nullptr, kBusName, kBusPath, kBusName, "GetNameOwner",
                                      ownerAnswered, this, "s", names_.name.c_str()) >= 0;
}

void ServiceLink::fail() {
    hasFailed_ = true;
}

void ServiceLink::send(const IPCMessage& message, Answer answer) {
    pending_.push_back({this, std::move(answer), {}});
    const auto pending = std::prev(pending_.end());
    pending->self = pending;
    const int status = call(message, *pending);
    if (status >= 0) return;
    const Answer failed = std::move(pending->answer);
    pending_.erase(pending);
    failed(errorOfStatus(status));
}

int ServiceLink::call(const IPCMessage& message, Pending& pending) {
    sd_bus_message* request = nullptr;
    int status =
        ::sd_bus_message_new_method_call(bus_.get(), &request, names_.name.c_str(),
                                         names_.path.c_str(), names_.name.c_str(), "Request");
    const BusMessagePointer owner(request);
    if (status >= 0) status = ::sd_bus_message_set_auto_start(request, 0);
    if (status >= 0) status = writeBusMessage(request, message);
    if (status < 0) return status;
    return ::sd_bus_call_async(bus_.get(), nullptr, request, replyArrived, &pending, kNoTimeLimit);
}

bool ServiceLink::process(int most) {
    for (int i = 0; i < most && isOpen(); ++i) {
        const int status = ::sd_bus_process(bus_.get(), nullptr);
        if (status < 0) fail();
        if (status <= 0) return false;
    }
    return isOpen();
}

bool ServiceLink::wait(WakeEvent& wake) const {
    const int events = ::sd_bus_get_events(bus_.get());
    std::uint64_t deadline = kNoTimeLimit;
    if (events < 0 || ::sd_bus_get_timeout(bus_.get(), &deadline) < 0) return true;
    std::array<pollfd, 2> polled = {{
        {::sd_bus_get_fd(bus_.get()), static_cast<short>(events), 0},
        {wake.descriptor(), POLLIN, 0},
    }};
    timespec storage{};
    const int count = ::ppoll(polled.data(), polled.size(), timeUntil(deadline, storage), nullptr);
    if (count > 0 && polled[1].revents != 0) wake.clear();
    return count <= 0 || polled[0].revents != 0;
}

std::vector<ServiceLink::Answer> ServiceLink::takePending() {
    bus_.reset();  // no reply may arrive for who is gone
    std::vector<Answer> answers;
    answers.reserve(pending_.size());
    for (Pending& pending : pending_) answers.push_back(std::move(pending.answer));
    pending_.clear();
    return answers;
}

// A bus that does not say who owns the name, say for its policy, has no events of the service.
int ServiceLink::ownerAnswered(sd_bus_message* message, void* link, sd_bus_error*) noexcept {
    const char* owner = nullptr;
    const bool isKnown = ::sd_bus_message_is_method_error(message, nullptr) <= 0 &&
                         ::sd_bus_message_read_basic(message, SD_BUS_TYPE_STRING, &owner) > 0;
    static_cast<ServiceLink*>(link)->owner_.answered(isKnown ? owner : "");
    return 1;
}

// Anybody can send a signal of this name straight to us, but only the bus bears its name.
int ServiceLink::ownerChanged(sd_bus_message* message, void* link, sd_bus_error*) noexcept {
    const char *name = nullptr, *before = nullptr, *now = nullptr;
    if (senderOf(message) != kBusName ||
        ::sd_bus_message_read(message, "sss", &name, &before, &now) <= 0) {
        return 0;
    }
    auto* self = static_cast<ServiceLink*>(link);
    if (name == self->names_.name) self->owner_.changed(before, now);
    return 0;
}

int ServiceLink::eventArrived(sd_bus_message* message, void* link, sd_bus_error*) noexcept {
    if (auto event = readBusMessage(message)) {
        static_cast<ServiceLink*>(link)->owner_.received(senderOf(message), std::move(*event));
    }
    return 1;
}

// Without its matches the connection would miss what happens.
int ServiceLink::matchAnswered(sd_bus_message* message, void* link, sd_bus_error*) noexcept {
    if (::sd_bus_message_is_method_error(message, nullptr) > 0) {
        static_cast<ServiceLink*>(link)->fail();
    }
    return 1;
}

int ServiceLink::replyArrived(sd_bus_message* message, void* pending, sd_bus_error*) noexcept {
    auto* waiting = static_cast<Pending*>(pending);
    const Answer answer = std::move(waiting->answer);
    waiting->link->pending_.erase(waiting->self);
    answer(replyOf(message));
    return 1;
}

}  // namespace halvane

#include "tests/support/bus_caller.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <stdexcept>
#include <sys/types.h>

namespace halvane::testing {

namespace {

constexpr const char kName[] = "org.halvane.halvaned";
constexpr const char kPath[] = "/org/halvane/halvaned";
constexpr const char kControlName[] = "org.halvane.halvaned.Simulation";
constexpr const char kControlPath[] = "/org/halvane/halvaned/Simulation";
constexpr const char kBusName[] = "org.freedesktop.DBus";
constexpr const char kBusPath[] = "/org/freedesktop/DBus";

int check(int result, const char* what) {
    if (result < 0) throw std::runtime_error(std::string(what) + ": " + std::strerror(-result));
    return result;
}

struct MessageOwner {
    sd_bus_message* message = nullptr;
    ~MessageOwner() { ::sd_bus_message_unref(message); }
};
struct ErrorOwner {
    sd_bus_error error{};
    ~ErrorOwner() { ::sd_bus_error_free(&error); }
};

void append(sd_bus_message* m, const std::string& value) {
    check(::sd_bus_message_append(m, "v", "s", value.c_str()), "string");
}
void append(sd_bus_message* m, std::int64_t value) {
    check(::sd_bus_message_append(m, "v", "x", value), "integer");
}
void append(sd_bus_message* m, bool value) {
    check(::sd_bus_message_append(m, "v", "b", value ? 1 : 0), "boolean");
}
void append(sd_bus_message* m, const WireData& value) {
    check(::sd_bus_message_open_container(m, 'v', "ay"), "data");
    check(::sd_bus_message_append_array(m, 'y', value.data(), value.size()), "data");
    check(::sd_bus_message_close_container(m), "data");
}

void append(sd_bus_message* m, const WireMessage& message) {
    check(::sd_bus_message_open_container(m, 'a', "{sv}"), "dictionary");
    for (const auto& [key, value] : message) {
        check(::sd_bus_message_open_container(m, 'e', "sv"), "entry");
        check(::sd_bus_message_append(m, "s", key.c_str()), "key");
        std::visit([m](const auto& held) { append(m, held); }, value);
        check(::sd_bus_message_close_container(m), "entry");
    }
    check(::sd_bus_message_close_container(m), "dictionary");
}

WireValue readVariant(sd_bus_message* m) {
    char type = 0;
    const char* contents = nullptr;
    check(::sd_bus_message_peek_type(m, &type, &contents), "variant");
    const std::string held = contents;
    check(::sd_bus_message_enter_container(m, 'v', contents), "variant");
    WireValue value;
    if (held == "s") {
        const char* text = nullptr;
        check(::sd_bus_message_read_basic(m, 's', &text), "string");
        value = std::string(text);
    } else if (held == "x") {
        std::int64_t number = 0;
        check(::sd_bus_message_read_basic(m, 'x', &number), "integer");
        value = number;
    } else if (held == "b") {
        int flag = 0;
        check(::sd_bus_message_read_basic(m, 'b', &flag), "boolean");
        value = flag != 0;
    } else if (held == "ay") {
        const void* bytes = nullptr;
        std::size_t size = 0;
        check(::sd_bus_message_read_array(m, 'y', &bytes, &size), "data");
        const auto* first = static_cast<const std::uint8_t*>(bytes);
        value = WireData(first, first + size);
    } else {
        throw std::runtime_error("a value of the type " + held);
    }
    check(::sd_bus_message_exit_container(m), "variant");
    return value;
}

WireMessage read(sd_bus_message* m) {
    if (std::string(::sd_bus_message_get_signature(m, 1)) != "a{sv}") {
        throw std::runtime_error("no a{sv}");
    }
    WireMessage message;
    check(::sd_bus_message_enter_container(m, 'a', "{sv}"), "dictionary");
    while (check(::sd_bus_message_enter_container(m, 'e', "sv"), "entry") > 0) {
        const char* key = nullptr;
        check(::sd_bus_message_read_basic(m, 's', &key), "key");
        if (!message.emplace(key, readVariant(m)).second) throw std::runtime_error("a key twice");
        check(::sd_bus_message_exit_container(m), "entry");
    }
    return message;
}

WireReply replyOf(sd_bus_message* m) {
    WireReply reply;
    const char* sender = ::sd_bus_message_get_sender(m);
    reply.sender = sender != nullptr ? sender : "nobody";
    if (const sd_bus_error* error = ::sd_bus_message_get_error(m)) {
        reply.error = error->name;
    } else {
        reply.message = read(m);
    }
    return reply;
}

int replyArrived(sd_bus_message* m, void* later, sd_bus_error*) {
    const std::unique_ptr<std::shared_ptr<WireReply>> place(
        static_cast<std::shared_ptr<WireReply>*>(later));
    **place = replyOf(m);
    return 0;
}

}  // namespace

std::string WireReply::text(const std::string& key) const {
    const auto& data = std::get<WireData>(message.at(key));
    return {data.begin(), data.end()};
}

std::string WireEvent::summary() const {
    const std::string command = std::get<std::string>(message.at("command"));
    std::string text = command.substr(command.rfind('.') + 1);
    text += ' ' + std::get<std::string>(message.at("BSDName")) + ' ';
    for (const std::uint8_t byte : std::get<WireData>(message.at("MAC"))) {
        char digits[3];
        std::snprintf(digits, sizeof digits, "%02x", byte);
        text += digits;
    }
    return text;
}

BusCaller::BusCaller(const std::string& address) {
    sd_bus* bus = nullptr;
    check(::sd_bus_new(&bus), "bus");
    bus_.reset(bus);
    check(::sd_bus_set_address(bus, address.c_str()), "address");
    check(::sd_bus_set_bus_client(bus, 1), "client");
    check(::sd_bus_start(bus), "start");
    const char* name = nullptr;
    check(::sd_bus_get_unique_name(bus, &name), "name");
    name_ = name;
    check(::sd_bus_match_signal(bus, nullptr, nullptr, kPath, kName, "Event", eventArrived, this),
          "match");
    check(::sd_bus_match_signal(bus, nullptr, kBusName, kBusPath, kBusName, "NameOwnerChanged",
                                nameChanged, this),
          "match");
}

std::shared_ptr<WireReply> BusCaller::requestLater(const WireMessage& message) {
    MessageOwner call;
    check(::sd_bus_message_new_method_call(bus(), &call.message, kName, kPath, kName, "Request"),
          "request");
    append(call.message, message);
    auto later = std::make_shared<WireReply>();
    auto place = std::make_unique<std::shared_ptr<WireReply>>(later);
    check(::sd_bus_call_async(bus(), nullptr, call.message, replyArrived, place.get(), UINT64_MAX),
          "request");
    place.release();  // replyArrived() has it now
    return later;
}

void BusCaller::waitFor(const WireReply& later) {
    processUntil([&later] { return !later.sender.empty(); });
}

WireReply BusCaller::request(const WireMessage& message) {
    const auto later = requestLater(message);
    waitFor(*later);
    return *later;
}

std::string BusCaller::call(const char* destination, const char* path, const char* interface,
                            const char* member, const std::string& text) {
    MessageOwner call, reply;
    ErrorOwner failure;
    check(::sd_bus_message_new_method_call(bus(), &call.message, destination, path, interface,
                                           member),
          member);
    if (!text.empty()) check(::sd_bus_message_append(call.message, "s", text.c_str()), member);
    if (::sd_bus_call(bus(), call.message, UINT64_MAX, &failure.error, &reply.message) < 0) {
        throw std::runtime_error(failure.error.message != nullptr ? failure.error.message : member);
    }
    const char* result = "";
    if (::sd_bus_message_has_signature(reply.message, "s") > 0) {
        check(::sd_bus_message_read(reply.message, "s", &result), member);
    }
    return result;
}

std::string BusCaller::control(const std::string& line) {
    return call(kControlName, kControlPath, kControlName, "Control", line);
}

void BusCaller::processUntil(const std::function<bool()>& isDone) {
    while (!isDone()) {
        if (check(::sd_bus_process(bus(), nullptr), "process") > 0) continue;
        if (!isDone()) check(::sd_bus_wait(bus(), UINT64_MAX), "wait");
    }
}

WireEvent BusCaller::nextEvent() {
    processUntil([this] { return seen_ < events_.size(); });
    return events_[seen_++];
}

std::vector<std::string> BusCaller::nextEvents(std::size_t count) {
    std::vector<std::string> summaries;
    while (summaries.size() < count) summaries.push_back(nextEvent().summary());
    return summaries;
}

std::vector<std::string> BusCaller::eventsSoFar() {
    while (check(::sd_bus_process(bus(), nullptr), "process") > 0) {
    }
    return nextEvents(events_.size() - seen_);
}

std::string BusCaller::ownerOf(const char* name) {
    try {
        return call(kBusName, kBusPath, kBusName, "GetNameOwner", name);
    } catch (const std::runtime_error&) {
        return {};
    }
}

pid_t BusCaller::processOf(const char* name) {
    MessageOwner reply;
    check(::sd_bus_call_method(bus(), kBusName, kBusPath, kBusName, "GetConnectionUnixProcessID",
                               nullptr, &reply.message, "s", name),
          "process");
    std::uint32_t process = 0;
    check(::sd_bus_message_read(reply.message, "u", &process), "process");
    return static_cast<pid_t>(process);
}

void BusCaller::waitUntilOwned(const std::string& name) {
    if (!ownerOf(name.c_str()).empty()) return;
    processUntil([&] { return std::find(owned_.begin(), owned_.end(), name) != owned_.end(); });
}

void BusCaller::waitUntilGone(const std::string& name) {
    processUntil([&] { return std::find(gone_.begin(), gone_.end(), name) != gone_.end(); });
}

int BusCaller::eventArrived(sd_bus_message* m, void* caller, sd_bus_error*) {
    static_cast<BusCaller*>(caller)->events_.push_back({::sd_bus_message_get_sender(m), read(m)});
    return 0;
}

int BusCaller::nameChanged(sd_bus_message* m, void* caller, sd_bus_error*) {
    const char *name = nullptr, *before = nullptr, *after = nullptr;
    check(::sd_bus_message_read(m, "sss", &name, &before, &after), "name");
    auto* self = static_cast<BusCaller*>(caller);
    (*after == '\0' ? self->gone_ : self->owned_).push_back(name);
    return 0;
}

}  // namespace halvane::testing

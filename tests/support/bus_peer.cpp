#include "tests/support/bus_peer.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <exception>
#include <poll.h>
#include <span>
#include <stdexcept>
#include <system_error>
#include <utility>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/number.h"
#include "halvane/platform/os/counting_semaphore.h"

namespace halvane::testing {

namespace {

template <typename Status>
Status check(Status status, const char* what) {
    if (status < 0)
        throw std::system_error(-static_cast<int>(status), std::generic_category(), what);
    return status;
}

BusPointer connect(const std::string& address) {
    sd_bus* bus = nullptr;
    check(::sd_bus_new(&bus), "sd_bus_new");
    BusPointer owner(bus);
    check(::sd_bus_set_address(bus, address.c_str()), "sd_bus_set_address");
    check(::sd_bus_set_bus_client(bus, 1), "sd_bus_set_bus_client");
    check(::sd_bus_start(bus), "sd_bus_start");
    return owner;
}

// The path of a service's object is the service's name with slashes for dots.
std::string pathOf(const std::string& service) {
    std::string path = "/" + service;
    std::ranges::replace(path, '.', '/');
    return path;
}

void appendValue(sd_bus_message* message, const PropertyListValue& value) {
    if (const auto* text = value.as<std::string>()) {
        check(::sd_bus_message_append(message, "v", "s", text->c_str()), "string");
    } else if (const auto* number = value.as<Number>()) {
        check(::sd_bus_message_append(message, "v", "x", number->int64()), "number");
    } else if (const auto* boolean = value.as<bool>()) {
        check(::sd_bus_message_append(message, "v", "b", int{*boolean}), "boolean");
    } else if (const auto* data = value.as<ByteBuffer>()) {
        const auto bytes = data->bytes();
        check(::sd_bus_message_open_container(message, 'v', "ay"), "data");
        check(::sd_bus_message_append_array(message, 'y', bytes.data(), bytes.size()), "data");
        check(::sd_bus_message_close_container(message), "data");
    } else {
        throw std::invalid_argument("a peer sends strings, numbers, booleans and data");
    }
}

void appendMessage(sd_bus_message* message, const IPCMessage& source) {
    check(::sd_bus_message_open_container(message, 'a', "{sv}"), "dictionary");
    for (const auto& [key, value] : source.entries()) {
        check(::sd_bus_message_open_container(message, 'e', "sv"), "entry");
        check(::sd_bus_message_append(message, "s", key.c_str()), "key");
        appendValue(message, value);
        check(::sd_bus_message_close_container(message), "entry");
    }
    check(::sd_bus_message_close_container(message), "dictionary");
}

PropertyListValue readValue(sd_bus_message* message, const std::string& type) {
    if (type == "s") {
        const char* text = nullptr;
        check(::sd_bus_message_read(message, "v", "s", &text), "string");
        return text;
    }
    if (type == "x") {
        std::int64_t number = 0;
        check(::sd_bus_message_read(message, "v", "x", &number), "number");
        return number;
    }
    if (type == "b") {
        int boolean = 0;
        check(::sd_bus_message_read(message, "v", "b", &boolean), "boolean");
        return boolean != 0;
    }
    if (type != "ay") {
        check(::sd_bus_message_skip(message, "v"), "value");
        return {};
    }
    const void* bytes = nullptr;
    std::size_t size = 0;
    check(::sd_bus_message_enter_container(message, 'v', "ay"), "data");
    check(::sd_bus_message_read_array(message, 'y', &bytes, &size), "data");
    check(::sd_bus_message_exit_container(message), "data");
    return ByteBuffer(std::span(static_cast<const std::uint8_t*>(bytes), size));
}

std::vector<ReceivedRequest::Entry> readEntries(sd_bus_message* message) {
    std::vector<ReceivedRequest::Entry> entries;
    check(::sd_bus_message_enter_container(message, 'a', "{sv}"), "dictionary");
    while (check(::sd_bus_message_enter_container(message, 'e', "sv"), "entry") > 0) {
        const char *key = nullptr, *type = nullptr;
        check(::sd_bus_message_read(message, "s", &key), "key");
        check(::sd_bus_message_peek_type(message, nullptr, &type), "value");
        const std::string held = type;  // the next call may move it
        entries.push_back({key, held, readValue(message, held)});
        check(::sd_bus_message_exit_container(message), "entry");
    }
    check(::sd_bus_message_exit_container(message), "dictionary");
    return entries;
}

}  // namespace

const ReceivedRequest::Entry* ReceivedRequest::find(std::string_view key) const {
    const auto entry = std::ranges::find(entries, key, &Entry::key);
    return entry == entries.end() ? nullptr : &*entry;
}

std::string ReceivedRequest::command() const {
    const Entry* entry = find("command");
    const auto* text = entry != nullptr ? entry->value.as<std::string>() : nullptr;
    return text != nullptr ? *text : "";
}

std::string ReceivedRequest::keysAndTypes() const {
    std::string text;
    for (const Entry& entry : entries) {
        if (!text.empty()) text += " ";
        text += entry.key + ":" + entry.type;
    }
    return text;
}

BusPeer::BusPeer(const PrivateBus& bus, const std::string& name) : bus_(connect(bus.address())) {
    answer(ipcMessage({{"status", 0}}));
    const char* unique = nullptr;
    check(::sd_bus_get_unique_name(bus_.get(), &unique), "sd_bus_get_unique_name");
    uniqueName_ = unique;
    check(::sd_bus_add_filter(bus_.get(), nullptr, requestArrived, this), "sd_bus_add_filter");
    if (!name.empty()) {
        check(::sd_bus_request_name(bus_.get(), name.c_str(), SD_BUS_NAME_ALLOW_REPLACEMENT),
              "sd_bus_request_name");
    }
    thread_ = std::thread([this] { run(); });
}

BusPeer::~BusPeer() {
    perform([this] { isStopped_ = true; });
    thread_.join();
}

void BusPeer::answer(PeerAnswer answer) {
    answerBy([answer = std::move(answer)](const ReceivedRequest&) { return answer; });
}

void BusPeer::answerBy(Script script) {
    const std::lock_guard lock(mutex_);
    script_ = std::move(script);
}

void BusPeer::answerHeld(const PeerAnswer& answer) {
    perform([&] {
        for (auto& request : std::exchange(held_, {})) reply(std::move(request), answer);
    });
}

std::vector<ReceivedRequest> BusPeer::requests() const {
    const std::lock_guard lock(mutex_);
    return requests_;
}

ReceivedRequest BusPeer::waitForRequest(std::size_t index) {
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [&] { return requests_.size() > index; });
    return requests_[index];
}

void BusPeer::sendEvent(const IPCMessage& event, const std::string& destination,
                        const std::string& name) {
    sendEventBody([&](sd_bus_message* message) { appendMessage(message, event); }, destination,
                  name);
}

void BusPeer::sendEventBody(const PeerBody& body, const std::string& destination,
                            const std::string& name) {
    sendSignal({pathOf(name), name, "Event", destination, {}}, body);
}

void BusPeer::sendSignal(const Signal& signal, const PeerBody& body) {
    perform([&] {
        sd_bus_message* message = nullptr;
        check(::sd_bus_message_new_signal(bus_.get(), &message, signal.path.c_str(),
                                          signal.interface.c_str(), signal.member.c_str()),
              "sd_bus_message_new_signal");
        const BusMessagePointer owner(message);
        if (!signal.destination.empty()) {
            check(::sd_bus_message_set_destination(message, signal.destination.c_str()),
                  "sd_bus_message_set_destination");
        }
        if (!signal.sender.empty()) {
            check(::sd_bus_message_set_sender(message, signal.sender.c_str()),
                  "sd_bus_message_set_sender");
        }
        body(message);
        check(::sd_bus_send(bus_.get(), message, nullptr), "sd_bus_send");
    });
}

void BusPeer::releaseName(const std::string& name) {
    perform([&] { check(::sd_bus_release_name(bus_.get(), name.c_str()), "sd_bus_release_name"); });
}

void BusPeer::ownName(const std::string& name) {
    constexpr auto kFlags = SD_BUS_NAME_REPLACE_EXISTING | SD_BUS_NAME_ALLOW_REPLACEMENT;
    perform([&] {
        check(::sd_bus_request_name(bus_.get(), name.c_str(), kFlags), "sd_bus_request_name");
    });
}

void BusPeer::disconnect() {
    perform([this] {
        if (bus_) ::sd_bus_flush(bus_.get());
        drop();
    });
}

void BusPeer::waitUntilDisconnected() {
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [this] { return isDisconnected_; });
}

std::size_t BusPeer::countConnections() {
    std::size_t count = 0;
    perform([&] {
        char** names = nullptr;
        check(::sd_bus_list_names(bus_.get(), &names, nullptr), "sd_bus_list_names");
        for (char** name = names; *name != nullptr; ++name) {
            if (**name == ':') ++count;
            ::free(*name);
        }
        ::free(names);
    });
    return count;
}

// An exception of the task reaches the caller.
void BusPeer::perform(const Task& task) {
    CountingSemaphore done(0);
    std::exception_ptr failure;
    {
        const std::lock_guard lock(mutex_);
        tasks_.push_back([&] {
            try {
                task();
            } catch (...) {
                failure = std::current_exception();
            }
            done.signal();
        });
    }
    wake_.signal();
    done.wait();
    if (failure) std::rethrow_exception(failure);
}

void BusPeer::run() {
    while (!isStopped_) {
        if (bus_) processBus();
        waitForSomething();
        runTasks();
    }
    drop();
}

void BusPeer::runTasks() {
    std::vector<Task> tasks;
    {
        const std::lock_guard lock(mutex_);
        tasks.swap(tasks_);
    }
    for (const Task& task : tasks) task();
}

void BusPeer::processBus() {
    int status = 1;
    while (bus_ && status > 0) status = ::sd_bus_process(bus_.get(), nullptr);
    if (status < 0 || (bus_ && ::sd_bus_is_open(bus_.get()) <= 0)) drop();
}

void BusPeer::waitForSomething() {
    std::array<pollfd, 2> polled = {{{wake_.descriptor(), POLLIN, 0}, {-1, 0, 0}}};
    if (bus_) {
        polled[1] = {::sd_bus_get_fd(bus_.get()),
                     static_cast<short>(::sd_bus_get_events(bus_.get())), 0};
    }
    ::poll(polled.data(), polled.size(), -1);
    if (polled[0].revents != 0) wake_.clear();
}

void BusPeer::drop() {
    held_.clear();
    bus_.reset();
    const std::lock_guard lock(mutex_);
    isDisconnected_ = true;
    changed_.notify_all();
}

int BusPeer::requestArrived(sd_bus_message* message, void* peer, sd_bus_error*) noexcept {
    std::uint8_t type = 0;
    ::sd_bus_message_get_type(message, &type);
    if (type != SD_BUS_MESSAGE_METHOD_CALL) return 0;
    auto* self = static_cast<BusPeer*>(peer);
    const ReceivedRequest request = self->record(message);
    Script script;
    {
        const std::lock_guard lock(self->mutex_);
        script = self->script_;
    }
    self->reply(BusMessagePointer(::sd_bus_message_ref(message)), script(request));
    return 1;
}

ReceivedRequest BusPeer::record(sd_bus_message* message) {
    const auto text = [](const char* from) { return std::string(from != nullptr ? from : ""); };
    ReceivedRequest request;
    request.sender = text(::sd_bus_message_get_sender(message));
    request.path = text(::sd_bus_message_get_path(message));
    request.interface = text(::sd_bus_message_get_interface(message));
    request.member = text(::sd_bus_message_get_member(message));
    request.signature = text(::sd_bus_message_get_signature(message, 1));
    if (request.signature == "a{sv}") request.entries = readEntries(message);
    const std::lock_guard lock(mutex_);
    requests_.push_back(request);
    changed_.notify_all();
    return request;
}

void BusPeer::reply(BusMessagePointer request, const PeerAnswer& answer) {
    if (std::holds_alternative<PeerSilence>(answer)) {
        held_.push_back(std::move(request));
    } else if (std::holds_alternative<PeerLeaves>(answer)) {
        request.reset();
        drop();
    } else if (const auto* error = std::get_if<PeerError>(&answer)) {
        const sd_bus_error wire = {error->name.c_str(), error->text.c_str(), 0};
        check(::sd_bus_reply_method_error(request.get(), &wire), "sd_bus_reply_method_error");
    } else {
        sd_bus_message* message = nullptr;
        check(::sd_bus_message_new_method_return(request.get(), &message), "reply");
        const BusMessagePointer owner(message);
        if (const auto* body = std::get_if<PeerBody>(&answer)) {
            (*body)(message);
        } else {
            appendMessage(message, std::get<IPCMessage>(answer));
        }
        check(::sd_bus_send(bus_.get(), message, nullptr), "sd_bus_send");
    }
}

}  // namespace halvane::testing

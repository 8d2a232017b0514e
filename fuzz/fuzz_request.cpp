// Any request to a daemon: it is decoded or refused as its keys demand, and answered once. What was
// decoded reads back the same after a client has sent it again.
#include <cstddef>
#include <cstdint>
#include <list>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/number.h"
#include "halvane/base/property_list_value.h"
#include "halvane/base/result.h"
#include "halvane/daemon/requests_internal.h"
#include "halvane/model/bss_config.h"
#include "halvane/model/client.h"
#include "halvane/model/daemon_log_controls.h"
#include "halvane/model/daemon_protocol.h"
#include "halvane/model/daemon_status.h"
#include "halvane/model/device.h"
#include "halvane/model/interface.h"
#include "halvane/platform/bus/ipc_message.h"
#include "halvane/platform/bus/message_check_internal.h"
#include "halvane/platform/plist/xml_property_list.h"
#include "halvane/regulatory/channel.h"
#include "halvane/service/backend.h"
#include "halvane/service/backend_reply.h"
#include "halvane/service/daemon_faults.h"
#include "halvane/service/dispatcher_internal.h"
#include "halvane/service/log_settings.h"
#include "halvane/service/message_internal.h"
#include "halvane/service/request_internal.h"
#include "halvane/service/subscribers.h"

#include "fuzz/byte_source.h"
#include "fuzz/property_list_source.h"
#include "fuzz/require.h"

using namespace halvane;

namespace {

constexpr const char* kCommands[] = {"queryDeviceList",
                                     "queryInterfaceList",
                                     "queryChannelList",
                                     "queryBSSConfigList",
                                     "clientList",
                                     "configAdd",
                                     "configRemove",
                                     "enable",
                                     "disable",
                                     "role",
                                     "bssStart",
                                     "bssStop",
                                     "logging",
                                     "queryLogging",
                                     "subscribe",
                                     "dance",
                                     "kick"};
constexpr const char* kKeys[] = {"interface", "role", "notifyAP", "WiFi", "WiFiXPC"};

// A configuration as a client sends it, or some other bytes.
ByteBuffer configurationFrom(fuzzing::ByteSource& source) {
    if (source.flag()) return source.buffer();
    const auto xml = xmlPropertyList(fuzzing::dictionaryFrom(source, 2));
    return xml ? ByteBuffer::fromText(*xml) : ByteBuffer();
}

PropertyListValue valueFrom(fuzzing::ByteSource& source) {
    switch (source.below(4)) {
        case 0:
            return source.text();
        case 1:
            return source.flag();
        default:
            return fuzzing::valueFrom(source, 1);
    }
}

IPCMessage messageFrom(fuzzing::ByteSource& source) {
    PropertyListDictionary entries;
    if (source.flag()) entries.set("command", source.oneOf(kCommands));
    if (source.flag()) entries.set("bssconfig", configurationFrom(source));
    for (const char* key : kKeys) {
        if (source.flag()) entries.set(key, valueFrom(source));
    }
    for (auto& [key, value] : fuzzing::dictionaryFrom(source, 1)) entries.set(key, value);
    return IPCMessage(std::move(entries));
}

// A backend without anything, some of whose replies are lost.
class Nothing final : public Backend {
  public:
    explicit Nothing(bool losesReplies) : losesReplies_(losesReplies) {}

    void devices(BackendReply<std::vector<HalvaneDevice>> reply) override { list(reply); }
    void interfaces(BackendReply<std::vector<HalvaneInterface>> reply) override { list(reply); }
    void channels(std::string_view, BackendReply<std::vector<HalvaneChannel>> reply) override {
        list(reply);
    }
    void configurations(std::optional<std::string_view>,
                        BackendReply<std::vector<HalvaneBSSConfig>> reply) override {
        list(reply);
    }
    void stations(BackendReply<std::vector<HalvaneClient>> reply) override { list(reply); }
    void add(std::string_view, const HalvaneBSSConfig& configuration,
             BackendReply<void> reply) override {
        added = configuration;
        act(reply);
    }
    void remove(std::string_view, const HalvaneBSSConfig&, BackendReply<void> reply) override {
        act(reply);
    }
    void enable(std::string_view, BackendReply<void> reply) override { act(reply); }
    void disable(std::string_view, BackendReply<void> reply) override { act(reply); }
    void changeRole(std::string_view, std::string_view, BackendReply<void> reply) override {
        act(reply);
    }
    void start(std::string_view, BackendReply<void> reply) override { act(reply); }
    void stop(std::string_view, BackendReply<void> reply) override { act(reply); }
    void kick(std::string_view, const MacAddress&, BackendReply<void> reply) override {
        act(reply);
    }

    std::optional<HalvaneBSSConfig> added;

  private:
    template <typename Record>
    void list(BackendReply<std::vector<Record>>& reply) const {
        if (!losesReplies_) reply(std::vector<Record>());
    }
    void act(BackendReply<void>& reply) const {
        if (!losesReplies_) reply({});
    }

    const bool losesReplies_;
};

class NoLogging final : public LogSettings {
  public:
    DaemonStatus apply(const DaemonLogControls&) override { return DaemonStatus::Done; }
    std::string text() const override { return ""; }
};

template <typename Kind>
bool holds(const IPCMessage& message, const char* key) {
    const auto* value = message.entries().find(key);
    return value != nullptr && value->as<Kind>() != nullptr;
}

void checkAgain(const DecodedRequest& request, const IPCMessage& sent) {
    const auto command = commandIn(sent);
    REQUIRE(command);
    const auto again = decoded(**command, sent);
    REQUIRE(again);
    REQUIRE(again->command == request.command);
    REQUIRE(again->interface == request.interface);
    REQUIRE(again->configuration == request.configuration);
    REQUIRE(again->role == request.role);
    REQUIRE(again->station == request.station);
}

void checkDecoded(const DecodedRequest& request, const IPCMessage& message) {
    const bool hasInterface = holds<std::string>(message, "interface");
    switch (request.command) {
        case DaemonCommand::Add:
        case DaemonCommand::Remove: {
            REQUIRE(hasInterface && request.interface && request.configuration);
            const auto sent = request.command == DaemonCommand::Add
                                  ? requests::add(*request.interface, *request.configuration)
                                  : requests::remove(*request.interface, *request.configuration);
            return checkAgain(request, sent.message);
        }
        case DaemonCommand::Role:
            REQUIRE(hasInterface && holds<std::string>(message, "role"));
            return checkAgain(request, requests::role(*request.interface, request.role).message);
        case DaemonCommand::Kick:
            REQUIRE(hasInterface && holds<ByteBuffer>(message, "MAC"));
            return checkAgain(request, requests::kick(*request.interface, request.station).message);
        case DaemonCommand::Channels:
        case DaemonCommand::Enable:
        case DaemonCommand::Disable:
        case DaemonCommand::Start:
        case DaemonCommand::Stop:
            REQUIRE(hasInterface && request.interface);
            return;
        case DaemonCommand::Configurations:
            REQUIRE(hasInterface == request.interface.has_value());
            return;
        case DaemonCommand::Subscribe:
            REQUIRE(holds<bool>(message, "notifyAP"));
            return;
        case DaemonCommand::SetLogging:
            REQUIRE(holds<std::string>(message, "WiFi") == request.controls[0].has_value());
            return;
        case DaemonCommand::Devices:
        case DaemonCommand::Interfaces:
        case DaemonCommand::Stations:
        case DaemonCommand::Logging:
            return;
    }
}

void checkAnswer(const IPCMessage& message, DaemonStatus expected, bool losesReplies) {
    Nothing backend(losesReplies);
    NoLogging logging;
    Subscribers subscribers;
    const auto dispatcher = Dispatcher::create({backend, logging, subscribers},
                                               [](const IPCMessage&, const std::string&) {});
    int answers = 0;
    dispatcher->handle(":1.5", message, [&](const DaemonAnswer& answer) {
        ++answers;
        REQUIRE(answer.kind == DaemonAnswer::Kind::Reply);
        REQUIRE(checkBusMessage(answer.reply, kLargestDaemonReply).refusal.empty());
        if (expected != DaemonStatus::Done) {
            REQUIRE(answer.reply.entries() == statusMessage(expected).entries());
        }
    });
    REQUIRE(answers == 1);
    REQUIRE(subscribers.names().size() <= 1);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzzing::ByteSource source(data, size);
    const bool losesReplies = source.flag();
    const IPCMessage message = messageFrom(source);
    const auto command = commandIn(message);
    DaemonStatus status = command ? DaemonStatus::Done : command.error();
    if (command) {
        const auto request = decoded(**command, message);
        if (request) {
            checkDecoded(*request, message);
        } else {
            status = request.error();
            REQUIRE(status == DaemonStatus::BadRequest || status == DaemonStatus::BadConfiguration);
        }
    }
    checkAnswer(message, status, losesReplies);
    return 0;
}

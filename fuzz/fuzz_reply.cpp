// Any reply and any event of the daemon: every parser follows the status, and lists hold no more
// than what arrived.
#include <algorithm>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <initializer_list>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <utility>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/error.h"
#include "halvane/base/number.h"
#include "halvane/base/property_list_value.h"
#include "halvane/daemon/logging.h"
#include "halvane/daemon/xpc_client.h"
#include "halvane/daemon/xpc_client_delegate.h"
#include "halvane/platform/bus/ipc_message.h"
#include "halvane/platform/bus/service_event.h"
#include "halvane/platform/plist/xml_property_list.h"
#include "halvane/platform/plist/xml_property_list_reader.h"

#include "fuzz/byte_source.h"
#include "fuzz/property_list_source.h"
#include "fuzz/require.h"

using namespace halvane;

namespace {

constexpr const char* kListKeys[] = {"devices", "interfaces", "channels", "configs", "clients"};
constexpr const char* kEvents[] = {"authorized", "joined", "kicked", "left", "other"};

// An array as the daemon sends it, or some other bytes.
PropertyListValue listFrom(fuzzing::ByteSource& source) {
    if (source.flag()) return ByteBuffer(source.rest());
    PropertyListArray array;
    for (std::size_t i = source.below(6); i > 0; --i) {
        array.emplace_back(fuzzing::dictionaryFrom(source, 3));
    }
    const auto xml = xmlPropertyList(array);
    return xml ? PropertyListValue(ByteBuffer::fromText(*xml)) : PropertyListValue();
}

IPCMessage messageFrom(fuzzing::ByteSource& source) {
    PropertyListDictionary entries = fuzzing::dictionaryFrom(source, 2);
    if (source.flag()) {
        entries.set("command",
                    std::string("org.halvane.halvaned.status.client.") + source.oneOf(kEvents));
        if (source.flag()) entries.set("BSDName", source.text());
        if (source.flag()) entries.set("MAC", source.buffer());
    }
    if (source.flag()) entries.set("status", fuzzing::numberFrom(source));
    for (const char* key : kListKeys) {
        if (source.flag()) entries.set(key, listFrom(source));
    }
    return IPCMessage(std::move(entries));
}

std::int32_t statusOf(const IPCMessage& message) {
    const auto* value = message.entries().find("status");
    const auto* number = value != nullptr ? value->as<Number>() : nullptr;
    if (number == nullptr || number->isReal()) return 0;
    return static_cast<std::int32_t>(number->exactInt64().value_or(0));
}

// The number of dictionaries in the list under `key`.
std::size_t countOf(const IPCMessage& message, const char* key) {
    const auto* value = message.entries().find(key);
    const auto* data = value != nullptr ? value->as<ByteBuffer>() : nullptr;
    if (data == nullptr) return 0;
    const auto bytes = data->bytes();
    const auto list =
        propertyListFromXml({reinterpret_cast<const char*>(bytes.data()), bytes.size()});
    const auto* array = list ? list->as<PropertyListArray>() : nullptr;
    if (array == nullptr) return 0;
    return static_cast<std::size_t>(std::ranges::count_if(*array, [](const auto& item) {
        return item.template as<PropertyListDictionary>() != nullptr;
    }));
}

template <typename Parse>
void checkList(const IPCMessage& message, const char* key, Parse parse) {
    std::optional<Error> error;
    const auto records = parse(ServiceReply(message), &error);
    const std::int32_t status = statusOf(message);
    REQUIRE(error.has_value() == (status != 0));
    REQUIRE(!error || error->code == status);
    REQUIRE(records.size() <= (status == 0 ? countOf(message, key) : 0));
}

void checkReplies(const IPCMessage& message) {
    using Client = HalvaneXPCClient;
    checkList(message, "devices", Client::queryDeviceListResponse_error);
    checkList(message, "interfaces", Client::queryInterfaceListResponse_error);
    checkList(message, "channels", Client::queryChannelListResponse_error);
    checkList(message, "configs", Client::queryBSSConfigListResponse_error);
    checkList(message, "clients", Client::queryClientListResponse_error);
    const bool isSuccess = statusOf(message) == 0;
    const ServiceReply reply = message;
    for (const auto parse : {Client::bssConfigAddResponse, Client::bssConfigRemoveResponse,
                             Client::enableInterfaceResponse, Client::disableInterfaceResponse,
                             Client::changeInterfaceRoleResponse, Client::bssStartResponse,
                             Client::bssStopResponse, Client::registerNotificationsResponse}) {
        REQUIRE(parse(reply) == isSuccess);
    }
    std::optional<Error> error;
    REQUIRE(Client::setLoggingResponse_error(reply, &error) == isSuccess);
    REQUIRE(error.has_value() == !isSuccess);
    const auto* params = message.entries().find("params");
    const bool isText = params != nullptr && params->as<std::string>() != nullptr;
    REQUIRE(Client::queryLoggingResponse(reply).has_value() == isText);
}

HalvaneXPCClient& clientWithoutBus() {
    static const auto client = HalvaneXPCClient::init();
    return *client;
}

void checkEvents(const IPCMessage& message) {
    std::size_t calls = 0;
    const auto count = [&calls](const ByteBuffer&, const std::string&) { ++calls; };
    HalvaneXPCClient& client = clientWithoutBus();
    client.setDelegate(std::make_shared<HalvaneXPCClientDelegate>(
        HalvaneXPCClientDelegate{count, count, count, count}));
    client.handleXPCEvent(message);
    client.handleXPCEvent(ServiceAppeared());
    client.setDelegate(nullptr);
    REQUIRE(calls <= 1);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    REQUIRE(&HalvaneLogging::sharedSystem() == gHalvaneLogging.load());
    fuzzing::ByteSource source(data, size);
    const IPCMessage message = messageFrom(source);
    checkReplies(message);
    checkEvents(message);
    return 0;
}

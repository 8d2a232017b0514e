// What replies come to.
#include <cstdint>
#include <span>
#include <string_view>
#include <utility>
#include <variant>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/property_list_value.h"
#include "halvane/base/skeleton_internal.h"
#include "halvane/base/status.h"
#include "halvane/daemon/xpc_client.h"
#include "halvane/daemon/xpc_message_internal.h"
#include "halvane/model/daemon_service.h"
#include "halvane/platform/plist/xml_property_list_reader.h"

namespace halvane {

namespace {

// The status that a reply holds; that of a failed reply for an error.
std::int32_t statusOf(const ServiceReply& reply) {
    const auto* message = std::get_if<IPCMessage>(&reply);
    return message != nullptr ? xpcStatus(*message) : kStatusConversionFailed;
}

void setError(std::optional<Error>* error, std::int32_t status) {
    if (error != nullptr) *error = daemonError(status);
}

std::string_view textOf(std::span<const std::uint8_t> bytes) {
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

// The records of the property list that is the data of `key`.
template <typename Record>
std::vector<Record> recordsIn(const IPCMessage& message, const char* key) {
    const auto* data = xpcValue<ByteBuffer>(message, key);
    auto list = data != nullptr ? propertyListFromXml(textOf(data->bytes())) : std::nullopt;
    auto* skeletons = list ? list->as<PropertyListArray>() : nullptr;
    if (skeletons == nullptr) return {};
    return skeleton::recordsOf<Record>(std::move(*skeletons));
}

template <typename Record>
std::vector<Record> listOf(const ServiceReply& reply, const char* key,
                           std::optional<Error>* error) {
    const std::int32_t status = statusOf(reply);
    if (status == 0) return recordsIn<Record>(std::get<IPCMessage>(reply), key);
    setError(error, status);
    return {};
}

}  // namespace

// X(parser, class, key)
#define HALVANE_XPC_LIST_PARSERS(X)                                     \
    X(queryDeviceListResponse_error, HalvaneDevice, "devices")          \
    X(queryInterfaceListResponse_error, HalvaneInterface, "interfaces") \
    X(queryChannelListResponse_error, HalvaneChannel, "channels")       \
    X(queryBSSConfigListResponse_error, HalvaneBSSConfig, "configs")    \
    X(queryClientListResponse_error, HalvaneClient, "clients")

#define HALVANE_XPC_LIST_PARSER(parser, Record, key)                            \
    std::vector<Record> HalvaneXPCClient::parser(const ServiceReply& reply,     \
                                                 std::optional<Error>* error) { \
        return listOf<Record>(reply, key, error);                               \
    }
HALVANE_XPC_LIST_PARSERS(HALVANE_XPC_LIST_PARSER)
#undef HALVANE_XPC_LIST_PARSER
#undef HALVANE_XPC_LIST_PARSERS

// X(parser)
#define HALVANE_XPC_STATUS_PARSERS(X) \
    X(bssConfigAddResponse)           \
    X(bssConfigRemoveResponse)        \
    X(enableInterfaceResponse)        \
    X(disableInterfaceResponse)       \
    X(changeInterfaceRoleResponse)    \
    X(bssStartResponse)               \
    X(bssStopResponse)                \
    X(registerNotificationsResponse)

#define HALVANE_XPC_STATUS_PARSER(parser)                      \
    bool HalvaneXPCClient::parser(const ServiceReply& reply) { \
        return statusOf(reply) == 0;                           \
    }
HALVANE_XPC_STATUS_PARSERS(HALVANE_XPC_STATUS_PARSER)
#undef HALVANE_XPC_STATUS_PARSER
#undef HALVANE_XPC_STATUS_PARSERS

bool HalvaneXPCClient::setLoggingResponse_error(const ServiceReply& reply,
                                                std::optional<Error>* error) {
    const auto* message = std::get_if<IPCMessage>(&reply);
    if (message == nullptr) return false;
    const std::int32_t status = xpcStatus(*message);
    if (status != 0) setError(error, status);
    return status == 0;
}

std::optional<std::string> HalvaneXPCClient::queryLoggingResponse(const ServiceReply& reply) {
    const auto* message = std::get_if<IPCMessage>(&reply);
    const auto* params = message != nullptr ? xpcValue<std::string>(*message, "params") : nullptr;
    return params != nullptr ? std::optional(*params) : std::nullopt;
}

}  // namespace halvane

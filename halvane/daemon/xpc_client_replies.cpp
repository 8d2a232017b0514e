// How replies become results.
#include <cstdint>
#include <string>

#include "halvane/base/status.h"
#include "halvane/daemon/message_internal.h"
#include "halvane/daemon/requests_internal.h"
#include "halvane/daemon/xpc_client.h"
#include "halvane/model/daemon_protocol.h"
#include "halvane/model/daemon_service.h"
#include "halvane/model/daemon_value_internal.h"

namespace halvane {

namespace {

// Returns the status of a reply. An error counts as a failed reply.
std::int32_t statusOf(const ServiceReply& reply) {
    return reply ? daemonStatus(*reply) : kStatusConversionFailed;
}

void setError(std::optional<Error>* error, std::int32_t status) {
    if (error != nullptr) *error = daemonError(status);
}

template <typename Record>
std::vector<Record> listOf(const ServiceReply& reply, std::optional<Error>* error) {
    const std::int32_t status = statusOf(reply);
    if (status == 0) return recordsIn<Record>(*reply).value_or(std::vector<Record>());
    setError(error, status);
    return {};
}

}  // namespace

std::vector<HalvaneDevice> HalvaneXPCClient::queryDeviceListResponse_error(
    const ServiceReply& reply, std::optional<Error>* error) {
    return listOf<HalvaneDevice>(reply, error);
}

std::vector<HalvaneInterface> HalvaneXPCClient::queryInterfaceListResponse_error(
    const ServiceReply& reply, std::optional<Error>* error) {
    return listOf<HalvaneInterface>(reply, error);
}

std::vector<HalvaneChannel> HalvaneXPCClient::queryChannelListResponse_error(
    const ServiceReply& reply, std::optional<Error>* error) {
    return listOf<HalvaneChannel>(reply, error);
}

std::vector<HalvaneBSSConfig> HalvaneXPCClient::queryBSSConfigListResponse_error(
    const ServiceReply& reply, std::optional<Error>* error) {
    return listOf<HalvaneBSSConfig>(reply, error);
}

std::vector<HalvaneClient> HalvaneXPCClient::queryClientListResponse_error(
    const ServiceReply& reply, std::optional<Error>* error) {
    return listOf<HalvaneClient>(reply, error);
}

bool HalvaneXPCClient::bssConfigAddResponse(const ServiceReply& reply) {
    return statusOf(reply) == 0;
}

bool HalvaneXPCClient::bssConfigRemoveResponse(const ServiceReply& reply) {
    return statusOf(reply) == 0;
}

bool HalvaneXPCClient::enableInterfaceResponse(const ServiceReply& reply) {
    return statusOf(reply) == 0;
}

bool HalvaneXPCClient::disableInterfaceResponse(const ServiceReply& reply) {
    return statusOf(reply) == 0;
}

bool HalvaneXPCClient::changeInterfaceRoleResponse(const ServiceReply& reply) {
    return statusOf(reply) == 0;
}

bool HalvaneXPCClient::bssStartResponse(const ServiceReply& reply) {
    return statusOf(reply) == 0;
}

bool HalvaneXPCClient::bssStopResponse(const ServiceReply& reply) {
    return statusOf(reply) == 0;
}

bool HalvaneXPCClient::registerNotificationsResponse(const ServiceReply& reply) {
    return statusOf(reply) == 0;
}

bool HalvaneXPCClient::setLoggingResponse_error(const ServiceReply& reply,
                                                std::optional<Error>* error) {
    if (!reply) return false;
    const std::int32_t status = daemonStatus(*reply);
    if (status != 0) setError(error, status);
    return status == 0;
}

std::optional<std::string> HalvaneXPCClient::queryLoggingResponse(const ServiceReply& reply) {
    const auto* params =
        reply ? daemonValue<std::string>(*reply, protocol::key::kLogging) : nullptr;
    return params != nullptr ? std::optional(*params) : std::nullopt;
}

}  // namespace halvane

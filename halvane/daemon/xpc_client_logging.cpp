// The requests that set and return the daemon's logging.
#include <utility>

#include "halvane/daemon/daemon_log_controls.h"
#include "halvane/daemon/requests_internal.h"
#include "halvane/daemon/xpc_client.h"
#include "halvane/daemon/xpc_request_internal.h"

namespace halvane {

bool HalvaneXPCClient::setLogging_inBPF_inEAPOL_inIE_inIO80211_inJoin_inScan_inWPS_inXPC_error(
    const std::optional<std::string>& inWiFi, const std::optional<std::string>& inBPF,
    const std::optional<std::string>& inEAPOL, const std::optional<std::string>& inIE,
    const std::optional<std::string>& inIO80211, const std::optional<std::string>& inJoin,
    const std::optional<std::string>& inScan, const std::optional<std::string>& inWPS,
    const std::optional<std::string>& inXPC, std::optional<Error>* error) {
    std::optional<Error> failure;
    const DaemonLogControls controls = {inWiFi, inBPF,  inEAPOL, inIE, inIO80211,
                                        inJoin, inScan, inWPS,   inXPC};
    const bool isSet = xpcQuery(*link_, requests::setLogging(controls).message,
                                setLoggingResponse_error, &failure);
    if (failure && error != nullptr) *error = std::move(failure);
    return isSet;
}

std::optional<std::string> HalvaneXPCClient::queryLogging(std::optional<Error>* /*error*/) {
    return link_->request(requests::logging().message, queryLoggingResponse);
}

}  // namespace halvane

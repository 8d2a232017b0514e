// The requests that set and tell the daemon's logging.
#include <utility>

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
    // The keys are the names of the log categories.
    const bool isSet = xpcQuery(*link_,
                                xpcRequest("logging", {{"WiFi", inWiFi},
                                                       {"WiFiBPF", inBPF},
                                                       {"WiFiEAPOL", inEAPOL},
                                                       {"WiFiIE", inIE},
                                                       {"WiFiIO80211", inIO80211},
                                                       {"WiFiJoin", inJoin},
                                                       {"WiFiScan", inScan},
                                                       {"WiFiWPS", inWPS},
                                                       {"WiFiXPC", inXPC}}),
                                setLoggingResponse_error, &failure);
    if (failure && error != nullptr) *error = std::move(failure);
    return isSet;
}

std::optional<std::string> HalvaneXPCClient::queryLogging(std::optional<Error>* /*error*/) {
    return link_->request(xpcRequest("queryLogging"), queryLoggingResponse);
}

}  // namespace halvane

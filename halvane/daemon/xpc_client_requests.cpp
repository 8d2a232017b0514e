// The requests: what each one sends, and which function reads its reply.
#include "halvane/daemon/requests_internal.h"
#include "halvane/daemon/xpc_client.h"
#include "halvane/daemon/xpc_request_internal.h"

namespace halvane {

std::vector<HalvaneDevice> HalvaneXPCClient::queryDeviceList(std::optional<Error>* error) {
    return xpcQuery(*link_, requests::devices().message, queryDeviceListResponse_error, error);
}

std::vector<HalvaneInterface> HalvaneXPCClient::queryInterfaceList(std::optional<Error>* error) {
    return xpcQuery(*link_, requests::interfaces().message, queryInterfaceListResponse_error,
                    error);
}

std::vector<HalvaneChannel> HalvaneXPCClient::queryChannelList_error(
    const std::string& interfaceName, std::optional<Error>* error) {
    return xpcQuery(*link_, requests::channels(interfaceName).message,
                    queryChannelListResponse_error, error);
}

std::vector<HalvaneBSSConfig> HalvaneXPCClient::queryBSSConfigList_error(
    const std::optional<std::string>& interfaceName, std::optional<Error>* error) {
    return xpcQuery(*link_, requests::configurations(interfaceName).message,
                    queryBSSConfigListResponse_error, error);
}

std::vector<HalvaneClient> HalvaneXPCClient::queryClientList_error(
    const std::optional<std::string>& /*interfaceName*/, std::optional<Error>* error) {
    return xpcQuery(*link_, requests::stations().message, queryClientListResponse_error, error);
}

bool HalvaneXPCClient::bssConfigAdd_forInterface_error(const HalvaneBSSConfig& config,
                                                       const std::string& interfaceName,
                                                       std::optional<Error>* /*error*/) {
    return xpcAct(*link_, requests::add(interfaceName, config).message, bssConfigAddResponse);
}

bool HalvaneXPCClient::bssConfigRemove_forInterface_error(const HalvaneBSSConfig& config,
                                                          const std::string& interfaceName,
                                                          std::optional<Error>* /*error*/) {
    return xpcAct(*link_, requests::remove(interfaceName, config).message, bssConfigRemoveResponse);
}

bool HalvaneXPCClient::enableInterface_error(const std::string& interfaceName,
                                             std::optional<Error>* /*error*/) {
    return xpcAct(*link_, requests::enable(interfaceName).message, enableInterfaceResponse);
}

bool HalvaneXPCClient::disableInterface_error(const std::string& interfaceName,
                                              std::optional<Error>* /*error*/) {
    return xpcAct(*link_, requests::disable(interfaceName).message, disableInterfaceResponse);
}

bool HalvaneXPCClient::changeInterfaceRole_role_error(const std::string& interfaceName,
                                                      const std::string& role,
                                                      std::optional<Error>* /*error*/) {
    return xpcAct(*link_, requests::role(interfaceName, role).message, changeInterfaceRoleResponse);
}

bool HalvaneXPCClient::bssStart_error(const std::string& interfaceName,
                                      std::optional<Error>* /*error*/) {
    return xpcAct(*link_, requests::start(interfaceName).message, bssStartResponse);
}

bool HalvaneXPCClient::bssStop_error(const std::string& interfaceName,
                                     std::optional<Error>* /*error*/) {
    return xpcAct(*link_, requests::stop(interfaceName).message, bssStopResponse);
}

}  // namespace halvane

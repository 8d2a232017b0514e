// The requests: what each sends, and who reads its reply.
#include "halvane/base/byte_buffer.h"
#include "halvane/base/property_list_value.h"
#include "halvane/daemon/xpc_client.h"
#include "halvane/daemon/xpc_request_internal.h"
#include "halvane/platform/plist/xml_property_list.h"

namespace halvane {

namespace {

constexpr const char* kInterface = "interface";
constexpr const char* kBSSConfig = "bssconfig";
constexpr const char* kRole = "role";  // a command, too

// The configuration as data. One that has no XML form is a null value, which is never sent.
PropertyListValue dataOf(const HalvaneBSSConfig& config) {
    const auto xml = xmlPropertyList(config.skeletonRepresentation());
    return xml ? PropertyListValue(ByteBuffer::fromText(*xml)) : PropertyListValue();
}

}  // namespace

std::vector<HalvaneDevice> HalvaneXPCClient::queryDeviceList(std::optional<Error>* error) {
    return xpcQuery(*link_, xpcRequest("queryDeviceList"), queryDeviceListResponse_error, error);
}

std::vector<HalvaneInterface> HalvaneXPCClient::queryInterfaceList(std::optional<Error>* error) {
    return xpcQuery(*link_, xpcRequest("queryInterfaceList"), queryInterfaceListResponse_error,
                    error);
}

std::vector<HalvaneChannel> HalvaneXPCClient::queryChannelList_error(
    const std::string& interfaceName, std::optional<Error>* error) {
    return xpcQuery(*link_, xpcRequest("queryChannelList", {{kInterface, interfaceName}}),
                    queryChannelListResponse_error, error);
}

std::vector<HalvaneBSSConfig> HalvaneXPCClient::queryBSSConfigList_error(
    const std::optional<std::string>& interfaceName, std::optional<Error>* error) {
    return xpcQuery(*link_, xpcRequest("queryBSSConfigList", {{kInterface, interfaceName}}),
                    queryBSSConfigListResponse_error, error);
}

std::vector<HalvaneClient> HalvaneXPCClient::queryClientList_error(
    const std::optional<std::string>& /*interfaceName*/, std::optional<Error>* error) {
    return xpcQuery(*link_, xpcRequest("clientList"), queryClientListResponse_error, error);
}

bool HalvaneXPCClient::bssConfigAdd_forInterface_error(const HalvaneBSSConfig& config,
                                                       const std::string& interfaceName,
                                                       std::optional<Error>* /*error*/) {
    xpcAct(*link_,
           xpcRequest("configAdd", {{kInterface, interfaceName}, {kBSSConfig, dataOf(config)}}),
           bssConfigAddResponse);
    return true;
}

bool HalvaneXPCClient::bssConfigRemove_forInterface_error(const HalvaneBSSConfig& config,
                                                          const std::string& interfaceName,
                                                          std::optional<Error>* /*error*/) {
    xpcAct(*link_,
           xpcRequest("configRemove", {{kInterface, interfaceName}, {kBSSConfig, dataOf(config)}}),
           bssConfigRemoveResponse);
    return true;
}

bool HalvaneXPCClient::changeInterfaceRole_role_error(const std::string& interfaceName,
                                                      const std::string& role,
                                                      std::optional<Error>* /*error*/) {
    xpcAct(*link_, xpcRequest(kRole, {{kInterface, interfaceName}, {kRole, role}}),
           changeInterfaceRoleResponse);
    return true;
}

// X(operation, command, parser): the actions that an interface's name is all of.
#define HALVANE_XPC_INTERFACE_ACTIONS(X)                           \
    X(enableInterface_error, "enable", enableInterfaceResponse)    \
    X(disableInterface_error, "disable", disableInterfaceResponse) \
    X(bssStart_error, "bssStart", bssStartResponse)                \
    X(bssStop_error, "bssStop", bssStopResponse)

#define HALVANE_XPC_INTERFACE_ACTION(operation, command, parser)                    \
    bool HalvaneXPCClient::operation(const std::string& interfaceName,              \
                                     std::optional<Error>* /*error*/) {             \
        xpcAct(*link_, xpcRequest(command, {{kInterface, interfaceName}}), parser); \
        return true;                                                                \
    }
HALVANE_XPC_INTERFACE_ACTIONS(HALVANE_XPC_INTERFACE_ACTION)
#undef HALVANE_XPC_INTERFACE_ACTION
#undef HALVANE_XPC_INTERFACE_ACTIONS

}  // namespace halvane

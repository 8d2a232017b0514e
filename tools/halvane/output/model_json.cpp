#include "tools/halvane/output/model_json.h"

#include <optional>
#include <vector>

#include "tools/halvane/output/record_json.h"
#include "tools/halvane/output/regulatory_json.h"

namespace halvane::tool {

namespace {

JSON addressIfAny(const std::optional<ByteBuffer>& address) {
    return address ? addressOf(*address) : JSON();
}

JSON listOf(const std::vector<HalvaneChannel>& channels) {
    JSON array = JSON::array();
    for (const HalvaneChannel& channel : channels) array.push_back(jsonOf(channel));
    return array;
}

}  // namespace

JSON jsonOf(const HalvaneDevice& device) {
    JSON object = JSON::object();
    putMember(object, "MACAddress", addressIfAny(device.MACAddress()));
    putMember(object, "deviceIndex", device.deviceIndex());
    putMember(object, "numRadioChains", device.numRadioChains());
    return object;
}

JSON jsonOf(const HalvaneInterface& interface) {
    JSON object = JSON::object();
    putMember(object, "ifMAC", addressIfAny(interface.ifMAC()));
    putMember(object, "ifName", interface.ifName());
    putMember(object, "ifRole", interface.ifRole());
    putMember(object, "ifSubsystem", interface.ifSubsystem());
    if (interface.wifiDevice()) putMember(object, "wifiDevice", jsonOf(*interface.wifiDevice()));
    putMember(object, "availableChannels", listOf(interface.availableChannels()));
    return object;
}

JSON jsonOf(const HalvaneClient& client) {
    JSON object = JSON::object();
    appendRecord(object, client);
    putMember(object, "isAssociated", client.isAssociated());
    putMember(object, "createTime", client.createTime());
    putMember(object, "joinTime", client.joinTime());
    putMember(object, "leftTime", client.leftTime());
    putMember(object, "deauthReason", client.deauthReason());
    return object;
}

}  // namespace halvane::tool

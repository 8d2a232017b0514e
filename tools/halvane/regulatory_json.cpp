#include "tools/halvane/regulatory_json.h"

namespace halvane::tool {

JSON jsonOf(const HalvaneChannel& channel) {
    JSON object = JSON::object();
    putMember(object, "channelNumber", channel.channelNumber());
    putMember(object, "channelFrequency", channel.channelFrequency());
    putMember(object, "isRadarProne", channel.isRadarProne());
    putMember(object, "isDisabled", channel.isDisabled());
    putMember(object, "supports40MHz", channel.supports40MHz());
    putMember(object, "supports80MHz", channel.supports80MHz());
    return object;
}

}  // namespace halvane::tool

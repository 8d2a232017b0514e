#include "tools/halvane/output/regulatory_json.h"

#include <vector>

namespace halvane::tool {

namespace {

template <typename Record>
JSON arrayOf(const std::vector<Record>& records) {
    JSON array = JSON::array();
    for (const Record& record : records) array.push_back(jsonOf(record));
    return array;
}

}  // namespace

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

JSON jsonOf(const HalvaneCountry& country) {
    JSON object = JSON::object();
    putMember(object, "friendlyName", country.friendlyName());
    putMember(object, "isoName", country.isoName());
    putMember(object, "isoCode", country.isoCode());
    putMember(object, "channels", arrayOf(country.channels()));
    return object;
}

JSON jsonOf(const HalvaneSKU& sku) {
    JSON object = JSON::object();
    putMember(object, "friendlyName", sku.friendlyName());
    putMember(object, "shortName", sku.shortName());
    putMember(object, "countries", arrayOf(sku.countries()));
    return object;
}

}  // namespace halvane::tool

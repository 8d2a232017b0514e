// Property-list values that the bytes of an input choose, with the keys of skeletons and messages.
#ifndef FUZZ_PROPERTY_LIST_SOURCE_H
#define FUZZ_PROPERTY_LIST_SOURCE_H

#include <bit>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <limits>
#include <string>
#include <utility>

#include "halvane/base/date.h"
#include "halvane/base/number.h"
#include "halvane/base/property_list_value.h"

#include "fuzz/byte_source.h"

namespace halvane::fuzzing {

inline constexpr const char* kKnownKeys[] = {"MAC",
                                             "RawIEBuffer",
                                             "IEs",
                                             "LastUpdated",
                                             "FirstUpdated",
                                             "Capabilities",
                                             "Channel",
                                             "Noise",
                                             "RSSI",
                                             "BeaconInterval",
                                             "isAssociated",
                                             "createTime",
                                             "joinTime",
                                             "leftTime",
                                             "deauthReason",
                                             "Index",
                                             "NumberSpatialStreams",
                                             "InterfaceName",
                                             "Role",
                                             "Subsystem",
                                             "Device",
                                             "Channels",
                                             "ChannelNumber",
                                             "ChannelFrequency",
                                             "isRadarProne",
                                             "isDisabled",
                                             "supports40MHz",
                                             "supports80MHz",
                                             "FriendlyName",
                                             "ISOName",
                                             "ISOCode",
                                             "ShortName",
                                             "Countries",
                                             "SSID",
                                             "Passphrase",
                                             "KeyMaterial",
                                             "PreferredOrder",
                                             "channel",
                                             "channelWidth",
                                             "eapolRetryCount",
                                             "eapolRetryInterval",
                                             "eapolGTKRotation",
                                             "country",
                                             "AuthenticationOpen",
                                             "SecurityWPA",
                                             "SecurityWPA2",
                                             "SecurityWPS",
                                             "SecurityWEP",
                                             "KeyManagementPSK",
                                             "KeyManagement8021X",
                                             "KeyManagementSAE",
                                             "ManagementFrameProtection",
                                             "PHYModes80211n",
                                             "wpsDeviceName",
                                             "wpsPIN",
                                             "wpsSerialNumber",
                                             "status",
                                             "devices",
                                             "interfaces",
                                             "channels",
                                             "configs",
                                             "clients",
                                             "params",
                                             "command",
                                             "BSDName",
                                             "HiddenSSID",
                                             "StationIsolation"};

inline std::string keyFrom(ByteSource& source) {
    const std::size_t choice = source.byte();
    return choice < std::size(kKnownKeys) ? kKnownKeys[choice] : source.text(12);
}

inline Number numberFrom(ByteSource& source) {
    static constexpr std::int64_t kLimits[] = {0,         1,         -1,       INT32_MAX,
                                               INT32_MIN, INT64_MAX, INT64_MIN};
    switch (source.below(5)) {
        case 0:
            return source.oneOf(kLimits);
        case 1:
            return source.integer<std::int8_t>();
        case 2:
            return source.integer<std::uint64_t>();
        case 3:
            return std::bit_cast<double>(source.integer<std::uint64_t>());
        default:
            return source.integer<std::int32_t>() / 10.0;
    }
}

inline PropertyListDictionary dictionaryFrom(ByteSource& source, int depth);

// Nested at most `depth` levels deep.
inline PropertyListValue valueFrom(ByteSource& source, int depth) {
    switch (source.below(depth > 0 ? 9 : 6)) {
        case 0:
            return source.flag();
        case 1:
            return numberFrom(source);
        case 2:
            return source.text();
        case 3:
            return source.buffer();
        case 4:
            return Date::fromUnixTime(source.integer<std::int64_t>());
        case 5:
            return PropertyListValue();
        case 6: {
            PropertyListArray array;
            for (std::size_t i = source.below(8); i > 0; --i) {
                array.push_back(valueFrom(source, depth - 1));
            }
            return array;
        }
        default:
            return dictionaryFrom(source, depth - 1);
    }
}

inline PropertyListDictionary dictionaryFrom(ByteSource& source, int depth) {
    PropertyListDictionary dictionary;
    for (std::size_t i = source.below(24); i > 0; --i) {
        std::string key = keyFrom(source);
        dictionary.set(std::move(key), valueFrom(source, depth));
    }
    return dictionary;
}

}  // namespace halvane::fuzzing

#endif

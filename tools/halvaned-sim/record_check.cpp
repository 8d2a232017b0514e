#include "tools/halvaned-sim/record_check.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <span>
#include <string>
#include <string_view>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/mac_address.h"
#include "halvane/base/number.h"
#include "halvane/model/bss_config.h"
#include "halvane/model/bss_config_table_internal.h"
#include "halvane/model/management_frame_protection.h"

#include "tools/halvaned-sim/world_file_error.h"

namespace halvane::sim {

namespace {

struct KeyCheck {
    std::string_view key;
    RecordCheck check;
    bool isRequired = false;
};

Checked checkRecord(const PropertyListValue& value, std::span<const KeyCheck> keys,
                    const Place& place) {
    const auto* const record = value.as<PropertyListDictionary>();
    if (record == nullptr) return refuse(place, "is not a dictionary");
    for (const auto& [key, held] : *record) {
        const auto known = std::ranges::find(keys, key, &KeyCheck::key);
        const Place at = place.at(key);
        if (known == keys.end()) return refuse(at, "there is no such key");
        if (auto checked = known->check(held, at); !checked) return checked;
    }
    for (const KeyCheck& key : keys) {
        if (key.isRequired && record->find(key.key) == nullptr) {
            return refuse(place.at(key.key), "is missing");
        }
    }
    return {};
}

template <const auto& keys>
Checked checkKeys(const PropertyListValue& value, const Place& place) {
    return checkRecord(value, keys, place);
}

template <RecordCheck check>
Checked checkEach(const PropertyListValue& value, const Place& place) {
    const auto* const array = value.as<PropertyListArray>();
    if (array == nullptr) return refuse(place, "is not an array");
    for (std::size_t i = 0; i < array->size(); ++i) {
        if (auto checked = check((*array)[i], place.element(i)); !checked) return checked;
    }
    return {};
}

bool isInteger(const PropertyListValue& value) {
    const auto* const number = value.as<Number>();
    return number != nullptr ? !number->isReal() : value.as<bool>() != nullptr;
}

// A value that the record holds as an Integer.
template <typename Integer>
Checked number(const PropertyListValue& value, const Place& place) {
    using Limits = std::numeric_limits<Integer>;
    if (!isInteger(value)) return refuse(place, "is not an integer");
    const auto* const number = value.as<Number>();
    if (number == nullptr) return {};  // 0 or 1
    if (*number < Number(Limits::min()) || *number > Number(Limits::max())) {
        return refuse(place, "is not from " + std::to_string(Limits::min()) + " to " +
                                 std::to_string(Limits::max()));
    }
    return {};
}

constexpr RecordCheck signed64 = number<std::int64_t>;
constexpr RecordCheck unsigned64 = number<std::uint64_t>;
constexpr RecordCheck unsigned16 = number<std::uint16_t>;

Checked boolean(const PropertyListValue& value, const Place& place) {
    if (!isInteger(value)) return refuse(place, "is not a boolean");
    return {};
}

Checked text(const PropertyListValue& value, const Place& place) {
    if (value.as<std::string>() == nullptr) return refuse(place, "is not a string");
    return {};
}

Checked name(const PropertyListValue& value, const Place& place) {
    if (auto checked = text(value, place); !checked) return checked;
    if (value.as<std::string>()->empty()) return refuse(place, "is empty");
    return {};
}

Checked data(const PropertyListValue& value, const Place& place) {
    if (value.as<ByteBuffer>() == nullptr) return refuse(place, "is not data");
    return {};
}

Checked address(const PropertyListValue& value, const Place& place) {
    if (auto checked = data(value, place); !checked) return checked;
    const std::size_t size = value.as<ByteBuffer>()->size();
    if (size != 0 && size != MacAddress::kSize) return refuse(place, "does not have 6 bytes");
    return {};
}

constexpr KeyCheck kDeviceKeys[] = {
    {"MAC", address},
    {"Index", unsigned64},
    {"NumberSpatialStreams", unsigned64},
};

constexpr KeyCheck kChannelKeys[] = {
    {"ChannelNumber", signed64}, {"ChannelFrequency", signed64}, {"isRadarProne", boolean},
    {"isDisabled", boolean},     {"supports40MHz", boolean},     {"supports80MHz", boolean},
};

constexpr KeyCheck kInterfaceKeys[] = {
    {"MAC", address},
    {"InterfaceName", name, true},
    {"Role", name, true},
    {"Subsystem", text, true},
    {"Device", checkKeys<kDeviceKeys>},
    {"Channels", checkEach<checkKeys<kChannelKeys>>},
};

constexpr KeyCheck kClientKeys[] = {
    {"MAC", address},
    {"RawIEBuffer", data},
    {"IEs", checkEach<data>},
    {"LastUpdated", unsigned64},
    {"FirstUpdated", unsigned64},
    {"Capabilities", unsigned16},
    {"Channel", signed64},
    {"Noise", signed64},
    {"RSSI", signed64},
    {"BeaconInterval", signed64},
    {"isAssociated", boolean},
    {"createTime", unsigned64},
    {"joinTime", unsigned64},
    {"leftTime", unsigned64},
    {"deauthReason", unsigned64},
};

template <typename Value>
constexpr RecordCheck kCheckOf = nullptr;
template <>
constexpr RecordCheck kCheckOf<ByteBuffer> = data;
template <>
constexpr RecordCheck kCheckOf<std::string> = text;
template <>
constexpr RecordCheck kCheckOf<bool> = boolean;
template <>
constexpr RecordCheck kCheckOf<HalvaneManagementFrameProtection> = signed64;

#define HALVANE_SIM_GIVEN(type, getter, key) {key, kCheckOf<type>},
#define HALVANE_SIM_NUMBER(getter, setter, key, value) {key, signed64},
#define HALVANE_SIM_FLAG(getter, setter, key, value) {key, boolean},
#define HALVANE_SIM_NAME(getter, setter, key) {key, text},
constexpr KeyCheck kConfigKeys[] = {HALVANE_BSS_CONFIG_FIELDS(HALVANE_SIM_GIVEN, HALVANE_SIM_NUMBER,
                                                              HALVANE_SIM_FLAG, HALVANE_SIM_NAME)};
#undef HALVANE_SIM_GIVEN
#undef HALVANE_SIM_NUMBER
#undef HALVANE_SIM_FLAG
#undef HALVANE_SIM_NAME

}  // namespace

Checked checkDevice(const PropertyListValue& value, const Place& place) {
    return checkRecord(value, kDeviceKeys, place);
}

Checked checkInterface(const PropertyListValue& value, const Place& place) {
    return checkRecord(value, kInterfaceKeys, place);
}

Checked checkConfig(const PropertyListValue& value, const Place& place) {
    return checkRecord(value, kConfigKeys, place);
}

Checked checkClient(const PropertyListValue& value, const Place& place) {
    return checkRecord(value, kClientKeys, place);
}

}  // namespace halvane::sim

// The properties of channels of all widths, and of operating classes.
//
// Keys are stable, because programs read them. Frequencies are in MHz.
#ifndef TOOLS_HALVANE_OUTPUT_CHANNEL_PROPERTIES_H
#define TOOLS_HALVANE_OUTPUT_CHANNEL_PROPERTIES_H

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

#include "halvane/air/channel.h"
#include "halvane/air/channel_plan.h"
#include "halvane/air/operating_class.h"
#include "halvane/base/number.h"

#include "tools/halvane/output/property_table.h"

namespace halvane::tool {

// --- Readers ---

// Whole MHz, or half ones.
inline Number megahertzIn(std::uint32_t kilohertz) {
    if (kilohertz % 1000 == 0) return Number(kilohertz / 1000);
    return Number(kilohertz / 1000.0);
}

// The numbers of the channels of 20 MHz that make the channel; absent for a narrower one.
inline std::optional<std::vector<int>> partsOf(const air::PlannedChannel& channel) {
    const auto wide = channel.wide();
    if (!wide) return std::nullopt;
    std::vector<int> numbers;
    numbers.reserve(static_cast<std::size_t>(wide->subchannelCount()));
    for (int i = 0; i < wide->subchannelCount(); ++i) {
        numbers.push_back(wide->subchannel(i).number);
    }
    return numbers;
}

inline air::WideChannels widerOf(const air::PlannedChannel& channel) {
    const auto wide = channel.wide();
    return wide ? air::widerChannelsOf(*wide) : air::WideChannels();
}

// A channel of an operating class, as the class numbers it.
struct ListedChannel {
    std::uint8_t number;
    std::uint32_t frequency;  // kHz
};

inline std::vector<ListedChannel> channelsIn(const air::OperatingClass& row) {
    std::vector<ListedChannel> channels;
    channels.reserve(row.channels.size());
    for (const std::uint8_t number : row.channels) {
        channels.push_back({number, row.frequency(number).value_or(0)});
    }
    return channels;
}

// --- Tables ---

template <>
inline constexpr std::string_view kTableName<air::WideChannel> = "widerChannel";
template <>
inline constexpr auto kProperties<air::WideChannel> = std::tuple{
    Property{"channelNumber",
             [](const air::WideChannel& channel) { return int{channel.center.number}; }},
    Property{
        "channelFrequency",
        [](const air::WideChannel& channel) { return air::centerFrequencyOf(channel.center); }},
    Property{"width", [](const air::WideChannel& channel) { return megahertzOf(channel.width); }},
};

template <>
inline constexpr std::string_view kTableName<air::PlannedChannel> = "plannedChannel";
template <>
inline constexpr auto kProperties<air::PlannedChannel> = std::tuple{
    Property{"band",
             [](const air::PlannedChannel& channel) {
                 return std::string(air::bandName(channel.band));
             }},
    Property{"channelNumber", [](const air::PlannedChannel& channel) { return int{channel.number}; }},
    Property{"channelFrequency",
             [](const air::PlannedChannel& channel) { return megahertzIn(channel.frequency); }},
    Property{"width", [](const air::PlannedChannel& channel) { return int{channel.width}; }},
    Property{"parts", [](const air::PlannedChannel& channel) { return partsOf(channel); }},
    Property{"widerChannels",
             [](const air::PlannedChannel& channel) {
                 const air::WideChannels wider = widerOf(channel);
                 return std::vector<air::WideChannel>(wider.begin(), wider.end());
             }},
    Property{"operatingClasses",
             [](const air::PlannedChannel& channel) {
                 const auto classes = air::usableClassesOf(channel);
                 return std::vector<int>(classes.begin(), classes.end());
             }},
    Property{"isPSC",
             [](const air::PlannedChannel& channel) {
                 return channel.width == 20 &&
                        air::isPreferredScanningChannel({channel.band, channel.number});
             }},
    Property{"isRadarProne",
             [](const air::PlannedChannel& channel) { return channel.needsRadarDetection; }},
};

template <>
inline constexpr std::string_view kTableName<ListedChannel> = "classChannel";
template <>
inline constexpr auto kProperties<ListedChannel> = std::tuple{
    Property{"channelNumber", [](const ListedChannel& channel) { return int{channel.number}; }},
    Property{"channelFrequency",
             [](const ListedChannel& channel) { return megahertzIn(channel.frequency); }},
};

template <>
inline constexpr std::string_view kTableName<air::OperatingClass> = "operatingClass";
template <>
inline constexpr auto kProperties<air::OperatingClass> = std::tuple{
    Property{"operatingClass", [](const air::OperatingClass& row) { return int{row.number}; }},
    Property{"band",
             [](const air::OperatingClass& row) { return std::string(air::bandName(row.band)); }},
    Property{"width", [](const air::OperatingClass& row) { return row.channelWidth(); }},
    Property{"spacing", [](const air::OperatingClass& row) { return int{row.spacing}; }},
    Property{"startFrequency",
             [](const air::OperatingClass& row) { return megahertzIn(row.start); }},
    Property{"isPair", [](const air::OperatingClass& row) { return row.isPair; }},
    Property{"hasCenters", [](const air::OperatingClass& row) { return row.hasCenters; }},
    Property{"behaviorLimits",
             [](const air::OperatingClass& row) {
                 const auto limits = row.behaviorLimits();
                 return std::vector<std::string>(limits.begin(), limits.end());
             }},
    Property{"channels", [](const air::OperatingClass& row) { return channelsIn(row); }},
};

}  // namespace halvane::tool

#endif

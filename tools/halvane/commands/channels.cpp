// The channels of the 2.4 GHz and 5 GHz bands in the channel map: all of them, or those that the
// arguments name. Options choose from the channels of all bands instead.
#include <cstdio>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

#include "halvane/base/number.h"
#include "halvane/base/property_list_value.h"
#include "halvane/regulatory/channel.h"

#include "tools/halvane/commands/channel_plan.h"
#include "tools/halvane/commands/command.h"
#include "tools/halvane/options/channel_options.h"
#include "tools/halvane/output/format.h"
#include "tools/halvane/output/json_record.h"
#include "tools/halvane/output/json_writer.h"
#include "tools/halvane/output/message.h"
#include "tools/halvane/output/print_records.h"
#include "tools/halvane/output/property_table.h"

namespace halvane::tool {

namespace {

struct Channel {
    unsigned number;
    unsigned frequency;  // MHz
    unsigned extension;  // the other half of a channel of 40 MHz; 0 for none
};

}  // namespace

// The properties of a channel for programs.
template <>
inline constexpr std::string_view kTableName<Channel> = "mappedChannel";
template <>
inline constexpr auto kProperties<Channel> = std::tuple{
    Property{"channelNumber", [](const Channel& channel) { return channel.number; }},
    Property{"channelFrequency", [](const Channel& channel) { return channel.frequency; }},
    Property{"extensionChannel",
             [](const Channel& channel) {
                 return channel.extension != 0 ? std::optional(channel.extension) : std::nullopt;
             }},
};

PropertyRows mappedChannelRows() {
    return kPropertyRows<Channel>;
}

namespace {

std::optional<Channel> channelOfNumber(unsigned number) {
    const unsigned frequency = HalvaneChannel::channelFrequencyForNumber(number);
    if (frequency == 0) return std::nullopt;
    return Channel{number, frequency, HalvaneChannel::channelExtensionForNumber(number)};
}

// The map returns a channel for an unknown frequency too, so the frequency must match.
std::optional<Channel> channelOfFrequency(unsigned frequency) {
    const auto channel = channelOfNumber(HalvaneChannel::channelNumberForFrequency(frequency));
    if (!channel || channel->frequency != frequency) return std::nullopt;
    return channel;
}

std::vector<Channel> allChannels() {
    std::vector<Channel> channels;
    for (unsigned number = 1; number <= kLastChannelNumber; ++number) {
        if (const auto channel = channelOfNumber(number)) channels.push_back(*channel);
    }
    return channels;
}

// Returns the requested channels. Sets `areAllKnown` to false if one does not exist.
std::vector<Channel> channelsOf(const std::vector<ChannelQuery>& asked, bool& areAllKnown) {
    std::vector<Channel> channels;
    for (const auto& [isNumber, value] : asked) {
        if (const auto channel = isNumber ? channelOfNumber(value) : channelOfFrequency(value)) {
            channels.push_back(*channel);
            continue;
        }
        areAllKnown = false;
        const std::string text = std::to_string(value);
        complain("channels: " +
                 (isNumber ? "no channel " + text : "no channel at " + text + " MHz"));
    }
    return channels;
}

void printTable(const std::vector<Channel>& channels) {
    if (channels.empty()) return;
    std::puts("Channel  Frequency  Extension");
    for (const Channel& channel : channels) {
        const auto extension = channel.extension != 0 ? std::to_string(channel.extension) : "-";
        std::printf("%7u  %5u MHz  %9s\n", channel.number, channel.frequency, extension.c_str());
    }
}

void writeJSON(JSONWriter& writer, const Channel& channel) {
    writeObject(writer, channel);
}

PropertyListDictionary propertyListOf(const Channel& channel) {
    PropertyListDictionary dictionary;
    forEachProperty<Channel>([&](const auto& row) {
        const std::optional<unsigned> value = row.read(channel);
        if (value) dictionary.set(std::string(row.key.text), Number(*value));
    });
    return dictionary;
}

void print(const std::vector<Channel>& channels, Format format) {
    if (format == Format::Text) return printTable(channels);
    printRecords(channels, format, propertyListOf);
}

}  // namespace

int channelsCommand() {
    const auto options = takeChannelOptions();
    if (!options) return refuse("channels", options.error());
    if (options->isPlan) return printChosenChannels(*options);
    bool areAllKnown = true;
    print(options->asked.empty() ? allChannels() : channelsOf(options->asked, areAllKnown),
          options->format);
    return areAllKnown ? kExitDone : kExitFailed;
}

}  // namespace halvane::tool

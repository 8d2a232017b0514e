// The channels of the 2.4 GHz and 5 GHz bands: all of them, or those that the arguments name.
#include <cstdint>
#include <cstdio>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

#include "halvane/base/number.h"
#include "halvane/base/property_list_value.h"
#include "halvane/regulatory/channel.h"
#include "halvane/utils/cli.h"

#include "tools/halvane/commands/command.h"
#include "tools/halvane/options/argument.h"
#include "tools/halvane/options/format_option.h"
#include "tools/halvane/output/format.h"
#include "tools/halvane/output/json_record.h"
#include "tools/halvane/output/json_writer.h"
#include "tools/halvane/output/message.h"
#include "tools/halvane/output/print_records.h"
#include "tools/halvane/output/property_table.h"

namespace halvane::tool {

namespace {

// A channel number is one octet in every element. Every frequency in MHz is larger.
constexpr std::uint64_t kLastNumber = 255;
constexpr std::uint64_t kLastFrequency = 99999;

struct Channel {
    unsigned number;
    unsigned frequency;  // MHz
    unsigned extension;  // the other half of a channel of 40 MHz; 0 for none
};

}  // namespace

// The properties of a channel for programs.
template <>
inline constexpr auto kProperties<Channel> = std::tuple{
    Property{"channelNumber", [](const Channel& channel) { return channel.number; }},
    Property{"channelFrequency", [](const Channel& channel) { return channel.frequency; }},
    Property{"extensionChannel",
             [](const Channel& channel) {
                 return channel.extension != 0 ? std::optional(channel.extension) : std::nullopt;
             }},
};

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
    for (unsigned number = 1; number <= kLastNumber; ++number) {
        if (const auto channel = channelOfNumber(number)) channels.push_back(*channel);
    }
    return channels;
}

// Returns the requested channels. Sets `areAllKnown` to false if one does not exist.
std::vector<Channel> channelsOf(const std::vector<unsigned>& asked, bool& areAllKnown) {
    std::vector<Channel> channels;
    for (const unsigned value : asked) {
        const bool isNumber = value <= kLastNumber;
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

CLIOption gChannelsOptions[] = {
    formatOption("json, plist: one document; jsonl: one line per channel."),
    {.type = kCLIArgument,
     .longName = "NUMBER|FREQUENCY...",
     .flags = kCLIOptionalValue,
     .shortHelp = "up to 255 a channel, above it a frequency in MHz"},
    {.type = kCLISection,
     .shortHelp = "EXIT STATUS",
     .longHelp = "0 success; 1 a channel is unknown, or writing failed; 2 usage error."},
    {.type = kCLIEnd},
};

int channelsCommand() {
    const std::vector<std::string> arguments = takeArguments();
    const auto format = takeFormat();
    if (!format) return refuse("channels", format.error());
    std::vector<unsigned> asked;
    for (const std::string& argument : arguments) {
        const auto value = decimalOf(argument);
        if (!value || *value > kLastFrequency) {
            return refuse("channels",
                          "'" + argument + "' is no channel number and no frequency in MHz");
        }
        asked.push_back(static_cast<unsigned>(*value));
    }
    bool areAllKnown = true;
    print(asked.empty() ? allChannels() : channelsOf(asked, areAllKnown), *format);
    return areAllKnown ? kExitDone : kExitFailed;
}

}  // namespace halvane::tool

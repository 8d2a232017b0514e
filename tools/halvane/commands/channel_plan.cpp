#include "tools/halvane/commands/channel_plan.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <optional>
#include <string>
#include <vector>

#include "halvane/air/channel.h"
#include "halvane/air/channel_plan.h"
#include "halvane/air/operating_class.h"

#include "tools/halvane/commands/command.h"
#include "tools/halvane/output/channel_plan_output.h"
#include "tools/halvane/output/message.h"

namespace halvane::tool {

namespace {

using Channels = std::vector<air::PlannedChannel>;

constexpr std::uint32_t kKilohertz = 1000;  // in a MHz

std::string bandText(air::Band band) {
    return std::string(air::bandName(band)) + (band == air::Band::SubOneGhz ? "" : " GHz");
}

// Without --width, a list has the channels of 20 MHz, and a NUMBER or FREQUENCY those of all
// widths.
bool hasWidth(const air::PlannedChannel& channel, const ChannelOptions& options) {
    if (options.width) {
        return channel.width == options.width->megahertz &&
               (!options.width->isPair || channel.isSegment);
    }
    return options.hasEveryWidth || !options.asked.empty() || channel.width == 20 ||
           channel.band == air::Band::Ghz60;
}

bool isChosen(const air::PlannedChannel& channel, const ChannelOptions& options) {
    if (options.band && channel.band != *options.band) return false;
    if (!hasWidth(channel, options)) return false;
    return !options.isPreferredScanning ||
           (channel.width == 20 && air::isPreferredScanningChannel({channel.band, channel.number}));
}

// Whether the query names a channel of 20 MHz that is a part of the channel.
bool isPartOf(const ChannelQuery& query, const air::PlannedChannel& channel) {
    const auto wide = channel.wide();
    const auto number = query.isNumber
                            ? std::optional(static_cast<int>(query.value))
                            : air::channelNumberOf(channel.band, static_cast<int>(query.value));
    return wide && number &&
           wide->indexOf({channel.band, static_cast<std::uint8_t>(*number)}).has_value();
}

bool isAsked(const air::PlannedChannel& channel, const ChannelQuery& query,
             const ChannelOptions& options) {
    if (query.isNumber ? channel.number == query.value
                       : channel.frequency == query.value * kKilohertz) {
        return true;
    }
    return options.width && isPartOf(query, channel);
}

// "no channel 15 of 40 MHz in the 2.4 GHz band"
std::string unknownText(const ChannelQuery& query, const ChannelOptions& options) {
    const std::string value = std::to_string(query.value);
    std::string text = query.isNumber ? "no channel " + value : "no channel at " + value + " MHz";
    if (options.isPreferredScanning) text = "no preferred scanning" + text.substr(2);
    if (options.width) {
        const std::string width =
            options.width->isPair ? "80+80" : std::to_string(options.width->megahertz);
        text += " of " + width + " MHz";
    }
    if (options.band) text += " in the " + bandText(*options.band) + " band";
    return text;
}

// In the order of the arguments. Sets `areAllKnown` to false if one names no channel.
Channels askedChannels(const Channels& chosen, const ChannelOptions& options, bool& areAllKnown) {
    Channels channels;
    for (const ChannelQuery& query : options.asked) {
        const std::size_t before = channels.size();
        std::ranges::copy_if(
            chosen, std::back_inserter(channels),
            [&](const air::PlannedChannel& channel) { return isAsked(channel, query, options); });
        if (channels.size() != before) continue;
        areAllKnown = false;
        complain("channels: " + unknownText(query, options));
    }
    return channels;
}

int printChannels(const ChannelOptions& options) {
    Channels chosen = air::channelPlan();
    std::erase_if(chosen,
                  [&](const air::PlannedChannel& channel) { return !isChosen(channel, options); });
    if (chosen.empty() && options.band) {
        complain("channels: the channels of " + bandText(*options.band) +
                 " differ from country to country");
        return kExitFailed;
    }
    bool areAllKnown = true;
    if (!options.asked.empty()) chosen = askedChannels(chosen, options, areAllKnown);
    printChannelPlan(chosen, options.format);
    return areAllKnown ? kExitDone : kExitFailed;
}

bool isChosen(const air::OperatingClass& row, const ChannelOptions& options) {
    if (options.band && row.band != *options.band) return false;
    return !options.width ||
           (options.width->megahertz == row.channelWidth() && options.width->isPair == row.isPair);
}

int printClasses(const ChannelOptions& options) {
    if (options.operatingClass) {
        const auto* const row = air::operatingClass(*options.operatingClass);
        if (row == nullptr) {
            complain("channels: no operating class " + std::to_string(*options.operatingClass));
            return kExitFailed;
        }
        printOperatingClass(*row, options.format);
        return kExitDone;
    }
    std::vector<air::OperatingClass> classes;
    std::ranges::copy_if(air::operatingClasses(), std::back_inserter(classes),
                         [&](const air::OperatingClass& row) { return isChosen(row, options); });
    printOperatingClasses(classes, options.format);
    return kExitDone;
}

}  // namespace

int printChosenChannels(const ChannelOptions& options) {
    return options.hasClasses ? printClasses(options) : printChannels(options);
}

}  // namespace halvane::tool

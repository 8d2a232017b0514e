#include "tools/halvaned/radio/radio.h"

#include <algorithm>
#include <bit>
#include <limits>
#include <linux/nl80211.h>
#include <utility>

namespace halvane::hosting {

namespace {

using air::HePhyCapability;

// Supported Channel Width Set of HT Capability Information.
constexpr std::uint16_t kHas40 = 0x0002;

bool isPartOf(const RadioChannel& channel, air::ChannelWidth width) {
    const auto primary = channel.channel();
    return primary && air::wideChannelOf(*primary, width);
}

bool isAt24(const RadioChannel& channel) {
    const auto number = channel.channel();
    return number && number->band == air::Band::Ghz2;
}

// Values that were not told leave those that were.
template <typename Value>
void joinOptional(std::optional<Value>& whole, const std::optional<Value>& part) {
    if (part) whole = part;
}

template <typename Value>
void joinGreatest(std::optional<Value>& whole, const std::optional<Value>& part) {
    if (part) whole = std::max(whole.value_or(0), *part);
}

void joinBand(RadioBand& whole, const RadioBand& part) {
    for (const auto& [place, channel] : part.channels) whole.channels[place] = channel;
    joinOptional(whole.ht, part.ht);
    joinOptional(whole.vht, part.vht);
    joinOptional(whole.he, part.he);
    joinGreatest(whole.streams, part.streams);
    whole.hasEHT = whole.hasEHT || part.hasEHT;
}

}  // namespace

std::optional<air::Channel> RadioChannel::channel() const {
    constexpr std::uint32_t kHighest = std::numeric_limits<int>::max();
    if (frequencyOffset != 0 || frequency > kHighest) return std::nullopt;
    return air::channelOf(static_cast<int>(frequency));
}

bool RadioBand::allows40(const RadioChannel& channel) const {
    if (channel.isDisabled || !channel.channel()) return false;
    if (channel.hasNoUpper40 && channel.hasNoLower40) return false;
    if (ht) return (*ht & kHas40) != 0;
    if (!he) return false;
    return he->has(isAt24(channel) ? HePhyCapability::Width40At2Ghz
                                   : HePhyCapability::Width40And80) &&
           (isAt24(channel) || isPartOf(channel, air::ChannelWidth::Mhz40));
}

bool RadioBand::allows80(const RadioChannel& channel) const {
    const bool hasWidth = vht || (he && he->has(HePhyCapability::Width40And80) && !isAt24(channel));
    // Half of the channel is one of 40 MHz.
    return hasWidth && allows40(channel) && !channel.hasNo80 &&
           isPartOf(channel, air::ChannelWidth::Mhz80);
}

void Radio::join(Radio part) {
    if (!part.name.empty()) name = std::move(part.name);
    for (const auto& [number, band] : part.bands) joinBand(bands[number], band);
    modes.merge(part.modes);
    joinGreatest(mostAPs, part.mostAPs);
    if (!part.ciphers.empty()) ciphers = std::move(part.ciphers);
    joinOptional(sendingChains, part.sendingChains);
    joinOptional(receivingChains, part.receivingChains);
    joinOptional(mostStations, part.mostStations);
    hasOwnRegulatoryDomain = hasOwnRegulatoryDomain || part.hasOwnRegulatoryDomain;
}

unsigned Radio::chains() const {
    const int told = std::max(std::popcount(sendingChains.value_or(0)),
                              std::popcount(receivingChains.value_or(0)));
    if (told > 0) return static_cast<unsigned>(told);
    unsigned streams = 1;
    for (const auto& [number, band] : bands) streams = std::max(streams, band.streams.value_or(0));
    return streams;
}

unsigned Radio::mostNetworks() const {
    if (!canHost()) return 0;
    return std::max<std::uint32_t>(mostAPs.value_or(1), 1);
}

}  // namespace halvane::hosting

#include "tools/halvane/config/configured_channel.h"

#include <algorithm>
#include <cstdint>

namespace halvane::tool {

namespace {

constexpr std::int64_t kLastOf2GHz = 14;
constexpr std::int64_t kLastWithUpper = 7;
constexpr air::ChannelWidth kWidths[] = {air::ChannelWidth::Mhz20, air::ChannelWidth::Mhz40,
                                         air::ChannelWidth::Mhz80, air::ChannelWidth::Mhz160};

std::optional<air::Channel> primaryOf(const HalvaneBSSConfig& configuration) {
    const std::int64_t number = configuration.channel();
    if (number <= 0 || number > UINT8_MAX) return std::nullopt;
    const auto band = number <= kLastOf2GHz ? air::Band::Ghz2 : air::Band::Ghz5;
    const air::Channel channel = {band, static_cast<std::uint8_t>(number)};
    if (!air::wideChannelOf(channel, air::ChannelWidth::Mhz20)) return std::nullopt;
    return channel;
}

}  // namespace

std::optional<air::Band> bandOf(const HalvaneBSSConfig& configuration) {
    const auto channel = primaryOf(configuration);
    return channel ? std::optional(channel->band) : std::nullopt;
}

std::optional<air::ChannelWidth> widthOf(const HalvaneBSSConfig& configuration) {
    for (const air::ChannelWidth width : kWidths) {
        if (air::megahertzOf(width) == configuration.channelWidth()) return width;
    }
    return std::nullopt;
}

std::optional<air::WideChannel> wideChannelOf(const HalvaneBSSConfig& configuration) {
    const auto channel = primaryOf(configuration);
    const auto width = widthOf(configuration);
    if (!channel || !width || *width == air::ChannelWidth::Mhz20) return std::nullopt;
    if (channel->band != air::Band::Ghz2) return air::wideChannelOf(*channel, *width);
    if (*width != air::ChannelWidth::Mhz40) return std::nullopt;
    const bool isUpper = channel->number <= kLastWithUpper;
    const auto center = static_cast<std::uint8_t>(channel->number + (isUpper ? 2 : -2));
    return air::wideChannelAt({air::Band::Ghz2, center}, 40);
}

int phyModeCount(const HalvaneBSSConfig& configuration) {
    return int{configuration.allowPHY80211b()} + int{configuration.allowPHY80211g()} +
           int{configuration.allowPHY80211a()} + int{configuration.allowPHY80211n()};
}

bool isCountryCode(std::string_view text) {
    return text.size() == 2 &&
           std::ranges::all_of(text, [](char letter) { return letter >= 'A' && letter <= 'Z'; });
}

}  // namespace halvane::tool

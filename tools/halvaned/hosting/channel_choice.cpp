#include "tools/halvaned/hosting/channel_choice.h"

#include <algorithm>
#include <array>
#include <optional>
#include <span>

#include "halvane/air/channel.h"

namespace halvane::hosting {

namespace {

using air::Band;

// At 2.4 GHz three channels do not overlap (IEEE 802.11-2020, 15.4.4.3); the others come behind
// them. At 5 GHz these need no radar detection in most countries.
constexpr std::array<std::uint8_t, 13> kOf2GHz = {1, 6, 11, 2, 3, 4, 5, 7, 8, 9, 10, 12, 13};
constexpr std::array<std::uint8_t, 8> kOf5GHz = {36, 40, 44, 48, 149, 153, 157, 161};

// The channels that a configuration's PHY modes lead to. Without a word on them both do.
std::span<const Band> bandsOf(const HalvaneBSSConfig& c) {
    static constexpr Band kBoth[] = {Band::Ghz2, Band::Ghz5};
    const bool isOn2GHz = c.allowPHY80211b() || c.allowPHY80211g();
    if (isOn2GHz == c.allowPHY80211a()) return kBoth;
    return std::span(kBoth).subspan(isOn2GHz ? 0 : 1, 1);
}

const RadioChannel* find(const Radio& radio, const air::Channel& wanted) {
    for (const auto& [number, band] : radio.bands) {
        for (const auto& [frequency, channel] : band.channels) {
            if (channel.channel() == wanted) return &channel;
        }
    }
    return nullptr;
}

using Allows = bool (*)(const RadioChannel&);

bool isFreeOfRadar(const RadioChannel& channel) {
    return channel.canHost() && !channel.isRadarProne;
}
bool isThere(const RadioChannel&) {
    return true;
}

std::optional<std::int64_t> firstOf(const Radio& radio, Band band, Allows allows) {
    const auto numbers = band == Band::Ghz2 ? std::span<const std::uint8_t>(kOf2GHz)
                                            : std::span<const std::uint8_t>(kOf5GHz);
    const auto found = std::ranges::find_if(numbers, [&](std::uint8_t number) {
        const RadioChannel* const channel = find(radio, {band, number});
        return channel != nullptr && allows(*channel);
    });
    return found != numbers.end() ? std::optional<std::int64_t>(*found) : std::nullopt;
}

std::optional<std::int64_t> chosenChannel(const HalvaneBSSConfig& c, const Radio& radio,
                                          Allows allows) {
    for (const Band band : bandsOf(c)) {
        if (const auto number = firstOf(radio, band, allows)) return number;
    }
    return std::nullopt;
}

// Whether the condition holds for a channel of this number, of which an interface at 2.4 or 5 GHz
// has one.
template <typename Condition>
bool holdsFor(const Radio& radio, std::int64_t number, Condition condition) {
    if (number < 1 || number > UINT8_MAX) return false;
    const auto narrow = static_cast<std::uint8_t>(number);
    return std::ranges::any_of(std::array{Band::Ghz2, Band::Ghz5}, [&](Band band) {
        const RadioChannel* const channel = find(radio, {band, narrow});
        return channel != nullptr && condition(*channel);
    });
}

}  // namespace

Result<std::int64_t, std::string> channelFor(const HalvaneBSSConfig& configuration,
                                             const Radio& radio, ChannelRules rules) {
    const bool isForbidding = rules == ChannelRules::InForce;
    const std::int64_t configured = configuration.channel();
    if (configured == 0) {
        auto chosen = chosenChannel(configuration, radio, isFreeOfRadar);
        if (!chosen && !isForbidding) chosen = chosenChannel(configuration, radio, isThere);
        if (chosen) return *chosen;
        return Unexpected(radio.name + " has no channel to host on that needs no radar detection.");
    }
    const bool mayHost = holdsFor(radio, configured, [&](const RadioChannel& channel) {
        return !isForbidding || channel.canHost();
    });
    if (mayHost) return configured;
    return Unexpected(radio.name + " may not host on channel " + std::to_string(configured) + ".");
}

bool isRadarProne(const Radio& radio, std::int64_t channel) {
    return holdsFor(radio, channel, [](const RadioChannel& each) { return each.isRadarProne; });
}

}  // namespace halvane::hosting

// The channels of today: bands, channel numbers and their frequencies, and the channels of 40 MHz
// and more (IEEE 802.11-2020, annex E and clauses 15 to 27; 802.11be-2024, 36.3).
//
// Plain values and constant tables; nothing allocates. Any thread may call every function.
#ifndef HALVANE_AIR_CHANNEL_H
#define HALVANE_AIR_CHANNEL_H

#include <cstdint>
#include <optional>
#include <string_view>

#include "halvane/base/export.h"
#include "halvane/base/inline_list.h"

namespace halvane::air {

// In the order of their frequencies. The library names the band below 1 GHz (S1G), but its channel
// numbers depend on the country and are not mapped.
enum class Band : std::uint8_t {
    SubOneGhz,
    Ghz2,      // 2.4 GHz
    Ghz3,      // 3.65 GHz
    Ghz4,      // 4.9 GHz
    Ghz5,      // up to 5.895 GHz
    Vehicles,  // 5.85 to 5.925 GHz
    Ghz6,
    Ghz60,
};

// "S1G", "2.4", "3.6", "4.9", "5", "5.9", "6" or "60".
HALVANE_EXPORT std::string_view bandName(Band band);

// A channel number means something only within its band: the numbers 1 to 13 exist at 2.4 GHz and
// at 6 GHz, those from 36 on at 5 GHz and at 6 GHz.
struct Channel {
    Band band = Band::Ghz2;
    std::uint8_t number = 0;

    friend constexpr bool operator==(const Channel&, const Channel&) = default;
};

// Returns the centre frequency of a channel number in MHz, which may be the centre of a channel of
// 40 MHz and more. Absent for a number that the band has not. At 6 GHz, the number 2 is 5935 MHz
// (operating class 136).
HALVANE_EXPORT std::optional<int> centerFrequencyOf(Band band, int number);
inline std::optional<int> centerFrequencyOf(const Channel& channel) {
    return centerFrequencyOf(channel.band, channel.number);
}

// Returns the channel number with that centre frequency (MHz); absent if there is none. The
// channels 172, 174 and 176 belong to the band of vehicles; 173, 175 and 177 to 5 GHz.
HALVANE_EXPORT std::optional<Channel> channelOf(int frequency);
// Returns its band alone, or its number if it is in the band.
HALVANE_EXPORT std::optional<Band> bandOfFrequency(int frequency);
// The number in the band of the channel at a centre frequency in MHz; absent if there is none.
HALVANE_EXPORT std::optional<int> channelNumberOf(Band band, int frequency);

// Whether the channel is a preferred scanning channel at 6 GHz: 5, 21, ..., 229.
HALVANE_EXPORT bool isPreferredScanningChannel(const Channel& channel);

// The channels of 320 MHz overlap: those of the first kind have the centres 31, 95 and 159, those
// of the second kind 63, 127 and 191.
enum class ChannelWidth : std::uint8_t { Mhz20, Mhz40, Mhz80, Mhz160, Mhz320First, Mhz320Second };

// The width in MHz, of both parts together.
constexpr int megahertzOf(ChannelWidth width) {
    constexpr int kWidths[] = {20, 40, 80, 160, 320, 320};
    return kWidths[static_cast<int>(width)];
}

// A channel of 20 MHz or more.
struct WideChannel {
    Channel center{};
    ChannelWidth width = ChannelWidth::Mhz20;

    // How many channels of 20 MHz it has.
    constexpr int subchannelCount() const { return megahertzOf(width) / 20; }
    // The channel of 20 MHz that `index` counts from the lowest frequency.
    constexpr Channel subchannel(int index) const {
        const int lowest = center.number - 2 * (subchannelCount() - 1);
        return {center.band, static_cast<std::uint8_t>(lowest + 4 * index)};
    }
    // Which of them `primary` is; absent if it is none.
    constexpr std::optional<int> indexOf(const Channel& primary) const {
        for (int i = 0; i < subchannelCount(); ++i) {
            if (subchannel(i) == primary) return i;
        }
        return std::nullopt;
    }

    friend constexpr bool operator==(const WideChannel&, const WideChannel&) = default;
};

// Returns the channel of a width that has `primary` in it. Absent if there is none, and for the 40
// MHz channels at 2.4 GHz, of which there are two.
HALVANE_EXPORT std::optional<WideChannel> wideChannelOf(const Channel& primary, ChannelWidth width);

// Returns the channel of `megahertz` (20, 40, 80, 160 or 320) with that centre; absent if it is not
// one of the standard's.
HALVANE_EXPORT std::optional<WideChannel> wideChannelAt(const Channel& center, int megahertz);

// Returns the wider channels that have all of `channel` in them, narrow ones first. There may be
// two of 320 MHz, and two of 40 MHz at 2.4 GHz.
using WideChannels = InlineList<WideChannel, 6>;
// All of them, the narrowest first.
HALVANE_EXPORT WideChannels widerChannelsOf(const WideChannel& channel);

}  // namespace halvane::air

#endif

#include "halvane/air/channel.h"

#include <cstddef>

namespace halvane::air {

namespace {

constexpr std::string_view kBandNames[] = {"S1G", "2.4", "3.6", "4.9", "5", "5.9", "6", "60"};

// A run of channel numbers at equal distances.
struct NumberRange {
    Band band;
    int start;    // MHz, where number 0 would be
    int spacing;  // MHz between a number and the next
    int first;
    int last;
    int step;  // between the numbers
};

// Ranges overlap in the numbers of different bands. Those of one band overlap in no number, and no
// two ranges in a frequency.
constexpr NumberRange kRanges[] = {
    {Band::Ghz2, 2407, 5, 1, 13, 1},        {Band::Ghz2, 2414, 5, 14, 14, 1},
    {Band::Ghz3, 3000, 5, 131, 138, 1},     {Band::Ghz4, 4000, 5, 182, 198, 1},
    {Band::Ghz5, 5000, 5, 7, 171, 1},       {Band::Ghz5, 5000, 5, 173, 177, 2},
    {Band::Vehicles, 5000, 5, 172, 176, 2}, {Band::Vehicles, 5000, 5, 178, 184, 1},
    {Band::Ghz6, 5925, 5, 2, 2, 1},         {Band::Ghz6, 5950, 5, 1, 233, 2},
    {Band::Ghz60, 56160, 2160, 1, 6, 1},
};

constexpr bool has(const NumberRange& range, int number) {
    return number >= range.first && number <= range.last &&
           (number - range.first) % range.step == 0;
}

// Channels of 20 MHz in a row, of which wider ones are made.
struct Row {
    Band band;
    int first;
    int count;
    ChannelWidth widest;
};

constexpr Row kRows[] = {
    {Band::Ghz4, 184, 4, ChannelWidth::Mhz40},       {Band::Ghz5, 36, 8, ChannelWidth::Mhz160},
    {Band::Ghz5, 100, 12, ChannelWidth::Mhz160},     {Band::Ghz5, 149, 8, ChannelWidth::Mhz160},
    {Band::Ghz6, 1, 59, ChannelWidth::Mhz320Second},
};

// Channels of 20 MHz of which no wider ones are made: Japan's old ones, and the channel below the
// others at 6 GHz. Those of 2.4 GHz are no row.
constexpr Row kSingles[] = {
    {Band::Ghz5, 8, 3, ChannelWidth::Mhz20},
    {Band::Ghz5, 34, 4, ChannelWidth::Mhz20},
    {Band::Ghz6, 2, 1, ChannelWidth::Mhz20},
};

constexpr int kSteps = 4;         // channel numbers between neighbours of 20 MHz
constexpr int kLast40At2_4 = 11;  // centres of 40 MHz at 2.4 GHz
constexpr int kFirst40At2_4 = 3;

std::optional<int> indexIn(const Row& row, const Channel& channel) {
    const int distance = channel.number - row.first;
    if (row.band != channel.band || distance < 0 || distance % kSteps != 0) return std::nullopt;
    const int index = distance / kSteps;
    return index < row.count ? std::optional<int>(index) : std::nullopt;
}

// The channel of `width` in the row that has the channel number `index` of it.
std::optional<WideChannel> blockIn(const Row& row, int index, ChannelWidth width) {
    const int size = megahertzOf(width) / 20;
    const int start = width == ChannelWidth::Mhz320Second ? size / 2 : 0;
    if (width > row.widest || index < start) return std::nullopt;
    const int first = start + (index - start) / size * size;
    if (first + size > row.count) return std::nullopt;
    const int center = row.first + kSteps * first + kSteps / 2 * (size - 1);
    return WideChannel{{row.band, static_cast<std::uint8_t>(center)}, width};
}

bool isSingle(const Channel& channel) {
    if (channel.band == Band::Ghz2) return centerFrequencyOf(channel).has_value();
    for (const Row& row : kSingles) {
        if (indexIn(row, channel)) return true;
    }
    return false;
}

std::optional<WideChannel> blockOf(const Channel& primary, ChannelWidth width) {
    for (const Row& row : kRows) {
        const auto index = indexIn(row, primary);
        if (!index) continue;
        if (const auto block = blockIn(row, *index, width)) return block;
    }
    return std::nullopt;
}

// Two of 320 MHz, which overlap.
constexpr ChannelWidth kWidths[] = {ChannelWidth::Mhz20,       ChannelWidth::Mhz40,
                                    ChannelWidth::Mhz80,       ChannelWidth::Mhz160,
                                    ChannelWidth::Mhz320First, ChannelWidth::Mhz320Second};

// The channel whose centre it is.
std::optional<WideChannel> blockAt(const Channel& center, ChannelWidth width) {
    const WideChannel block{center, width};
    const int lowest = center.number - 2 * (block.subchannelCount() - 1);
    if (lowest < 1) return std::nullopt;
    const auto found = wideChannelOf(block.subchannel(0), width);
    return found == block ? found : std::nullopt;
}

}  // namespace

std::string_view bandName(Band band) {
    return kBandNames[static_cast<std::size_t>(band)];
}

std::optional<int> centerFrequencyOf(Band band, int number) {
    for (const NumberRange& range : kRanges) {
        if (range.band == band && has(range, number)) return range.start + range.spacing * number;
    }
    return std::nullopt;
}

std::optional<Channel> channelOf(int frequency) {
    for (const NumberRange& range : kRanges) {
        const int distance = frequency - range.start;
        if (distance % range.spacing != 0) continue;
        const int number = distance / range.spacing;
        if (has(range, number)) return Channel{range.band, static_cast<std::uint8_t>(number)};
    }
    return std::nullopt;
}

std::optional<Band> bandOfFrequency(int frequency) {
    const auto channel = channelOf(frequency);
    return channel ? std::optional<Band>(channel->band) : std::nullopt;
}

std::optional<int> channelNumberOf(Band band, int frequency) {
    const auto channel = channelOf(frequency);
    return channel && channel->band == band ? std::optional<int>(channel->number) : std::nullopt;
}

bool isPreferredScanningChannel(const Channel& channel) {
    return channel.band == Band::Ghz6 && channel.number % 16 == 5 && channel.number <= 229;
}

std::optional<WideChannel> wideChannelOf(const Channel& primary, ChannelWidth width) {
    if (width == ChannelWidth::Mhz20 && isSingle(primary)) return WideChannel{primary, width};
    return blockOf(primary, width);
}

std::optional<WideChannel> wideChannelAt(const Channel& center, int megahertz) {
    if (center.band == Band::Ghz2 && megahertz == 40) {
        if (center.number < kFirst40At2_4 || center.number > kLast40At2_4) return std::nullopt;
        return WideChannel{center, ChannelWidth::Mhz40};
    }
    for (const ChannelWidth width : kWidths) {
        if (megahertzOf(width) != megahertz) continue;
        if (const auto channel = blockAt(center, width)) return channel;
    }
    return std::nullopt;
}

WideChannels widerChannelsOf(const WideChannel& channel) {
    WideChannels wider;
    if (channel.center.band == Band::Ghz2) {
        if (channel.width != ChannelWidth::Mhz20) return wider;
        for (const int center : {channel.center.number - 2, channel.center.number + 2}) {
            const Channel at{Band::Ghz2, static_cast<std::uint8_t>(center)};
            if (const auto wide = wideChannelAt(at, 40)) wider.push_back(*wide);
        }
        return wider;
    }
    for (const ChannelWidth width : kWidths) {
        if (megahertzOf(width) <= megahertzOf(channel.width)) continue;
        if (const auto wide = wideChannelOf(channel.subchannel(0), width)) wider.push_back(*wide);
    }
    return wider;
}

}  // namespace halvane::air

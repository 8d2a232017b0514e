#include "halvane/air/channel.h"

#include <cstdint>
#include <gtest/gtest.h>
#include <optional>
#include <vector>

using namespace halvane::air;

namespace {

// Every frequency at which the standard has a channel number is in the table of its band.
TEST(AirChannel, KnowsFrequenciesOfEachBand) {
    const struct {
        Channel channel;
        int frequency;
    } kRows[] = {
        {{Band::Ghz2, 1}, 2412},       {{Band::Ghz2, 13}, 2472},      {{Band::Ghz2, 14}, 2484},
        {{Band::Ghz3, 133}, 3665},     {{Band::Ghz4, 184}, 4920},     {{Band::Ghz4, 196}, 4980},
        {{Band::Ghz5, 8}, 5040},       {{Band::Ghz5, 36}, 5180},      {{Band::Ghz5, 42}, 5210},
        {{Band::Ghz5, 144}, 5720},     {{Band::Ghz5, 165}, 5825},     {{Band::Ghz5, 177}, 5885},
        {{Band::Vehicles, 172}, 5860}, {{Band::Vehicles, 184}, 5920}, {{Band::Ghz6, 2}, 5935},
        {{Band::Ghz6, 1}, 5955},       {{Band::Ghz6, 5}, 5975},       {{Band::Ghz6, 31}, 6105},
        {{Band::Ghz6, 233}, 7115},     {{Band::Ghz60, 1}, 58320},     {{Band::Ghz60, 6}, 69120},
    };
    for (const auto& row : kRows) {
        EXPECT_EQ(centerFrequencyOf(row.channel), row.frequency);
        EXPECT_EQ(channelOf(row.frequency), row.channel) << row.frequency;
    }
}

TEST(AirChannel, HasEachFrequencyOnce) {
    int count = 0;
    for (int band = 0; band <= static_cast<int>(Band::Ghz60); ++band) {
        for (int number = 0; number < 256; ++number) {
            const Channel channel{static_cast<Band>(band), static_cast<std::uint8_t>(number)};
            const auto frequency = centerFrequencyOf(channel);
            if (!frequency) continue;
            EXPECT_EQ(channelOf(*frequency), channel);
            ++count;
        }
    }
    int found = 0;
    for (int frequency = -10000; frequency < 100000; ++frequency)
        found += channelOf(frequency).has_value();
    EXPECT_EQ(found, count);
}

TEST(AirChannel, KnowsNoOtherFrequency) {
    for (const int frequency :
         {-5, 0, 5, 2407, 2413, 2477, 2489, 5030, 5925, 5940, 5950, 5960, 7120}) {
        EXPECT_FALSE(channelOf(frequency)) << frequency;
    }
    EXPECT_FALSE(centerFrequencyOf({Band::Ghz2, 0}));
    EXPECT_FALSE(centerFrequencyOf({Band::Ghz2, 15}));
    EXPECT_FALSE(centerFrequencyOf({Band::Ghz6, 0}));
    EXPECT_FALSE(centerFrequencyOf({Band::Ghz6, 4}));
    EXPECT_FALSE(centerFrequencyOf({Band::Ghz6, 235}));
    EXPECT_FALSE(centerFrequencyOf({Band::SubOneGhz, 1}));
}

TEST(AirChannel, TellsTheBandOfAFrequency) {
    EXPECT_EQ(bandOfFrequency(2437), Band::Ghz2);
    EXPECT_EQ(bandOfFrequency(5955), Band::Ghz6);
    EXPECT_EQ(bandOfFrequency(5950), std::nullopt);
    EXPECT_EQ(channelNumberOf(Band::Ghz6, 5955), 1);
    EXPECT_EQ(channelNumberOf(Band::Ghz5, 5955), std::nullopt);
    EXPECT_EQ(channelNumberOf(Band::Ghz6, 5950), std::nullopt);
    EXPECT_EQ(centerFrequencyOf(Band::Ghz6, -1), std::nullopt);
    EXPECT_EQ(centerFrequencyOf(Band::Ghz2, 257), std::nullopt);
}

TEST(AirChannel, NamesTheBands) {
    EXPECT_EQ(bandName(Band::SubOneGhz), "S1G");
    EXPECT_EQ(bandName(Band::Ghz2), "2.4");
    EXPECT_EQ(bandName(Band::Ghz5), "5");
    EXPECT_EQ(bandName(Band::Ghz6), "6");
    EXPECT_EQ(bandName(Band::Ghz60), "60");
}

TEST(AirChannel, HasFifteenPreferredScanningChannels) {
    int count = 0;
    for (int number = 0; number < 256; ++number) {
        const auto channel = static_cast<std::uint8_t>(number);
        EXPECT_FALSE(isPreferredScanningChannel({Band::Ghz5, channel}));
        if (!isPreferredScanningChannel({Band::Ghz6, channel})) continue;
        ++count;
        EXPECT_EQ(number % 16, 5);
        EXPECT_TRUE(centerFrequencyOf({Band::Ghz6, channel}));
    }
    EXPECT_EQ(count, 15);
    EXPECT_TRUE(isPreferredScanningChannel({Band::Ghz6, 229}));
}

std::optional<int> centerOf(Band band, std::uint8_t primary, ChannelWidth width) {
    const auto channel = wideChannelOf({band, primary}, width);
    if (!channel) return std::nullopt;
    EXPECT_EQ(wideChannelAt(channel->center, megahertzOf(width)), channel);
    EXPECT_TRUE(channel->indexOf({band, primary}));
    return channel->center.number;
}

TEST(AirChannel, FindsTheWideChannelsAt5Ghz) {
    EXPECT_EQ(centerOf(Band::Ghz5, 36, ChannelWidth::Mhz20), 36);
    EXPECT_EQ(centerOf(Band::Ghz5, 36, ChannelWidth::Mhz40), 38);
    EXPECT_EQ(centerOf(Band::Ghz5, 48, ChannelWidth::Mhz80), 42);
    EXPECT_EQ(centerOf(Band::Ghz5, 64, ChannelWidth::Mhz160), 50);
    EXPECT_EQ(centerOf(Band::Ghz5, 144, ChannelWidth::Mhz40), 142);
    EXPECT_EQ(centerOf(Band::Ghz5, 132, ChannelWidth::Mhz80), 138);
    EXPECT_EQ(centerOf(Band::Ghz5, 128, ChannelWidth::Mhz160), 114);
    EXPECT_EQ(centerOf(Band::Ghz5, 132, ChannelWidth::Mhz160), std::nullopt);
    EXPECT_EQ(centerOf(Band::Ghz5, 149, ChannelWidth::Mhz80), 155);
    EXPECT_EQ(centerOf(Band::Ghz5, 165, ChannelWidth::Mhz80), 171);
    EXPECT_EQ(centerOf(Band::Ghz5, 177, ChannelWidth::Mhz160), 163);
    EXPECT_EQ(centerOf(Band::Ghz5, 36, ChannelWidth::Mhz320First), std::nullopt);
    EXPECT_EQ(centerOf(Band::Ghz5, 37, ChannelWidth::Mhz20), std::nullopt);
    EXPECT_EQ(centerOf(Band::Ghz5, 34, ChannelWidth::Mhz20), 34);
    EXPECT_EQ(centerOf(Band::Ghz5, 34, ChannelWidth::Mhz40), std::nullopt);
    EXPECT_EQ(centerOf(Band::Ghz4, 188, ChannelWidth::Mhz40), 186);
    EXPECT_EQ(centerOf(Band::Ghz4, 188, ChannelWidth::Mhz80), std::nullopt);
}

TEST(AirChannel, FindsTheWideChannelsAt6Ghz) {
    EXPECT_EQ(centerOf(Band::Ghz6, 37, ChannelWidth::Mhz80), 39);
    EXPECT_EQ(centerOf(Band::Ghz6, 37, ChannelWidth::Mhz160), 47);
    EXPECT_EQ(centerOf(Band::Ghz6, 37, ChannelWidth::Mhz320First), 31);
    EXPECT_EQ(centerOf(Band::Ghz6, 37, ChannelWidth::Mhz320Second), 63);
    EXPECT_EQ(centerOf(Band::Ghz6, 29, ChannelWidth::Mhz320Second), std::nullopt);
    EXPECT_EQ(centerOf(Band::Ghz6, 221, ChannelWidth::Mhz320Second), 191);
    EXPECT_EQ(centerOf(Band::Ghz6, 193, ChannelWidth::Mhz320First), std::nullopt);
    EXPECT_EQ(centerOf(Band::Ghz6, 233, ChannelWidth::Mhz20), 233);
    EXPECT_EQ(centerOf(Band::Ghz6, 233, ChannelWidth::Mhz40), std::nullopt);
    EXPECT_EQ(centerOf(Band::Ghz6, 2, ChannelWidth::Mhz20), 2);
    EXPECT_EQ(centerOf(Band::Ghz6, 2, ChannelWidth::Mhz40), std::nullopt);
}

// Annex E has 59, 29, 14, 7 and twice 3 channels at 6 GHz.
TEST(AirChannel, CountsTheCentersAt6Ghz) {
    const auto countOf = [](int megahertz) {
        int count = 0;
        for (int number = 0; number < 256; ++number) {
            const Channel center{Band::Ghz6, static_cast<std::uint8_t>(number)};
            if (number != 2 && wideChannelAt(center, megahertz)) ++count;
        }
        return count;
    };
    EXPECT_EQ(countOf(20), 59);
    EXPECT_EQ(countOf(40), 29);
    EXPECT_EQ(countOf(80), 14);
    EXPECT_EQ(countOf(160), 7);
    EXPECT_EQ(countOf(320), 6);
    EXPECT_EQ(countOf(10), 0);
    EXPECT_EQ(wideChannelAt({Band::Ghz6, 127}, 320)->width, ChannelWidth::Mhz320Second);
    EXPECT_EQ(wideChannelAt({Band::Ghz6, 95}, 320)->width, ChannelWidth::Mhz320First);
}

TEST(AirChannel, FindsThe40MhzChannelsAt2_4GhzByTheirCenter) {
    const auto channel = wideChannelAt({Band::Ghz2, 3}, 40);
    ASSERT_TRUE(channel);
    EXPECT_EQ(channel->indexOf({Band::Ghz2, 1}), 0);
    EXPECT_EQ(channel->indexOf({Band::Ghz2, 5}), 1);
    EXPECT_EQ(channel->indexOf({Band::Ghz2, 3}), std::nullopt);
    EXPECT_TRUE(wideChannelAt({Band::Ghz2, 11}, 40));
    EXPECT_FALSE(wideChannelAt({Band::Ghz2, 2}, 40));
    EXPECT_FALSE(wideChannelAt({Band::Ghz2, 12}, 40));
    EXPECT_FALSE(wideChannelOf({Band::Ghz2, 6}, ChannelWidth::Mhz40));
    EXPECT_EQ(centerOf(Band::Ghz2, 14, ChannelWidth::Mhz20), 14);
    EXPECT_FALSE(wideChannelOf({Band::Ghz2, 15}, ChannelWidth::Mhz20));
}

TEST(AirChannel, PlacesThePrimary) {
    const auto channel = wideChannelOf({Band::Ghz6, 37}, ChannelWidth::Mhz320Second);
    ASSERT_TRUE(channel);
    EXPECT_EQ(channel->subchannelCount(), 16);
    EXPECT_EQ(channel->subchannel(0), (Channel{Band::Ghz6, 33}));
    EXPECT_EQ(channel->subchannel(15), (Channel{Band::Ghz6, 93}));
    EXPECT_EQ(channel->indexOf({Band::Ghz6, 37}), 1);
    EXPECT_EQ(channel->indexOf({Band::Ghz5, 37}), std::nullopt);
}

TEST(AirChannel, FindsTheWiderChannels) {
    const auto centers = [](Band band, int number, ChannelWidth width) {
        std::vector<int> numbers;
        const Channel center{band, static_cast<std::uint8_t>(number)};
        for (const WideChannel& wide : widerChannelsOf({center, width})) {
            numbers.push_back(wide.center.number);
        }
        return numbers;
    };
    EXPECT_EQ(centers(Band::Ghz2, 1, ChannelWidth::Mhz20), std::vector{3});
    EXPECT_EQ(centers(Band::Ghz2, 6, ChannelWidth::Mhz20), (std::vector{4, 8}));
    EXPECT_EQ(centers(Band::Ghz2, 13, ChannelWidth::Mhz20), std::vector{11});
    EXPECT_EQ(centers(Band::Ghz2, 14, ChannelWidth::Mhz20), std::vector<int>());
    EXPECT_EQ(centers(Band::Ghz2, 6, ChannelWidth::Mhz40), std::vector<int>());
    EXPECT_EQ(centers(Band::Ghz5, 36, ChannelWidth::Mhz20), (std::vector{38, 42, 50}));
    EXPECT_EQ(centers(Band::Ghz5, 58, ChannelWidth::Mhz80), std::vector{50});
    EXPECT_EQ(centers(Band::Ghz5, 42, ChannelWidth::Mhz20), std::vector<int>());
    EXPECT_EQ(centers(Band::Ghz6, 1, ChannelWidth::Mhz20), (std::vector{3, 7, 15, 31}));
    EXPECT_EQ(centers(Band::Ghz6, 33, ChannelWidth::Mhz20), (std::vector{35, 39, 47, 31, 63}));
    EXPECT_EQ(centers(Band::Ghz6, 47, ChannelWidth::Mhz160), (std::vector{31, 63}));
    EXPECT_EQ(centers(Band::Ghz6, 233, ChannelWidth::Mhz20), std::vector<int>());
}

}  // namespace

#include "halvane/air/operating_class.h"

#include <cstdint>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "halvane/air/channel.h"

using namespace halvane::air;

namespace {

// Table E-4: the lowest and the highest frequency of classes in kHz.
TEST(AirOperatingClass, KnowsTheFrequencies) {
    const struct {
        std::uint8_t number;
        std::uint8_t channel;
        std::uint32_t frequency;
    } kRows[] = {
        {81, 13, 2472000},   {82, 14, 2484000},   {83, 9, 2452000},    {84, 5, 2432000},
        {94, 137, 3685000},  {95, 132, 3660000},  {96, 131, 3657500},  {101, 21, 4955000},
        {102, 19, 4985000},  {103, 1, 4942500},   {104, 184, 4920000}, {106, 195, 4975000},
        {107, 189, 4945000}, {108, 197, 4987500}, {110, 183, 4915000}, {111, 182, 4912500},
        {112, 16, 5080000},  {113, 7, 5035000},   {114, 6, 5032500},   {115, 36, 5180000},
        {121, 144, 5720000}, {125, 177, 5885000}, {128, 155, 5775000}, {128, 149, 5745000},
        {129, 50, 5250000},  {131, 233, 7115000}, {132, 3, 5965000},   {134, 47, 6185000},
        {136, 2, 5935000},   {137, 63, 6265000},  {180, 2, 60480000},  {181, 9, 59400000},
        {182, 17, 60480000}, {183, 25, 61560000},
    };
    for (const auto& row : kRows) {
        ASSERT_TRUE(operatingClass(row.number)) << int{row.number};
        EXPECT_EQ(operatingClass(row.number)->frequency(row.channel), row.frequency)
            << int{row.number};
    }
}

TEST(AirOperatingClass, LacksWhatTheTableLacks) {
    for (const int number : {0, 1, 12, 80, 85, 93, 97, 138, 179, 184, 255}) {
        EXPECT_FALSE(operatingClass(static_cast<std::uint8_t>(number))) << number;
    }
    EXPECT_FALSE(operatingClass(81)->frequency(14));
    EXPECT_FALSE(operatingClass(115)->frequency(52));
    EXPECT_FALSE(operatingClass(131)->frequency(2));
    EXPECT_FALSE(operatingClass(128)->frequency(181));
}

TEST(AirOperatingClass, TellsPrimaryChannelsFromCenters) {
    const auto wide = operatingClass(133);
    ASSERT_TRUE(wide);
    EXPECT_TRUE(wide->hasPrimary(37));
    EXPECT_FALSE(wide->hasCenter(37));
    EXPECT_TRUE(wide->hasCenter(39));
    EXPECT_FALSE(wide->hasPrimary(39));
    EXPECT_FALSE(wide->hasPrimary(233));
    EXPECT_TRUE(operatingClass(137)->hasPrimary(221));
    EXPECT_FALSE(operatingClass(137)->hasPrimary(225));
}

TEST(AirOperatingClass, FindsTheWideChannel) {
    const auto centerOf = [](std::uint8_t number, std::uint8_t primary) {
        const auto channel = operatingClass(number)->wideChannel(primary);
        return channel ? int{channel->center.number} : 0;
    };
    EXPECT_EQ(centerOf(81, 6), 6);
    EXPECT_EQ(centerOf(83, 1), 3);
    EXPECT_EQ(centerOf(84, 13), 11);
    EXPECT_EQ(centerOf(104, 184), 186);
    EXPECT_EQ(centerOf(116, 36), 38);
    EXPECT_EQ(centerOf(117, 36), 0);
    EXPECT_EQ(centerOf(127, 153), 151);
    EXPECT_EQ(centerOf(128, 161), 155);
    EXPECT_EQ(centerOf(129, 36), 50);
    EXPECT_EQ(centerOf(130, 100), 106);
    EXPECT_EQ(centerOf(132, 229), 227);
    EXPECT_EQ(centerOf(136, 2), 2);
    // 31 alone has the channel 1, 31 and 63 have 33.
    EXPECT_EQ(centerOf(137, 1), 31);
    EXPECT_EQ(centerOf(137, 33), 0);
    EXPECT_EQ(centerOf(180, 1), 0);
    EXPECT_EQ(centerOf(96, 131), 0);
}

TEST(AirOperatingClass, TellsTheChannelOfANeighbor) {
    EXPECT_EQ(channelIn(81, 6), (Channel{Band::Ghz2, 6}));
    EXPECT_EQ(channelIn(131, 6), std::nullopt);
    EXPECT_EQ(channelIn(131, 5), (Channel{Band::Ghz6, 5}));
    EXPECT_EQ(channelIn(134, 37), (Channel{Band::Ghz6, 37}));
    EXPECT_EQ(channelIn(134, 47), std::nullopt);
    EXPECT_EQ(channelIn(136, 2), (Channel{Band::Ghz6, 2}));
    EXPECT_EQ(channelIn(101, 21), (Channel{Band::Ghz4, 191}));
    EXPECT_EQ(channelIn(103, 1), std::nullopt);
    EXPECT_EQ(channelIn(0, 36), std::nullopt);
    EXPECT_EQ(channelIn(180, 2), (Channel{Band::Ghz60, 2}));
}

// Every number of every class has a frequency. The channels of 20 MHz and more have a place among
// the wide channels, and centres are those of the bands.
TEST(AirOperatingClass, AgreesWithTheChannels) {
    for (const OperatingClass& row : operatingClasses()) {
        for (const std::uint8_t channel : row.channels) {
            ASSERT_TRUE(row.frequency(channel)) << int{row.number};
            if (row.band == Band::Ghz60 || row.spacing < 40) continue;
            const auto wide = row.hasCenters ? wideChannelAt({row.band, channel}, row.spacing)
                                             : row.wideChannel(channel);
            ASSERT_TRUE(wide) << int{row.number};
            EXPECT_EQ(megahertzOf(wide->width), row.spacing) << int{row.number};
        }
        EXPECT_EQ(row.width(), row.isPair ? 160 : row.spacing);
    }
}

TEST(AirOperatingClass, TellsWhereRadarDetectionIsNeeded) {
    for (const OperatingClass& row : operatingClasses()) {
        EXPECT_EQ(row.needsRadarDetection, row.number >= 118 && row.number <= 123)
            << int{row.number};
    }
    EXPECT_TRUE(operatingClass(130)->isPair);
    EXPECT_TRUE(operatingClass(135)->isPair);
    EXPECT_FALSE(operatingClass(133)->isPair);
}

TEST(AirOperatingClass, TellsItsBehaviorLimits) {
    const auto limits = [](std::uint8_t number) {
        const auto list = operatingClass(number)->behaviorLimits();
        return std::vector<std::string>(list.begin(), list.end());
    };
    using Names = std::vector<std::string>;
    EXPECT_EQ(limits(81), Names());
    EXPECT_EQ(limits(83), Names{"PrimaryChannelLowerBehavior"});
    EXPECT_EQ(limits(84), Names{"PrimaryChannelUpperBehavior"});
    EXPECT_EQ(limits(95), Names{"CCA-EDBehavior"});
    EXPECT_EQ(limits(118), Names{"DFS_50_100_Behavior"});
    EXPECT_EQ(limits(123), (Names{"PrimaryChannelUpperBehavior", "DFS_50_100_Behavior"}));
    EXPECT_EQ(limits(124), Names{"NomadicBehavior"});
    EXPECT_EQ(limits(125), Names{"LicenseExemptBehavior"});
    EXPECT_EQ(limits(130), Names{"80+"});
    EXPECT_EQ(limits(131), Names());
}

}  // namespace

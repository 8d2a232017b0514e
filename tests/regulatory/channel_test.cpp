#include "halvane/regulatory/channel.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <gtest/gtest.h>
#include <iterator>
#include <thread>
#include <utility>
#include <vector>

#include "halvane/regulatory/channel_map_internal.h"

#include "tests/support/scarce_memory.h"

using halvane::ChannelMap;
using halvane::HalvaneChannel;
using halvane::Number;
using halvane::PropertyListDictionary;
using halvane::testing::ScarceMemory;
using halvane::testing::withEachAllocationFailing;

namespace {

struct Row {
    unsigned channel, frequency, extension;
};

// The rows are written out, so that the test does not repeat the rule behind the map.
constexpr Row kRows[] = {
    {1, 2412, 0},     {2, 2417, 0},     {3, 2422, 0},     {4, 2427, 0},     {5, 2432, 0},
    {6, 2437, 0},     {7, 2442, 0},     {8, 2447, 0},     {9, 2452, 0},     {10, 2457, 0},
    {11, 2462, 0},    {12, 2467, 0},    {13, 2472, 0},    {14, 2484, 0},    {34, 5170, 0},
    {36, 5180, 40},   {38, 5190, 0},    {40, 5200, 36},   {42, 5210, 0},    {44, 5220, 48},
    {46, 5230, 0},    {48, 5240, 44},   {52, 5260, 56},   {56, 5280, 52},   {60, 5300, 64},
    {64, 5320, 60},   {100, 5500, 104}, {104, 5520, 100}, {108, 5540, 112}, {112, 5560, 108},
    {116, 5580, 120}, {120, 5600, 116}, {124, 5620, 128}, {128, 5640, 124}, {132, 5660, 136},
    {136, 5680, 132}, {140, 5700, 0},   {149, 5745, 153}, {153, 5765, 149}, {157, 5785, 161},
    {161, 5805, 157}, {165, 5825, 0},
};

TEST(ChannelMap, HoldsEveryRow) {
    EXPECT_EQ(std::size(kRows), 42u);
    for (const Row& row : kRows) {
        EXPECT_EQ(HalvaneChannel::channelFrequencyForNumber(row.channel), row.frequency);
        EXPECT_EQ(HalvaneChannel::channelNumberForFrequency(row.frequency), row.channel);
        EXPECT_EQ(HalvaneChannel::channelExtensionForNumber(row.channel), row.extension);
    }
}

TEST(ChannelMap, KnowsNoOtherChannel) {
    unsigned known = 0;
    for (unsigned channel = 0; channel < 1000; ++channel) {
        if (HalvaneChannel::channelFrequencyForNumber(channel) != 0) ++known;
    }
    EXPECT_EQ(known, 42u);
    EXPECT_EQ(HalvaneChannel::channelFrequencyForNumber(15), 0u);
    EXPECT_EQ(HalvaneChannel::channelExtensionForNumber(15), 0u);
}

TEST(ChannelMap, AnswersTheLastFrequencyForAnUnknownOne) {
    EXPECT_EQ(HalvaneChannel::channelNumberForFrequency(2000), 5825u);
    EXPECT_EQ(HalvaneChannel::channelNumberForFrequency(0), 5825u);
}

TEST(ChannelMap, DropsRowsBeforeItExists) {
    ChannelMap map;
    map.add(196, 4980, 0);
    EXPECT_EQ(map.frequencyForNumber(196), 0u);
}

TEST(ChannelMap, BuildsItselfOnce) {
    ChannelMap map;
    map.build();
    map.add(196, 4980, 0);
    map.build();
    EXPECT_EQ(map.frequencyForNumber(196), 4980u);
    EXPECT_EQ(map.numberForFrequency(2000), 4980u);  // the leftover of the new last row
}

TEST(ChannelMap, TakesTheFirstRowThatAnswers) {
    ChannelMap map;
    map.build();
    map.add(36, 1, 0);
    map.add(165, 1, 169);
    map.add(200, 5180, 0);
    EXPECT_EQ(map.frequencyForNumber(36), 5180u);
    EXPECT_EQ(map.numberForFrequency(5180), 36u);
    // The standard row of channel 165 has no extension. The scan continues to a row that has one.
    EXPECT_EQ(map.extensionForNumber(165), 169u);
}

TEST(ChannelMap, NeedsNoMemoryForItsStandardRows) {
    const ScarceMemory memory(0);
    ChannelMap map;
    map.build();
    for (const Row& row : kRows) {
        EXPECT_EQ(map.frequencyForNumber(row.channel), row.frequency);
        EXPECT_EQ(map.numberForFrequency(row.frequency), row.channel);
        EXPECT_EQ(map.extensionForNumber(row.channel), row.extension);
    }
    EXPECT_EQ(map.numberForFrequency(2000), 5825u);
    EXPECT_EQ(map.frequencyForNumber(196), 0u);
}

TEST(ChannelMap, StaysAsItWasWhenARowFindsNoMemory) {
    ChannelMap map;
    map.build();
    const auto expectOldRows = [&map] {
        EXPECT_EQ(map.frequencyForNumber(196), 0u);
        EXPECT_EQ(map.extensionForNumber(196), 0u);
        EXPECT_EQ(map.numberForFrequency(4980), 5825u);
    };
    EXPECT_GT(withEachAllocationFailing([&map] { map.add(196, 4980, 192); }, expectOldRows), 0u);
    EXPECT_EQ(map.frequencyForNumber(196), 4980u);
    EXPECT_EQ(map.extensionForNumber(196), 192u);
    EXPECT_EQ(map.numberForFrequency(4980), 196u);

    const auto expectOneRow = [&map] { EXPECT_EQ(map.numberForFrequency(2000), 4980u); };
    EXPECT_GT(withEachAllocationFailing([&map] { map.add(184, 4920, 0); }, expectOneRow), 0u);
    EXPECT_EQ(map.numberForFrequency(2000), 4920u);
}

// Every look-up of every added row, against a walk over all rows in order.
TEST(ChannelMap, FindsAddedRowsAsAWalkWould) {
    ChannelMap map;
    map.build();
    std::vector<Row> rows(std::begin(kRows), std::end(kRows));
    for (unsigned i = 0; i < 500; ++i) {
        const Row row = {i * 7 % 230, 5000 + i * 11 % 900, i % 3 == 0 ? 0 : i};
        map.add(row.channel, row.frequency, row.extension);
        rows.push_back(row);
    }
    const auto firstOf = [&rows](auto matches) {
        const auto found = std::ranges::find_if(rows, matches);
        return found != rows.end() ? *found : Row{0, 0, 0};
    };
    for (unsigned number = 0; number < 240; ++number) {
        const auto isIt = [number](const Row& row) { return row.channel == number; };
        const auto hasExtension = [number](const Row& row) {
            return row.channel == number && row.extension != 0;
        };
        EXPECT_EQ(map.frequencyForNumber(number), firstOf(isIt).frequency) << number;
        EXPECT_EQ(map.extensionForNumber(number), firstOf(hasExtension).extension) << number;
    }
    for (unsigned frequency = 4990; frequency < 5910; ++frequency) {
        const auto found = std::ranges::find(rows, frequency, &Row::frequency);
        const unsigned expected = found != rows.end() ? found->channel : rows.back().frequency;
        EXPECT_EQ(map.numberForFrequency(frequency), expected) << frequency;
    }
}

TEST(ChannelMap, IsBuiltOnceByThreadsThatRace) {
    ChannelMap map;
    std::vector<std::thread> threads;
    std::array<unsigned, 8> results{};
    for (unsigned& result : results) {
        threads.emplace_back([&map, &result] { result = map.frequencyForNumber(165); });
    }
    for (auto& thread : threads) thread.join();
    for (const unsigned result : results) EXPECT_EQ(result, 5825u);
}

// Runs in its own process, because any other test may have built the process's map.
TEST(ChannelMapDeathTest, OfTheProcessIsBuiltOnRequest) {
    ::testing::FLAGS_gtest_death_test_style = "threadsafe";
    EXPECT_EXIT(
        {
            HalvaneChannel::addChannelToMapTable_frequency_extensionChannel(183, 4915, 184);
            HalvaneChannel::initChannelMapTable();
            HalvaneChannel::addChannelToMapTable_frequency_extensionChannel(196, 4980, 192);
            const bool isRight = HalvaneChannel::channelFrequencyForNumber(183) == 0 &&
                                 HalvaneChannel::channelFrequencyForNumber(196) == 4980 &&
                                 HalvaneChannel::channelExtensionForNumber(196) == 192 &&
                                 HalvaneChannel::channelNumberForFrequency(2000) == 4980;
            std::exit(isRight ? 0 : 1);
        },
        ::testing::ExitedWithCode(0), "");
}

HalvaneChannel channel52() {
    auto channel = HalvaneChannel::initWithChannel_withFrequency_isRadarProne(52, 5260, true);
    channel.setSupports40MHz(true);
    return channel;
}

TEST(Channel, StartsWithTheFlagsItIsGiven) {
    const auto channel =
        HalvaneChannel::initWithChannel_withFrequency_isRadarProne(52.9, 5260, true);
    EXPECT_EQ(channel.channelNumber(), 52);
    EXPECT_EQ(channel.channelFrequency(), 5260);
    EXPECT_TRUE(channel.isRadarProne());
    EXPECT_FALSE(channel.isDisabled());
    EXPECT_FALSE(channel.supports40MHz());
    EXPECT_FALSE(channel.supports80MHz());
}

TEST(Channel, TakesANumberForItsFlag) {
    const auto isProne = [](const Number& flag) {
        return HalvaneChannel::initWithChannel_withFrequency_isRadarProne(52, 5260, flag)
            .isRadarProne();
    };
    EXPECT_TRUE(isProne(Number(1)));
    EXPECT_TRUE(isProne(Number(-2)));
    EXPECT_TRUE(isProne(Number(0.5)));
    EXPECT_FALSE(isProne(Number(0)));
}

TEST(Channel, DescribesItself) {
    auto quiet = HalvaneChannel::initWithChannel_withFrequency_isRadarProne(36, 5180, false);
    quiet.setSupports40MHz(true);
    EXPECT_EQ(quiet.description(),
              "Channel <36> Frequency <5180> Radar Prone <NO> Supports HT40 <YES>");
    EXPECT_EQ(
        HalvaneChannel::initWithChannel_withFrequency_isRadarProne(52, 5260, true).description(),
        "Channel <52> Frequency <5260> Radar Prone <YES> Supports HT40 <NO>");
    EXPECT_EQ(channel52().description(),
              "Channel <52> Frequency <5260> Radar Prone <YES> Supports HT40 <YES>");
    EXPECT_EQ(HalvaneChannel::initWithChannel_withFrequency_isRadarProne(7, 0, false).description(),
              "Channel <7> Radar Prone <NO> Supports HT40 <NO>");
    auto hidden = channel52();
    hidden.setIsDisabled(true);
    hidden.setSupports80MHz(true);
    EXPECT_EQ(hidden.description(), channel52().description());
    hidden.setChannelFrequency(-1);
    EXPECT_EQ(hidden.description(), "Channel <52> Radar Prone <YES> Supports HT40 <YES>");
}

TEST(Channel, WritesAllSixKeys) {
    PropertyListDictionary expected;
    expected.set("ChannelNumber", 52);
    expected.set("ChannelFrequency", 5260);
    expected.set("isRadarProne", true);
    expected.set("isDisabled", false);
    expected.set("supports40MHz", true);
    expected.set("supports80MHz", false);
    EXPECT_EQ(channel52().skeletonRepresentation(), expected);
}

TEST(Channel, ReadsBackWhatItWrites) {
    for (unsigned flags = 0; flags < 16; ++flags) {
        auto channel = HalvaneChannel::initWithChannel_withFrequency_isRadarProne(
            INT64_MAX, INT64_MIN, (flags & 1) != 0);
        channel.setIsDisabled((flags & 2) != 0);
        channel.setSupports40MHz((flags & 4) != 0);
        channel.setSupports80MHz((flags & 8) != 0);
        const auto skeleton = channel.skeletonRepresentation();
        const auto back = HalvaneChannel::initWithSkeletonRepresentation(skeleton);
        EXPECT_EQ(back.skeletonRepresentation(), skeleton);
        EXPECT_EQ(back.channelNumber(), INT64_MAX);
        EXPECT_EQ(back.isDisabled(), (flags & 2) != 0);
    }
}

TEST(Channel, ReadsMissingAndWrongKeysAsNothing) {
    auto skeleton = channel52().skeletonRepresentation();
    skeleton.erase("isDisabled");
    skeleton.set("supports40MHz", "yes");
    skeleton.set("ChannelNumber", PropertyListDictionary());
    skeleton.set("supports80MHz", 1);  // a number stands in for a boolean
    const auto channel = HalvaneChannel::initWithSkeletonRepresentation(skeleton);
    EXPECT_FALSE(channel.isDisabled());
    EXPECT_FALSE(channel.supports40MHz());
    EXPECT_TRUE(channel.supports80MHz());
    EXPECT_EQ(channel.channelNumber(), 0);
    EXPECT_EQ(channel.channelFrequency(), 5260);

    const auto empty = HalvaneChannel::initWithSkeletonRepresentation({});
    EXPECT_EQ(empty.channelNumber(), 0);
    EXPECT_FALSE(empty.isRadarProne());
}

}  // namespace

#include "tools/halvane/report/chart_scale.h"

#include <cstdint>
#include <gtest/gtest.h>
#include <vector>

#include "halvane/air/channel.h"
#include "halvane/air/channel_use.h"

#include "tests/tools/networks/networks_for_tests.h"

using namespace halvane;
using namespace halvane::tool;
using halvane::testing::derived;

namespace {

air::ChannelUse channelOf(air::Band band, int center, int width) {
    air::ChannelUse channel;
    channel.band = derived(band);
    channel.span.value = {.width = width, .center1 = center};
    return channel;
}

// 93.6 per cent are for 615 MHz, and 1.6 for the gap.
TEST(ChartScale, IsLinearOverThePiecesOfABand) {
    const auto scale = ChartScale::of(air::Band::Ghz5);
    ASSERT_TRUE(scale);
    EXPECT_DOUBLE_EQ(scale->xOf(5155), 4.2);
    EXPECT_NEAR(scale->xOf(5180), 4.2 + 25 * 93.6 / 615, 1e-9);
    EXPECT_NEAR(scale->xOf(5345), 4.2 + 190 * 93.6 / 615, 1e-9);
    EXPECT_NEAR(scale->xOf(5475), 4.2 + 190 * 93.6 / 615 + 1.6, 1e-9);
    EXPECT_NEAR(scale->xOf(5900), 99.4, 1e-9);
    EXPECT_FALSE(ChartScale::of(air::Band::Ghz60));
}

TEST(ChartScale, HasEveryChannelWithinItsPieces) {
    for (const auto band : {air::Band::Ghz2, air::Band::Ghz5, air::Band::Ghz6}) {
        const auto scale = ChartScale::of(band);
        for (const int channel : scale->channels()) {
            const auto frequency = air::centerFrequencyOf(band, channel);
            ASSERT_TRUE(frequency) << channel;
            EXPECT_EQ(scale->shown({*frequency - 1.0, *frequency + 1.0}).size(), 1u) << channel;
        }
    }
}

TEST(ChartScale, KeepsSignalsWithinItself) {
    EXPECT_DOUBLE_EQ(ChartScale::yOf(-15), 46);
    EXPECT_DOUBLE_EQ(ChartScale::yOf(-55), 196);
    EXPECT_DOUBLE_EQ(ChartScale::yOf(0), 46);
    EXPECT_DOUBLE_EQ(ChartScale::yOf(-127), 344);
}

TEST(ChartScale, CutsWhatLeavesTheBand) {
    const auto scale = ChartScale::of(air::Band::Ghz5);
    EXPECT_EQ(scale->shown({5235, 5395}), (std::vector<FrequencyRange>{{5235, 5345}}));
    EXPECT_EQ(scale->shown({5300, 5500}),
              (std::vector<FrequencyRange>{{5300, 5345}, {5475, 5500}}));
    EXPECT_TRUE(scale->shown({5350, 5450}).empty());
}

TEST(Segments, AreOneOrTwo) {
    const auto one = segmentsOf(channelOf(air::Band::Ghz5, 5210, 80));
    ASSERT_EQ(one.size(), 1u);
    EXPECT_EQ(one[0].range, (FrequencyRange{5170, 5250}));

    auto channel = channelOf(air::Band::Ghz5, 5775, 160);
    channel.span.value.center2 = 5210;
    const auto two = segmentsOf(channel);
    ASSERT_EQ(two.size(), 2u);
    EXPECT_EQ(two[0].range, (FrequencyRange{5170, 5250}));
    EXPECT_EQ(two[1].range, (FrequencyRange{5735, 5815}));
    EXPECT_EQ(two[1].firstIndex, 4);

    EXPECT_TRUE(segmentsOf(air::ChannelUse()).empty());
}

TEST(Segments, LeaveOutWhatIsPunctured) {
    auto channel = channelOf(air::Band::Ghz5, 5210, 80);
    channel.punctured = derived<std::uint16_t>(0b0110);
    const auto parts = partsOf(segmentsOf(channel)[0], channel);
    EXPECT_EQ(parts.used, (std::vector<FrequencyRange>{{5170, 5190}, {5230, 5250}}));
    EXPECT_EQ(parts.punctured, (std::vector<FrequencyRange>{{5190, 5230}}));
    EXPECT_TRUE(reaches(channel, 5180));
    EXPECT_FALSE(reaches(channel, 5200));
    EXPECT_FALSE(reaches(channel, 5220));
    EXPECT_TRUE(reaches(channel, 5240));
    EXPECT_FALSE(reaches(channel, 5260));
}

}  // namespace

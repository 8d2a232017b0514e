// Channels that operation elements tell in ways that do not fit together. What a profile says of
// the channel is consistent all the same, and findings tell what is wrong.
#include "halvane/air/channel_use.h"

#include <algorithm>
#include <cstdint>
#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <string_view>

#include "halvane/air/bss_profile.h"
#include "halvane/air/finding.h"
#include "halvane/air/profile.h"

#include "tests/air/element_samples.h"
#include "tests/support/elements.h"
#include "tests/support/hostile_bytes.h"

using halvane::testing::Bytes;
using halvane::testing::bytesOf;
using halvane::testing::element;
using halvane::testing::joined;
using namespace halvane::air;

namespace {

Bytes extended(std::string_view hex) {
    return element(255, bytesOf(hex));
}

// HE Operation at 6 GHz (802.11ax-2021, 9.4.2.249): primary channel 37, 80 MHz around channel 39.
const Bytes kHeOperation = extended("24 000002 01 FCFF 25 02 27 00 06");

// HT Operation: primary channel 36, the secondary channel above it (9.4.2.56).
const Bytes kHtOperation = element(61, bytesOf("24 05 00000000 00000000000000000000000000000000"));

Bytes vhtOperation(std::string_view information) {
    return element(192, bytesOf(std::string(information) + "FCFF"));
}

// EHT Operation with Disabled Subchannel Bitmap (802.11be-2024, 9.4.2.311).
Bytes ehtOperation(std::string_view information) {
    return extended("6A 03 11000000 " + std::string(information));
}

bool hasFinding(const BssProfile& profile, FindingKind kind) {
    return std::ranges::count(profile.findings, kind, &Finding::kind) > 0;
}

// A second centre makes 80+80 MHz only beside a first one.
TEST(AirChannelUse, TakesOneCentreAloneFor80Mhz) {
    struct Row {
        std::string_view vht;
        std::optional<int> center;
    };
    const Row rows[] = {{"01 00 9B", {}}, {"03 00 9B", {}}, {"03 2A 00", 5210}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.vht);
        const auto profile = profileOf(joined({kHtOperation, vhtOperation(row.vht)}));
        EXPECT_EQ(profile.channel.span->width, 80);
        EXPECT_EQ(profile.channel.span->center1, row.center);
        EXPECT_FALSE(profile.channel.span->center2);
        EXPECT_TRUE(hasFinding(profile, FindingKind::VhtCentersInvalid));
    }
}

TEST(AirChannelUse, TellsPuncturedPartsOfTheChannelAlone) {
    // 80 MHz around channel 39; the bits 1 and 9.
    const auto profile = profileOf(joined({kHeOperation, ehtOperation("02 27 00 0202")}));
    ASSERT_TRUE(profile.channel.punctured);
    EXPECT_EQ(**profile.channel.punctured, 0x0002);
    EXPECT_TRUE(hasFinding(profile, FindingKind::PuncturingInvalid));
}

TEST(AirChannelUse, FindsPuncturingBesideTheChannel) {
    const auto profile = profileOf(joined({kHeOperation, ehtOperation("02 27 00 0002")}));
    ASSERT_TRUE(profile.channel.punctured);
    EXPECT_EQ(**profile.channel.punctured, 0);
    EXPECT_TRUE(hasFinding(profile, FindingKind::PuncturingInvalid));
}

// Without a band, nothing is known of the channel.
TEST(AirChannelUse, TellsNoPuncturingWithoutABand) {
    const auto profile = profileOf(ehtOperation("03 27 2F 0400"));
    EXPECT_FALSE(profile.channel.band);
    EXPECT_EQ(profile.channel.span.rule, Rule::WidthDefault);
    EXPECT_FALSE(profile.channel.punctured);
}

// The bits count from the lowest frequency of a width that is not known.
TEST(AirChannelUse, TellsNoPuncturingOfAReservedWidth) {
    const auto profile = profileOf(joined({kHeOperation, ehtOperation("05 27 00 0200")}));
    EXPECT_EQ(profile.channel.span->width, 80);
    EXPECT_EQ(profile.channel.span.rule, Rule::WidthHe6Ghz);
    EXPECT_FALSE(profile.channel.punctured);
}

}  // namespace

#include "halvane/air/width_claim.h"

#include <algorithm>
#include <cstdint>
#include <gtest/gtest.h>
#include <string>
#include <string_view>

#include "halvane/air/bss_profile.h"
#include "halvane/air/channel_use.h"
#include "halvane/air/element_id.h"
#include "halvane/air/profile.h"
#include "halvane/air/rule.h"

#include "tests/air/element_samples.h"
#include "tests/support/elements.h"
#include "tests/support/hostile_bytes.h"

using halvane::testing::Bytes;
using halvane::testing::bytesOf;
using halvane::testing::element;
using halvane::testing::htOperationElement;
using halvane::testing::joined;
using namespace halvane::air;

namespace {

Bytes vhtOperation(std::string_view information) {
    return element(192, bytesOf(information));
}

Bytes extended(std::string_view hex) {
    return element(255, bytesOf(hex));
}

// VHT Operation: channel width 1, centres 42 and 50 (IEEE 802.11-2020, 9.4.2.158).
TEST(AirWidthClaim, ListsWhatEachElementTells) {
    const auto claims = widthClaimsOf(
        joined({htOperationElement(36, 5), vhtOperation("01 2A 32 FCFF")}), Band::Ghz5);
    ASSERT_EQ(claims.size(), 2u);
    const WidthClaim vht = {.source = {Origin::Element, ElementId::VhtOperation, 24},
                            .rule = Rule::WidthVht160,
                            .field = 1,
                            .segment0 = 42,
                            .segment1 = 50,
                            .width = 160,
                            .center1 = 50};
    EXPECT_EQ(claims[0], vht);
    const WidthClaim ht = {.source = {Origin::Element, ElementId::HtOperation, 0},
                           .rule = Rule::WidthHt,
                           .field = 1,
                           .width = 40,
                           .center1 = 38};
    EXPECT_EQ(claims[1], ht);
}

TEST(AirWidthClaim, TellsOfElementsWithoutAWidth) {
    const auto claims =
        widthClaimsOf(joined({htOperationElement(6, 0), vhtOperation("00 00 00 FCFF"),
                              extended("6A 00 11000000")}),
                      Band::Ghz5);
    ASSERT_EQ(claims.size(), 3u);
    EXPECT_EQ(claims[0].source.id, ElementId::EhtOperation);
    EXPECT_EQ(claims[1].source.id, ElementId::VhtOperation);
    EXPECT_EQ(claims[2].source.id, ElementId::HtOperation);
    for (const WidthClaim& claim : claims) {
        EXPECT_EQ(claim.width, 0);
        EXPECT_EQ(claim.rule, Rule::None);
    }
}

TEST(AirWidthClaim, PassesVhtOverAt24Ghz) {
    const auto claims = widthClaimsOf(
        joined({htOperationElement(6, 0), vhtOperation("01 2A 00 FCFF")}), Band::Ghz2);
    ASSERT_EQ(claims.size(), 2u);
    EXPECT_TRUE(claims[0].isPassedOver);
    EXPECT_FALSE(claims[1].isPassedOver);
}

TEST(AirWidthClaim, LeavesOutHeOperationWithoutAChannel) {
    EXPECT_TRUE(widthClaimsOf(extended("24 F43F00 3B FCFF"), Band::Ghz5).empty());
    EXPECT_EQ(widthClaimsOf(extended("24 000002 01 FCFF 25 02 27 00 06"), Band::Ghz6).size(), 1u);
}

TEST(AirWidthClaim, TakesTheSecondCentreFromHtOperation) {
    // HT Operation: channel 36, 40 MHz above, Channel Center Frequency Segment 2 is 50.
    const auto claims = widthClaimsOf(
        joined({element(61, bytesOf("24 05 4006 0000 00000000000000000000000000000000")),
                vhtOperation("01 2A 00 FCFF")}),
        Band::Ghz5);
    ASSERT_EQ(claims.size(), 2u);
    EXPECT_EQ(claims[0].rule, Rule::WidthVhtExtendedNss);
    EXPECT_EQ(claims[0].segment1, 50);
    EXPECT_EQ(claims[0].width, 160);
}

// The first claim that tells a width is the width of the profile.
TEST(AirWidthClaim, AgreesWithTheProfile) {
    for (const char* const vht : {"00 00 00", "01 2A 00", "01 2A 32", "01 2A 9B", "02 32 00",
                                  "03 2A 9B", "03 00 00", "07 2A 00"}) {
        for (const int offset : {0, 1, 3}) {
            const Bytes elements =
                joined({htOperationElement(36, static_cast<std::uint8_t>(offset)),
                        element(192, bytesOf(std::string(vht) + "FCFF"))});
            const auto profile = profileOf(elements, {}, {5180});
            const auto claims = widthClaimsOf(elements, Band::Ghz5);
            const auto* const found = std::find_if(
                claims.begin(), claims.end(),
                [](const WidthClaim& claim) { return claim.width != 0 && !claim.isPassedOver; });
            SCOPED_TRACE(std::string(vht) + " " + std::to_string(offset));
            if (found == claims.end()) {
                EXPECT_EQ(profile.channel.span.rule, Rule::WidthDefault);
            } else {
                EXPECT_EQ(profile.channel.span->width, found->width);
                EXPECT_EQ(profile.channel.span.rule, found->rule);
                EXPECT_EQ(profile.channel.span.sources[0], found->source);
            }
        }
    }
}

}  // namespace

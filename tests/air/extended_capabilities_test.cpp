#include "halvane/air/extended_capabilities.h"

#include <gtest/gtest.h>
#include <string>

#include "tests/air/element_samples.h"
#include "tests/air/told_fields.h"

using halvane::testing::bytesOf;
using halvane::testing::ToldFields;
using namespace halvane::air;

namespace {

// Table 9-153: bits 2, 19, 22, 62, 77, 80 and 84.
TEST(AirExtendedCapabilities, NamesTheFlags) {
    const auto extended = ExtendedCapabilities::decode(bytesOf("0400480000000040 00201100"));
    ASSERT_TRUE(extended);
    EXPECT_TRUE(extended->has(ExtendedCapability::ExtendedChannelSwitching));
    EXPECT_TRUE(extended->has(ExtendedCapability::BssTransition));
    EXPECT_TRUE(extended->has(ExtendedCapability::MultipleBssid));
    EXPECT_TRUE(extended->has(ExtendedCapability::OperatingModeNotification));
    EXPECT_TRUE(extended->has(ExtendedCapability::TwtRequester));
    EXPECT_FALSE(extended->has(ExtendedCapability::TwtResponder));
    EXPECT_TRUE(extended->has(ExtendedCapability::CompleteNonTxBssidProfiles));
    EXPECT_TRUE(extended->has(ExtendedCapability::BeaconProtection));
    EXPECT_FALSE(extended->has(ExtendedCapability::I2rLmrFeedback));
    EXPECT_FALSE(extended->maximumMsdusInAmsdu());
    EXPECT_EQ(extended->serviceIntervalGranularity(), 5);
}

TEST(AirExtendedCapabilities, TellsTheFieldsOfSeveralBits) {
    const auto extended = ExtendedCapabilities::decode(bytesOf("0000000000060080 01"));
    ASSERT_TRUE(extended);
    EXPECT_EQ(extended->serviceIntervalGranularity(), 20);
    EXPECT_EQ(extended->maximumMsdusInAmsdu(), 8);
    EXPECT_EQ(ExtendedCapabilities::decode(bytesOf("0000000000000080"))->maximumMsdusInAmsdu(), 32);
}

TEST(AirExtendedCapabilities, MayHaveAnyLength) {
    EXPECT_FALSE(ExtendedCapabilities::decode({})->has(ExtendedCapability::Coexistence2040));
    EXPECT_TRUE(
        ExtendedCapabilities::decode(bytesOf("01"))->has(ExtendedCapability::Coexistence2040));
    ToldFields fields;
    EXPECT_FALSE(ExtendedCapabilities::describe(bytesOf("04"), fields));
    EXPECT_EQ(fields.text_,
              "20/40 BSS Coexistence Management Support=0;General Link=0;"
              "Extended Channel Switching=1;GLK-GCR=0;PSMP Capability=0;Reserved=0;"
              "S-PSMP Support=0;Event=0;");
}

// Bits 63 and 64 are one field. Where the second octet is missing, its bit is not set.
TEST(AirExtendedCapabilities, TellsAFieldThatTheEndCuts) {
    ToldFields fields;
    EXPECT_FALSE(ExtendedCapabilities::describe(bytesOf("0000000000000080"), fields));
    EXPECT_TRUE(fields.text_.ends_with("Max Number Of MSDUs In A-MSDU=32;")) << fields.text_;
}

// 802.11az, table 9-190: eight flags from bit 90 on.
TEST(AirExtendedCapabilities, NamesTheFlagsOfRanging) {
    const auto extended = ExtendedCapabilities::decode(bytesOf("0000000000000000000000 50 02"));
    ASSERT_TRUE(extended);
    EXPECT_TRUE(extended->has(ExtendedCapability::PassiveTbRangingResponderMeasurement));
    EXPECT_FALSE(extended->has(ExtendedCapability::PassiveTbRangingInitiatorMeasurement));
    EXPECT_TRUE(extended->has(ExtendedCapability::AoaMeasurement));
    EXPECT_TRUE(extended->has(ExtendedCapability::I2rLmrFeedback));
    ToldFields fields;
    EXPECT_FALSE(ExtendedCapabilities::describe(extended->encode(), fields));
    EXPECT_NE(fields.text_.find("AOA Measurement Available=1;Phase Shift Feedback Support=0;"
                                "DMG/Location Supporting APs In The Area=0;"
                                "I2R LMR Feedback Policy=1;Reserved=0;"),
              std::string::npos)
        << fields.text_;
}

TEST(AirExtendedCapabilities, GrowsWithItsFlags) {
    ExtendedCapabilities extended;
    extended.setCapability(ExtendedCapability::BssTransition);
    EXPECT_EQ(extended.encode(), bytesOf("000008"));
    extended.setCapability(ExtendedCapability::Coexistence2040);
    EXPECT_EQ(extended.encode(), bytesOf("010008"));
}

}  // namespace

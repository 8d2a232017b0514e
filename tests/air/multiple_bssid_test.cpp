#include "halvane/air/multiple_bssid.h"

#include <gtest/gtest.h>

#include "halvane/air/multiple_bssid_configuration.h"
#include "halvane/air/multiple_bssid_index.h"
#include "halvane/air/non_inheritance.h"
#include "halvane/air/nontransmitted_bssid_capability.h"

#include "tests/air/element_samples.h"
#include "tests/air/told_elements.h"

using halvane::ByteBuffer;
using halvane::testing::bytesOf;
using halvane::testing::ToldElements;
using namespace halvane::air;

namespace {

// 9.4.2.45, figure 9-309.
TEST(AirMultipleBssid, DecodesItsSubelements) {
    const auto element = MultipleBssid::decode(bytesOf("04 00 04 53021104 DD 01 AA 00 05 53"));
    ASSERT_TRUE(element);
    EXPECT_EQ(element->maxIndicator, 4);
    ASSERT_EQ(element->subelements.size(), 2u);
    EXPECT_EQ(element->subelements[0].id, kNontransmittedProfile);
    EXPECT_EQ(element->subelements[0].body, ByteBuffer(bytesOf("53021104")));
    EXPECT_EQ(element->subelements[1].id, 221);
    EXPECT_EQ(element->rest, ByteBuffer(bytesOf("000553")));
    EXPECT_FALSE(MultipleBssid::decode({}));
}

TEST(AirMultipleBssid, TellsWhichOctetsHoldElements) {
    ToldElements told;
    EXPECT_FALSE(MultipleBssid::describe(bytesOf("04 00 04 53021104 DD 01 AA 00 00"), told));
    EXPECT_EQ(told.list, "Data @3 |53021104\n");
    EXPECT_EQ(told.otherLabels, "Data;Data;");  // of the vendor's, and without an octet
}

TEST(AirMultipleBssid, IsEncodedFromItsFields) {
    MultipleBssid element;
    element.maxIndicator = 2;
    element.subelements.push_back({kNontransmittedProfile, ByteBuffer(bytesOf("53021104"))});
    EXPECT_EQ(element.encode(), bytesOf("02 00 04 53021104"));
}

TEST(AirNontransmittedBssidCapability, DecodesTheBits) {
    const auto element = NontransmittedBssidCapability::decode(bytesOf("1104"));
    ASSERT_TRUE(element);
    EXPECT_TRUE(element->capabilities.isEss());
    EXPECT_FALSE(element->capabilities.isIbss());
    EXPECT_TRUE(element->capabilities.hasPrivacy());
    EXPECT_TRUE(element->capabilities.hasShortSlotTime());
    EXPECT_FALSE(element->capabilities.hasQos());
    EXPECT_FALSE(NontransmittedBssidCapability::decode(bytesOf("11")));
}

TEST(AirMultipleBssidIndex, LacksTheDtimOutsideBeacons) {
    const auto beacon = MultipleBssidIndex::decode(bytesOf("03 02 01"));
    ASSERT_TRUE(beacon);
    EXPECT_EQ(beacon->index, 3);
    EXPECT_EQ(beacon->dtimPeriod, 2);
    EXPECT_EQ(beacon->dtimCount, 1);
    const auto response = MultipleBssidIndex::decode(bytesOf("03"));
    ASSERT_TRUE(response);
    EXPECT_FALSE(response->dtimPeriod || response->dtimCount);
    EXPECT_FALSE(MultipleBssidIndex::decode({}));
}

TEST(AirMultipleBssidConfiguration, DecodesBothNumbers) {
    const auto element = MultipleBssidConfiguration::decode(bytesOf("08 03"));
    ASSERT_TRUE(element);
    EXPECT_EQ(element->bssidCount, 8);
    EXPECT_EQ(element->fullSetRxPeriodicity, 3);
    EXPECT_FALSE(MultipleBssidConfiguration::decode(bytesOf("08")));
}

TEST(AirNonInheritance, DecodesBothLists) {
    const auto element = NonInheritance::decode(bytesOf("02 30 46 01 6C"));
    ASSERT_TRUE(element);
    EXPECT_TRUE(element->contains(ElementId::Rsn));
    EXPECT_TRUE(element->contains(ElementId::RmEnabledCapabilities));
    EXPECT_TRUE(element->contains(ElementId::EhtCapabilities));
    EXPECT_FALSE(element->contains(ElementId::Ssid));
    EXPECT_FALSE(element->contains(ElementId::EhtOperation));
    EXPECT_FALSE(element->contains(ElementId{0x6C}));
}

TEST(AirNonInheritance, MayLackTheSecondList) {
    const auto element = NonInheritance::decode(bytesOf("01 30"));
    ASSERT_TRUE(element);
    EXPECT_TRUE(element->contains(ElementId::Rsn));
    EXPECT_FALSE(element->extensionIds);
    EXPECT_FALSE(element->contains(ElementId::EhtCapabilities));
    EXPECT_FALSE(NonInheritance::decode(bytesOf("02 30")));
    EXPECT_FALSE(NonInheritance::decode(bytesOf("01 30 02 6C")));
    EXPECT_FALSE(NonInheritance::decode({}));
}

}  // namespace

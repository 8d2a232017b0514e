#include "halvane/air/he_operation.h"

#include <gtest/gtest.h>

#include "tests/air/element_samples.h"

using halvane::testing::bytesOf;
using namespace halvane::air;

namespace {

// Parameters: PE duration 4 (16 us), TWT required, no threshold (1023 in bits 4 to 13), the bits
// 14, 15 and 17. Colour 42, disabled. Then 80 MHz on 42, indicator 3, and 160 MHz on 6 GHz
// channel 37.
constexpr auto kEverything = "FCFF02 AA FCFF 01 2A 00 03 25 0F 27 2F 06";

TEST(AirHeOperation, DecodesEveryField) {
    const auto element = HeOperation::decode(bytesOf(kEverything));
    ASSERT_TRUE(element);
    EXPECT_EQ(element->defaultPeDuration(), 16);
    EXPECT_TRUE(element->isTwtRequired());
    EXPECT_FALSE(element->txopDurationRtsThreshold());
    EXPECT_TRUE(element->isCoHosted());
    EXPECT_FALSE(element->isErSuDisabled());
    EXPECT_EQ(element->bssColor(), 42);
    EXPECT_FALSE(element->isPartialBssColor());
    EXPECT_TRUE(element->isBssColorDisabled());
    EXPECT_EQ(element->basicMcs.streams(), 1);
    ASSERT_TRUE(element->vht);
    EXPECT_EQ(element->vht->channelWidth, 1);
    EXPECT_EQ(element->vht->centerSegment0, 42);
    EXPECT_EQ(element->maxCoHostedBssidIndicator, 3);
    ASSERT_TRUE(element->sixGhz);
    EXPECT_EQ(element->sixGhz->primaryChannel, 37);
    EXPECT_EQ(element->sixGhz->channelWidth(),
              SixGhzOperationInformation::ChannelWidth::Mhz160Or80Plus80);
    EXPECT_TRUE(element->sixGhz->isDuplicateBeacon());
    EXPECT_EQ(element->sixGhz->regulatoryInfo(), 1);
    EXPECT_EQ(element->sixGhz->centerSegment0, 39);
    EXPECT_EQ(element->sixGhz->centerSegment1, 47);
    EXPECT_EQ(element->sixGhz->minimumRate, 6);
}

TEST(AirHeOperation, NeedsWhatTheParametersTell) {
    const auto bare = HeOperation::decode(bytesOf("000000 00 FFFF"));
    ASSERT_TRUE(bare);
    EXPECT_FALSE(bare->vht || bare->maxCoHostedBssidIndicator || bare->sixGhz);
    EXPECT_EQ(bare->txopDurationRtsThreshold(), 0);
    EXPECT_FALSE(HeOperation::decode(bytesOf("000000 00 FF")));
    EXPECT_FALSE(HeOperation::decode(bytesOf("004000 00 FFFF 012A")));
    EXPECT_FALSE(HeOperation::decode(bytesOf("008000 00 FFFF")));
    EXPECT_FALSE(HeOperation::decode(bytesOf("000002 00 FFFF 25002700")));
}

TEST(AirHeOperation, TakesEachOptionalFieldAlone) {
    const auto sixGhz = HeOperation::decode(bytesOf("000002 00 FFFF 01 01 03 00 0C"));
    ASSERT_TRUE(sixGhz && sixGhz->sixGhz);
    EXPECT_EQ(sixGhz->sixGhz->primaryChannel, 1);
    EXPECT_EQ(sixGhz->sixGhz->channelWidth(), SixGhzOperationInformation::ChannelWidth::Mhz40);
    EXPECT_FALSE(sixGhz->vht || sixGhz->maxCoHostedBssidIndicator);
    const auto coHosted = HeOperation::decode(bytesOf("008000 00 FFFF 04"));
    ASSERT_TRUE(coHosted);
    EXPECT_EQ(coHosted->maxCoHostedBssidIndicator, 4);
    EXPECT_FALSE(coHosted->vht || coHosted->sixGhz);
}

TEST(AirHeOperation, IsEncodedFromItsFields) {
    HeOperation element;
    element.parameters.setBits(4, 10, 1023);
    element.bssColorInformation.setBits(0, 6, 5);
    element.setSixGhz(SixGhzOperationInformation{
        .primaryChannel = 5, .control = {{0x02}}, .centerSegment0 = 7, .minimumRate = 6});
    EXPECT_EQ(element.encode(), bytesOf("F03F02 05 FFFF 05 02 07 00 06"));
    EXPECT_EQ(HeOperation::decode(element.encode()), element);
    element.setSixGhz({});
    element.setMaxCoHostedBssidIndicator(2);
    element.setVht(VhtOperationInformation{.channelWidth = 1, .centerSegment0 = 42});
    EXPECT_EQ(element.encode(), bytesOf("F0FF00 05 FFFF 01 2A 00 02"));
}

}  // namespace

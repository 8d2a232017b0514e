#include "halvane/air/transmit_power_envelope.h"

#include <cstddef>
#include <cstdint>
#include <gtest/gtest.h>

#include "halvane/base/inline_list.h"

#include "tests/air/element_samples.h"

using halvane::testing::bytesOf;
using namespace halvane::air;

namespace {

using Interpretation = TransmitPowerEnvelope::Interpretation;

// Count 2, local EIRP: 20, 40 and 80 MHz, 15, 18 and 21 dBm.
TEST(AirTransmitPowerEnvelope, DecodesPowersByWidth) {
    const auto element = TransmitPowerEnvelope::decode(bytesOf("02 1E 24 2A"));
    ASSERT_TRUE(element);
    EXPECT_EQ(element->interpretation(), Interpretation::LocalEirp);
    EXPECT_FALSE(element->isPsd());
    EXPECT_EQ(element->category(), 0);
    EXPECT_EQ(element->values, (halvane::InlineList<std::int8_t, 8>{30, 36, 42}));
    EXPECT_FALSE(element->power320);
    EXPECT_FALSE(TransmitPowerEnvelope::decode(bytesOf("02 1E 24")));
}

TEST(AirTransmitPowerEnvelope, DecodesThePowerFor320Mhz) {
    const auto element = TransmitPowerEnvelope::decode(bytesOf("53 1E 24 2A 30 36"));
    ASSERT_TRUE(element);
    EXPECT_EQ(element->interpretation(), Interpretation::RegulatoryClientEirp);
    EXPECT_EQ(element->category(), 1);
    EXPECT_EQ(element->values.size(), 4u);
    EXPECT_EQ(element->power320, 54);
}

// The counts 0 to 4 of a PSD are 1, 1, 2, 4 and 8 values.
TEST(AirTransmitPowerEnvelope, CountsTheDensities) {
    const std::size_t counts[] = {1, 1, 2, 4, 8, 0, 0, 0};
    for (std::uint8_t count = 0; count < 8; ++count) {
        const TransmitPowerEnvelope psd{.information = {{static_cast<std::uint8_t>(0x08 | count)}}};
        EXPECT_EQ(psd.valueCount(), counts[count]);
        EXPECT_EQ(psd.isPsdOfWholeChannel(), count == 0);
        const TransmitPowerEnvelope eirp{.information = {{count}}};
        EXPECT_EQ(eirp.valueCount(), count < 4 ? count + 1u : 0u);
        EXPECT_FALSE(eirp.isPsdOfWholeChannel());
    }
}

// Two 20 MHz, of which one is forbidden.
TEST(AirTransmitPowerEnvelope, DecodesDensities) {
    const auto element = TransmitPowerEnvelope::decode(bytesOf("1A FE 80"));
    ASSERT_TRUE(element);
    EXPECT_EQ(element->interpretation(), Interpretation::RegulatoryClientEirpPsd);
    ASSERT_EQ(element->values.size(), 2u);
    EXPECT_EQ(element->values[0], -2);
    EXPECT_EQ(element->values[1], TransmitPowerEnvelope::kForbidden);
    EXPECT_FALSE(element->psdExtension);
}

TEST(AirTransmitPowerEnvelope, DecodesMoreDensitiesFor320Mhz) {
    const auto element =
        TransmitPowerEnvelope::decode(bytesOf("2C 0102030405060708 08 11121314151617 7F 99"));
    ASSERT_TRUE(element && element->psdExtension);
    EXPECT_EQ(element->interpretation(), Interpretation::AdditionalRegulatoryClientEirpPsd);
    EXPECT_EQ(element->values.size(), 8u);
    ASSERT_EQ(element->psdExtension->values.size(), 8u);
    EXPECT_EQ(element->psdExtension->values[7], TransmitPowerEnvelope::kNoLimit);
    EXPECT_EQ(element->rest.size(), 1u);
    EXPECT_FALSE(TransmitPowerEnvelope::decode(bytesOf("08 01 02 11")));
}

TEST(AirTransmitPowerEnvelope, KeepsWhatIsReserved) {
    for (const char* hex : {"30 010203", "38 010203", "04 010203"}) {
        const auto element = TransmitPowerEnvelope::decode(bytesOf(hex));
        ASSERT_TRUE(element) << hex;
        EXPECT_TRUE(element->values.empty()) << hex;
        EXPECT_EQ(element->encode(), bytesOf(hex));
    }
    EXPECT_FALSE(TransmitPowerEnvelope::decode({}));
}

TEST(AirTransmitPowerEnvelope, IsEncodedFromItsFields) {
    TransmitPowerEnvelope element{.information = {{0x01}}};
    element.values = {40, -1};
    EXPECT_EQ(element.encode(), bytesOf("01 28 FF"));
}

}  // namespace

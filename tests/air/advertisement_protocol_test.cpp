#include "halvane/air/advertisement_protocol.h"

#include <gtest/gtest.h>

#include "tests/air/element_samples.h"

using halvane::ByteBuffer;
using halvane::testing::bytesOf;
using namespace halvane::air;

namespace {

TEST(AirAdvertisementProtocol, DecodesEachTuple) {
    const auto element = AdvertisementProtocol::decode(bytesOf("7F00 82DD04506F9A01"));
    ASSERT_TRUE(element);
    ASSERT_EQ(element->protocols.size(), 2u);
    EXPECT_EQ(element->protocols[0].protocol(), AdvertisementProtocolId::Anqp);
    EXPECT_FALSE(element->protocols[0].responseLimit());
    EXPECT_FALSE(element->protocols[0].isPameBi());
    EXPECT_EQ(element->protocols[1].protocol(), AdvertisementProtocolId::Vendor);
    EXPECT_EQ(element->protocols[1].responseLimit(), 512);
    EXPECT_TRUE(element->protocols[1].isPameBi());
    EXPECT_EQ(element->protocols[1].vendor, ByteBuffer({0x50, 0x6F, 0x9A, 0x01}));
    EXPECT_FALSE(AdvertisementProtocol::decode(bytesOf("7F")));
    EXPECT_FALSE(AdvertisementProtocol::decode(bytesOf("7FDD04506F9A")));
}

}  // namespace

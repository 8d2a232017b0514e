#include "halvane/air/channel_switch_wrapper.h"

#include <gtest/gtest.h>

#include "halvane/base/byte_buffer.h"

#include "tests/air/element_samples.h"

using halvane::ByteBuffer;
using halvane::testing::bytesOf;
using namespace halvane::air;

namespace {

// A new country, a new channel of 80 MHz, a new power, a subelement of a vendor.
TEST(AirChannelSwitchWrapper, DecodesEverySubelement) {
    const auto bytes = bytesOf("07 06 444520 24041E  C2 03 01 2A 00  C3 02 00 2E  DD 02 0102");
    const auto element = ChannelSwitchWrapper::decode(bytes);
    ASSERT_TRUE(element);
    ASSERT_EQ(element->subelements.size(), 4u);
    const auto& parts = element->subelements;
    ASSERT_TRUE(parts[0].newCountry);
    EXPECT_EQ(parts[0].newCountry->code(), "DE");
    EXPECT_EQ(parts[0].newCountry->triplets.size(), 1u);
    ASSERT_TRUE(parts[1].wideBandwidth);
    EXPECT_EQ(parts[1].wideBandwidth->channel.centerSegment0, 42);
    ASSERT_TRUE(parts[2].newPower);
    EXPECT_EQ(parts[2].newPower->values[0], 46);
    EXPECT_EQ(parts[3].id, 221);
    EXPECT_EQ(parts[3].body, ByteBuffer({1, 2}));
    EXPECT_EQ(element->encode(), bytes);
}

TEST(AirChannelSwitchWrapper, DecodesTheBandwidthIndication) {
    const auto bytes = bytesOf("FF 07 87 02 03 07 0F 0100  FF 02 99 AB  FF 00");
    const auto element = ChannelSwitchWrapper::decode(bytes);
    ASSERT_TRUE(element);
    ASSERT_EQ(element->subelements.size(), 3u);
    ASSERT_TRUE(element->subelements[0].bandwidth);
    EXPECT_TRUE(element->subelements[0].bandwidth->channel.isDisabled(0));
    EXPECT_EQ(element->subelements[1].extension, 0x99);
    EXPECT_EQ(element->subelements[1].body, ByteBuffer({0xAB}));
    EXPECT_FALSE(element->subelements[2].extension);
    EXPECT_EQ(element->encode(), bytes);
}

TEST(AirChannelSwitchWrapper, NeedsWholeSubelements) {
    EXPECT_TRUE(ChannelSwitchWrapper::decode({})->subelements.empty());
    EXPECT_FALSE(ChannelSwitchWrapper::decode(bytesOf("DD")));
    EXPECT_FALSE(ChannelSwitchWrapper::decode(bytesOf("DD 02 01")));
    // The octets of the second subelement do not make the first one whole.
    EXPECT_FALSE(ChannelSwitchWrapper::decode(bytesOf("C2 02 01 2A  DD 01 00")));
}

TEST(AirChannelSwitchWrapper, IsEncodedFromItsFields) {
    ChannelSwitchWrapper element;
    auto& part = element.subelements.emplace_back();
    part.id = 194;
    part.wideBandwidth.emplace().channel.channelWidth = 1;
    EXPECT_EQ(element.encode(), bytesOf("C2 03 01 00 00"));
}

}  // namespace

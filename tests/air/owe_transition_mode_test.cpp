#include "halvane/air/owe_transition_mode.h"

#include <gtest/gtest.h>

#include "tests/air/element_samples.h"
#include "tests/air/told_fields.h"

using halvane::ByteBuffer;
using halvane::testing::bytesOf;
using halvane::testing::ToldFields;
using namespace halvane::air;

namespace {

TEST(AirOweTransitionMode, NamesTheOtherHalf) {
    const auto owe = OweTransitionMode::decode(bytesOf("020000000001 03 6F7765"));
    ASSERT_TRUE(owe);
    EXPECT_EQ(owe->bssid.text(), "02:00:00:00:00:01");
    EXPECT_EQ(owe->ssid, ByteBuffer::fromText("owe"));
    EXPECT_FALSE(owe->operatingClass || owe->channel);
}

TEST(AirOweTransitionMode, NamesItsChannel) {
    const auto owe = OweTransitionMode::decode(bytesOf("020000000001 00 73 24 55"));
    ASSERT_TRUE(owe);
    EXPECT_TRUE(owe->ssid.empty());
    EXPECT_EQ(owe->operatingClass, 115);
    EXPECT_EQ(owe->channel, 36);
    EXPECT_EQ(owe->rest, ByteBuffer({0x55}));
    EXPECT_FALSE(OweTransitionMode::decode(bytesOf("020000000001 04 6F7765")));
    EXPECT_FALSE(OweTransitionMode::decode(bytesOf("020000000001")));
}

TEST(AirOweTransitionMode, ShowsTheSsidSafely) {
    ToldFields fields;
    EXPECT_FALSE(OweTransitionMode::describe(bytesOf("020000000001 02 411B"), fields));
    EXPECT_EQ(fields.text_, "BSSID=02:00:00:00:00:01;SSID Length=2;SSID=A\\x1B;");
}

}  // namespace

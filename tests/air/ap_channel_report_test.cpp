#include "halvane/air/ap_channel_report.h"

#include <cstdint>
#include <gtest/gtest.h>

#include "halvane/base/inline_list.h"

#include "tests/air/element_samples.h"
#include "tests/support/hostile_bytes.h"

using halvane::testing::Bytes;
using halvane::testing::bytesOf;
using namespace halvane::air;

namespace {

TEST(AirApChannelReport, ListsTheChannels) {
    const auto element = ApChannelReport::decode(bytesOf("51 01 06 0B"));
    ASSERT_TRUE(element);
    EXPECT_EQ(element->operatingClass, 81);
    EXPECT_EQ(element->channels, (halvane::InlineList<std::uint8_t, 254>{1, 6, 11}));
    EXPECT_FALSE(ApChannelReport::decode({}));
    EXPECT_EQ(ApChannelReport::decode(Bytes(255, 1))->channels.size(), 254u);
    ApChannelReport built;
    built.operatingClass = 115;
    built.channels = {36};
    EXPECT_EQ(built.encode(), bytesOf("7324"));
}

}  // namespace

#include "tools/halvane/input/examined_frame.h"

#include <cstddef>
#include <gtest/gtest.h>

#include "halvane/capture/fcs.h"
#include "halvane/capture/link_type.h"

#include "tests/support/capture_bytes.h"
#include "tests/support/hostile_bytes.h"
#include "tools/halvane/input/packet_source.h"

using halvane::capture::frameCheckSequence;
using halvane::capture::LinkType;
using halvane::testing::appendNumber;
using halvane::testing::beaconFrame;
using halvane::testing::Bytes;
using halvane::testing::Order;
using namespace halvane::tool;

namespace {

TEST(ExaminedFrame, EndsInAFrameCheckSequenceIfTheCaptureSaysSo) {
    Bytes bytes = beaconFrame();
    const std::size_t size = bytes.size();
    appendNumber(bytes, frameCheckSequence(bytes), 4, Order::Little);
    Packet packet{.linkType = LinkType::IEEE80211, .bytes = bytes, .originalLength = bytes.size()};
    const auto without = examinedFrame(packet);
    ASSERT_TRUE(without.beacon());
    EXPECT_FALSE(without.radio.hasFCS);
    EXPECT_EQ(without.beacon()->elements.size(), 3U + 4U);

    packet.endsInFCS = true;
    const auto with = examinedFrame(packet);
    ASSERT_TRUE(with.beacon());
    EXPECT_TRUE(with.radio.hasFCS);
    EXPECT_EQ(with.beacon()->elements.size(), 3U);
    EXPECT_EQ(with.radio.frame.size(), size + 4);
}

}  // namespace

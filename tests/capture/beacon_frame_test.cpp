#include "halvane/capture/beacon_frame.h"

#include <gtest/gtest.h>
#include <vector>

#include "halvane/base/byte_buffer.h"

#include "tests/support/hostile_bytes.h"

using halvane::ByteBuffer;
using halvane::testing::Bytes;
using namespace halvane::capture;

namespace {

// The start of a real beacon: 802.11 header, fixed part, two elements.
const Bytes kBeaconFrame = {
    0x80, 0x00,                                            // management, subtype 8; no flags
    0x00, 0x00,                                            // duration
    0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF,                    // address 1, receiver: broadcast
    0x00, 0x0C, 0x41, 0x82, 0xB2, 0x55,                    // address 2, transmitter
    0x00, 0x0C, 0x41, 0x82, 0xB2, 0x56,                    // address 3, BSSID (last octet changed)
    0x50, 0xF8,                                            // sequence number 3973, fragment 0
    0x89, 0xF1, 0xD4, 0x1B, 0x01, 0x00, 0x00, 0x00,        // timestamp
    0x64, 0x00,                                            // beacon interval 100 TU
    0x11, 0x04,                                            // ESS, privacy, short slot time
    0x00, 0x07, 0x43, 0x6F, 0x68, 0x65, 0x72, 0x65, 0x72,  // SSID
    0x03, 0x01, 0x01,                                      // DS Parameter Set: channel 1
};
constexpr std::size_t kHeaderSize = 24;
constexpr std::size_t kElementsOffset = kHeaderSize + 12;

Bytes changed(std::size_t offset, std::uint8_t value, Bytes bytes = kBeaconFrame) {
    bytes.at(offset) = value;
    return bytes;
}

SkipReason reasonOf(const Bytes& bytes) {
    const ByteBuffer frame = halvane::testing::exactHeapCopy(bytes);
    const auto answer = parseBeaconFrame(frame.bytes());
    EXPECT_FALSE(answer);
    return answer ? SkipReason::MalformedHeader : answer.error();
}

TEST(BeaconFrame, ReadsABeacon) {
    const auto beacon = parseBeaconFrame(kBeaconFrame);
    ASSERT_TRUE(beacon);
    EXPECT_EQ(beacon->subtype, BeaconSubtype::Beacon);
    EXPECT_EQ(beacon->bssid.text(), "00:0c:41:82:b2:56");
    EXPECT_EQ(beacon->beaconInterval, 100);
    EXPECT_EQ(beacon->capabilities, 0x0411);
    EXPECT_EQ(ByteBuffer(beacon->elements).hex(), "0007436f6865726572030101");
}

TEST(BeaconFrame, ReadsAProbeResponse) {
    const auto response = parseBeaconFrame(changed(0, 0x50));
    ASSERT_TRUE(response);
    EXPECT_EQ(response->subtype, BeaconSubtype::ProbeResponse);
    EXPECT_EQ(response->elements.size(), kBeaconFrame.size() - kElementsOffset);
}

TEST(BeaconFrame, SkipsTheHTControlFieldThatTheOrderBitAnnounces) {
    Bytes frame = changed(1, 0x80);
    const Bytes htControl = {0xDE, 0xAD, 0xBE, 0xEF};
    frame.insert(frame.begin() + kHeaderSize, htControl.begin(), htControl.end());
    const auto beacon = parseBeaconFrame(frame);
    ASSERT_TRUE(beacon);
    EXPECT_EQ(beacon->beaconInterval, 100);
    EXPECT_EQ(ByteBuffer(beacon->elements).hex(), "0007436f6865726572030101");
}

TEST(BeaconFrame, IgnoresFlagsThatChangeNoLayout) {
    for (const std::uint8_t flags : Bytes{0x01, 0x02, 0x08, 0x10, 0x20}) {
        const Bytes frame = changed(1, flags);
        EXPECT_TRUE(parseBeaconFrame(frame)) << int{flags};
    }
}

TEST(BeaconFrame, TellsWhyAFrameIsSkipped) {
    struct Row {
        Bytes frame;
        SkipReason reason;
        const char* why;
    };
    for (const Row& row : {
             Row{changed(0, 0x40), SkipReason::OtherFrame, "probe request"},
             Row{changed(0, 0x08), SkipReason::OtherFrame, "data"},
             Row{changed(0, 0xD4), SkipReason::OtherFrame, "acknowledgement"},
             Row{changed(0, 0x81), SkipReason::OtherFrame, "protocol version 1"},
             Row{{0xD4, 0x00}, SkipReason::OtherFrame, "short, but certainly no beacon"},
             Row{changed(1, 0x04), SkipReason::Fragment, "more fragments follow"},
             Row{changed(22, 0x51), SkipReason::Fragment, "fragment number 1"},
             Row{changed(22, 0x5F), SkipReason::Fragment, "fragment number 15"},
             Row{changed(1, 0x40), SkipReason::Encrypted, "protected"},
             Row{changed(1, 0x44), SkipReason::Fragment, "both: a fragment first of all"},
         }) {
        EXPECT_EQ(reasonOf(row.frame), row.reason) << row.why;
    }
}

// If the frame ends within the BSSID, it has no Sequence Control field, and the Protected flag does
// not refer to a body.
TEST(BeaconFrame, CallsAFrameShortThatEndsWithinTheBSSID) {
    constexpr std::size_t kBSSIDOffset = 16;
    for (const std::uint8_t flags : Bytes{0x00, 0x40, 0x80, 0xC0}) {
        for (const std::uint8_t octet : Bytes{0x00, 0x01, 0x0F, 0xFF}) {
            Bytes frame = changed(kBSSIDOffset, octet, changed(1, flags));
            frame.resize(kHeaderSize - 1);
            for (; frame.size() >= 2; frame.pop_back()) {
                EXPECT_EQ(reasonOf(frame), SkipReason::Short)
                    << int{flags} << ' ' << int{octet} << ' ' << frame.size();
            }
        }
    }
}

TEST(BeaconFrame, AcceptsAFrameWithoutElements) {
    const Bytes frame(kBeaconFrame.begin(), kBeaconFrame.begin() + kElementsOffset);
    const auto beacon = parseBeaconFrame(frame);
    ASSERT_TRUE(beacon);
    EXPECT_TRUE(beacon->elements.empty());
}

TEST(BeaconFrame, CallsEveryPrefixShortUntilTheElementsStart) {
    for (const std::uint8_t flags : {std::uint8_t{0x00}, std::uint8_t{0x80}}) {
        const std::size_t needed = kElementsOffset + (flags ? 4 : 0);
        halvane::testing::forEachPrefix(changed(1, flags), [&](const ByteBuffer& prefix) {
            const auto answer = parseBeaconFrame(prefix.bytes());
            if (prefix.size() < needed) {
                ASSERT_FALSE(answer) << prefix.size();
                EXPECT_EQ(answer.error(), SkipReason::Short) << prefix.size();
            } else {
                ASSERT_TRUE(answer) << prefix.size();
                EXPECT_EQ(answer->elements.size(), prefix.size() - needed);
            }
        });
    }
}

}  // namespace

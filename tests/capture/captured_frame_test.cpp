#include "halvane/capture/captured_frame.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <gtest/gtest.h>
#include <numeric>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/mac_address.h"
#include "halvane/base/result.h"
#include "halvane/capture/beacon_frame.h"
#include "halvane/capture/captured_frame_internal.h"
#include "halvane/capture/fcs.h"
#include "halvane/capture/frame_record.h"
#include "halvane/capture/link_type.h"
#include "halvane/capture/radio_header.h"

#include "tests/capture/packets.h"
#include "tests/support/hostile_bytes.h"

using halvane::ByteBuffer;
using halvane::Unexpected;
using halvane::testing::beaconPacket;
using halvane::testing::Bytes;
using halvane::testing::withRadiotap;
using namespace halvane::capture;

namespace {

constexpr std::uint8_t kFCSAtEnd = 0x10, kBadFCS = 0x40;  // of the radiotap flags

const Bytes kWrongFCS = {0xDE, 0xAD, 0xBE, 0xEF};

Bytes joined(Bytes bytes, const Bytes& more) {
    bytes.insert(bytes.end(), more.begin(), more.end());
    return bytes;
}

std::string elementsOf(const CapturedFrame& frame) {
    return frame.beacon() != nullptr ? ByteBuffer(frame.beacon()->elements).hex() : "none";
}

std::string tellingOf(const CapturedFrame& frame) {
    const auto text = [](const std::optional<int>& value) {
        return value ? std::to_string(*value) + ' ' : "- ";
    };
    const RadioInfo& radio = frame.radio;
    std::string telling = text(radio.frequencyMHz) + text(radio.channel) + text(radio.signalDBm) +
                          text(radio.noiseDBm) + std::to_string(radio.hasFCS) +
                          std::to_string(radio.isBadFCS) + std::to_string(frame.isCut) + ' ' +
                          ByteBuffer(radio.frame).hex() + ' ';
    if (!frame.content) return telling + std::to_string(static_cast<int>(frame.content.error()));
    const BeaconFrame& beacon = *frame.content;
    return telling + std::to_string(static_cast<int>(beacon.subtype)) + ' ' + beacon.bssid.text() +
           ' ' + std::to_string(beacon.beaconInterval) + ' ' + std::to_string(beacon.capabilities) +
           ' ' + std::to_string(beacon.elementsOffset) + ' ' + std::to_string(beacon.isCut) + ' ' +
           ByteBuffer(beacon.elements).hex();
}

// Every value of every octet, and every prefix.
TEST(CapturedFrame, HoldsNothingOfTheFrameThatWasThere) {
    const BeaconFrame other = {.subtype = BeaconSubtype::ProbeResponse,
                               .bssid = halvane::MacAddress({1, 2, 3, 4, 5, 6}),
                               .beaconInterval = 7,
                               .capabilities = 8,
                               .elements = kWrongFCS,
                               .elementsOffset = 9,
                               .isCut = true};
    const auto check = [&](const ByteBuffer& packet) {
        for (const std::size_t missing : {0u, 5u}) {
            const std::size_t length = packet.size() + missing;
            CapturedFrame frame{.content = other};
            readPacket(LinkType::Radiotap, packet.bytes(), length, frame);
            ASSERT_EQ(tellingOf(frame),
                      tellingOf(examinePacket(LinkType::Radiotap, packet.bytes(), length)));
        }
    };
    const Bytes packet = withRadiotap(kFCSAtEnd, joined(beaconPacket(), kWrongFCS));
    std::vector<std::size_t> offsets(packet.size());
    std::iota(offsets.begin(), offsets.end(), std::size_t{0});
    halvane::testing::forEachPrefix(packet, check);
    halvane::testing::forEachValueAt(packet, offsets, check);
}

// The same of the parts alone.
TEST(CapturedFrame, HoldsWhatItsPartsTell) {
    const auto check = [](const ByteBuffer& packet) {
        const auto frame = examinePacket(LinkType::Radiotap, packet.bytes());
        const auto radio = parseRadioHeader(LinkType::Radiotap, packet.bytes());
        CapturedFrame expected{.content = Unexpected(SkipReason::MalformedHeader)};
        if (radio) expected = {.radio = *radio, .content = parseBeaconFrame(radio->frame)};
        if (radio && radio->isBadFCS) expected.content = Unexpected(SkipReason::Damaged);
        if (!radio || !radio->hasFCS) {
            ASSERT_EQ(tellingOf(frame), tellingOf(expected));
        }
    };
    const Bytes packet = withRadiotap(0, beaconPacket());
    std::vector<std::size_t> offsets(packet.size());
    std::iota(offsets.begin(), offsets.end(), std::size_t{0});
    halvane::testing::forEachPrefix(packet, check);
    halvane::testing::forEachValueAt(packet, offsets, check);
}

TEST(CapturedFrame, HoldsWhatRadioHeaderAndFrameTell) {
    const Bytes packet = withRadiotap(0, beaconPacket());
    const auto frame = examinePacket(LinkType::Radiotap, packet);
    EXPECT_EQ(frame.radio.signalDBm, -60);
    ASSERT_TRUE(frame.content);
    EXPECT_EQ(frame.beacon()->bssid.text(), "02:00:00:00:00:01");
    EXPECT_EQ(elementsOf(frame), "000161");
    EXPECT_FALSE(frame.isCut);
}

TEST(CapturedFrame, HasNoRadioHeaderUnderTheLinkTypeOfBareFrames) {
    const Bytes packet = beaconPacket();
    const auto frame = examinePacket(LinkType::IEEE80211, packet);
    EXPECT_EQ(frame.radio.signalDBm, std::nullopt);
    EXPECT_EQ(elementsOf(frame), "000161");
}

TEST(CapturedFrame, EndsBeforeItsFrameCheckSequence) {
    const Bytes frame = joined(beaconPacket(), kWrongFCS);
    const Bytes announced = withRadiotap(kFCSAtEnd, frame);
    const Bytes silent = withRadiotap(0, frame);
    EXPECT_EQ(elementsOf(examinePacket(LinkType::Radiotap, announced)), "000161");
    // The header does not announce an FCS, so these octets may be elements.
    EXPECT_EQ(elementsOf(examinePacket(LinkType::Radiotap, silent)), "000161deadbeef");
}

TEST(CapturedFrame, IsDamagedOnlyWhereTheRadioHeaderSaysSo) {
    const Bytes right = withRadiotap(
        kFCSAtEnd | kBadFCS, joined(beaconPacket(), halvane::testing::fcsOf(beaconPacket())));
    const Bytes wrong = withRadiotap(kFCSAtEnd, joined(beaconPacket(), kWrongFCS));
    const auto damaged = examinePacket(LinkType::Radiotap, right);
    ASSERT_FALSE(damaged.content);
    EXPECT_EQ(damaged.content.error(), SkipReason::Damaged);
    EXPECT_TRUE(endsInItsFCS(damaged.radio.frame));
    const auto whole = examinePacket(LinkType::Radiotap, wrong);
    EXPECT_TRUE(whole.content);
    EXPECT_FALSE(endsInItsFCS(whole.radio.frame));
}

TEST(CapturedFrame, EndsWhereTheCaptureCutIt) {
    const Bytes whole = withRadiotap(kFCSAtEnd, joined(beaconPacket(), kWrongFCS));
    for (std::size_t missing = 0; missing <= 7; ++missing) {
        const Bytes kept(whole.begin(), whole.end() - static_cast<std::ptrdiff_t>(missing));
        const auto frame = examinePacket(LinkType::Radiotap, kept, whole.size());
        const std::size_t octets = missing <= 4 ? 3 : 7 - missing;
        EXPECT_EQ(elementsOf(frame), std::string("000161").substr(0, 2 * octets)) << missing;
        EXPECT_EQ(frame.isCut, missing > 0) << missing;
    }
}

// The frame check sequence is no part of the elements.
TEST(CapturedFrame, TellsWhetherTheCutTookElements) {
    const Bytes plain = withRadiotap(0, beaconPacket());
    const Bytes announced = withRadiotap(kFCSAtEnd, beaconPacket());
    struct Row {
        const Bytes& packet;
        std::size_t missing;
        bool isCut;
    };
    for (const Row& row : {Row{plain, 0, false}, Row{plain, 1, true}, Row{announced, 4, false},
                           Row{announced, 5, true}}) {
        const auto frame =
            examinePacket(LinkType::Radiotap, row.packet, row.packet.size() + row.missing);
        ASSERT_NE(frame.beacon(), nullptr);
        EXPECT_EQ(frame.beacon()->isCut, row.isCut) << row.missing;
        EXPECT_EQ(sightingOf(*frame.beacon(), frame.radio).isCut, row.isCut) << row.missing;
    }
}

TEST(CapturedFrame, IsWholeWhereItsOriginalLengthIsBelowItsOwn) {
    const Bytes packet = withRadiotap(kFCSAtEnd, joined(beaconPacket(), kWrongFCS));
    for (const std::size_t length : {std::size_t{0}, packet.size() - 1, packet.size()}) {
        const auto frame = examinePacket(LinkType::Radiotap, packet, length);
        EXPECT_FALSE(frame.isCut) << length;
        EXPECT_EQ(elementsOf(frame), "000161") << length;
    }
}

TEST(CapturedFrame, TellsThatItsRadioHeaderIsMalformed) {
    const Bytes packet = {0x01, 0x00, 0x08, 0x00, 0x00, 0x00, 0x00, 0x00};
    const auto frame = examinePacket(LinkType::Radiotap, packet, 100);
    ASSERT_FALSE(frame.content);
    EXPECT_EQ(frame.content.error(), SkipReason::MalformedHeader);
    EXPECT_TRUE(frame.radio.frame.empty());
    EXPECT_TRUE(frame.isCut);
}

// A radio header of each link type.
struct Header {
    LinkType linkType;
    Bytes bytes;
};

std::vector<Header> headersOfEveryLinkType() {
    Bytes prism = {0x44, 0x00, 0x00, 0x00, 0x24, 0x00, 0x00, 0x00};  // length 36
    prism.resize(24);                                                // device name
    prism.insert(prism.end(), {0x44, 0x00, 0x06, 0x00, 0, 0, 4, 0, 0xC4, 0xFF, 0xFF, 0xFF});
    Bytes avs = {0x80, 0x21, 0x10, 0x01, 0x00, 0x00, 0x00, 0x40};  // version 1, length 64
    avs.resize(64);
    Bytes ppi = {0x00, 0x00, 0x20, 0x00, 0x69, 0x00, 0x00, 0x00, 0x02, 0x00, 0x14, 0x00};
    ppi.resize(32);  // 802.11-Common
    return {{LinkType::IEEE80211, {}}, {LinkType::Prism, prism},
            {LinkType::Prism, avs},    {LinkType::AVS, avs},
            {LinkType::PPI, ppi},      {LinkType::Radiotap, withRadiotap(0x10, {})}};
}

TEST(CapturedFrame, IsShortInEveryPrefixUpToItsElements) {
    for (const auto& [type, header] : headersOfEveryLinkType()) {
        const LinkType linkType = type;
        SCOPED_TRACE(static_cast<int>(linkType));
        const std::size_t headerSize = header.size();
        const Bytes packet = joined(header, beaconPacket());
        const std::size_t elements = packet.size() - 3;
        halvane::testing::forEachPrefix(packet, [&](const ByteBuffer& prefix) {
            const auto frame = examinePacket(linkType, prefix.bytes(), packet.size() + 4);
            EXPECT_TRUE(frame.isCut);
            ASSERT_EQ(frame.content.has_value(), prefix.size() >= elements) << prefix.size();
            if (frame.content) {
                EXPECT_EQ(frame.beacon()->elements.size(), prefix.size() - elements);
            } else {
                EXPECT_EQ(frame.content.error(), prefix.size() < headerSize
                                                     ? SkipReason::MalformedHeader
                                                     : SkipReason::Short)
                    << prefix.size();
            }
        });
    }
}

// Whether the part lies within the packet.
bool isWithin(std::span<const std::uint8_t> part, std::span<const std::uint8_t> packet) {
    const std::less_equal<const std::uint8_t*> isUpTo;
    return part.empty() || (isUpTo(packet.data(), part.data()) &&
                            isUpTo(part.data() + part.size(), packet.data() + packet.size()));
}

TEST(CapturedFrame, LiesWithinThePacketWhateverAnOctetIs) {
    for (const auto& [type, header] : headersOfEveryLinkType()) {
        const LinkType linkType = type;
        SCOPED_TRACE(static_cast<int>(linkType));
        const Bytes packet = joined(header, beaconPacket());
        std::vector<std::size_t> offsets(packet.size());
        std::iota(offsets.begin(), offsets.end(), std::size_t{0});
        halvane::testing::forEachValueAt(packet, offsets, [&](const ByteBuffer& mutant) {
            const auto frame = examinePacket(linkType, mutant.bytes());
            ASSERT_TRUE(isWithin(frame.radio.frame, mutant.bytes()));
            if (frame.content) {
                ASSERT_TRUE(isWithin(frame.beacon()->elements, frame.radio.frame));
            }
            const auto sighting = sightingOfPacket(linkType, mutant.bytes());
            ASSERT_EQ(sighting.has_value(), frame.content.has_value());
        });
    }
}

}  // namespace

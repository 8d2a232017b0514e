#include "halvane/capture/fcs.h"

#include <cstddef>
#include <cstdint>
#include <gtest/gtest.h>
#include <span>
#include <string_view>

#include "halvane/base/byte_buffer.h"

#include "tests/support/hostile_bytes.h"

using halvane::ByteBuffer;
using halvane::testing::Bytes;
using namespace halvane::capture;

namespace {

// The frame of the standard's own example (IEEE 802.11-2020, I.1.2): 96 octets and their frame
// check sequence.
Bytes standardsFrame() {
    constexpr std::string_view kBody =
        "Joy, bright spark of divinity,\nDaughter of Elysium,\nFire-insired we trea";
    Bytes frame = {0x04, 0x02, 0x00, 0x2E, 0x00,        // frame control, duration, ...
                   0x60, 0x08, 0xCD, 0x37, 0xA6, 0x00,  // ... addresses and sequence control
                   0x20, 0xD6, 0x01, 0x3C, 0xF1, 0x00, 0x60, 0x08, 0xAD, 0x3B, 0xAF, 0x00, 0x00};
    frame.insert(frame.end(), kBody.begin(), kBody.end());
    const Bytes fcs = {0x67, 0x33, 0x21, 0xB6};
    frame.insert(frame.end(), fcs.begin(), fcs.end());
    return frame;
}

// An acknowledgement as a card received it.
const Bytes kAcknowledgement = {0xD4, 0x00, 0x00, 0x00, 0x00, 0x0D, 0x93,
                                0xEB, 0xB0, 0x8C, 0x4C, 0x93, 0x69, 0x47};

TEST(FCS, IsTheOneOfTheStandardsExample) {
    const Bytes frame = standardsFrame();
    ASSERT_EQ(frame.size(), 100u);
    EXPECT_EQ(frameCheckSequence(std::span(frame).first(96)), 0xB6213367u);
    EXPECT_TRUE(endsInItsFCS(frame));
}

TEST(FCS, IsTheOneThatACardReceived) {
    EXPECT_TRUE(endsInItsFCS(kAcknowledgement));
}

// The check value that catalogues of cyclic redundancy checks list for CRC-32.
TEST(FCS, IsACRC32) {
    const Bytes digits = {'1', '2', '3', '4', '5', '6', '7', '8', '9'};
    EXPECT_EQ(frameCheckSequence(digits), 0xCBF43926u);
    EXPECT_EQ(frameCheckSequence({}), 0u);
}

TEST(FCS, TellsEveryChangedBit) {
    const Bytes whole = kAcknowledgement;
    for (std::size_t bit = 0; bit < 8 * whole.size(); ++bit) {
        Bytes frame = whole;
        frame[bit / 8] ^= static_cast<std::uint8_t>(1u << bit % 8);
        EXPECT_FALSE(endsInItsFCS(frame)) << bit;
    }
}

TEST(FCS, IsNotThatOfAFrameThatWasCut) {
    halvane::testing::forEachPrefix(standardsFrame(), [](const ByteBuffer& prefix) {
        EXPECT_EQ(endsInItsFCS(prefix.bytes()), prefix.size() == 100) << prefix.size();
    });
}

TEST(FCS, IsTakenOffAsFarAsTheCaptureKeptIt) {
    const Bytes whole = {1, 2, 3, 0xDE, 0xAD, 0xBE, 0xEF};
    for (std::size_t missing = 0; missing <= whole.size(); ++missing) {
        const ByteBuffer kept = halvane::testing::exactHeapCopy(
            Bytes(whole.begin(), whole.end() - static_cast<std::ptrdiff_t>(missing)));
        const std::size_t expected = missing < 4 ? 3 : 7 - missing;
        EXPECT_EQ(withoutFCS(kept.bytes(), missing).size(), expected) << missing;
        EXPECT_EQ(withoutFCS(kept.bytes(), missing).data(), kept.bytes().data()) << missing;
    }
    EXPECT_EQ(withoutFCS(whole, SIZE_MAX).size(), whole.size());
}

TEST(FCS, IsTakenOffAFrameThatIsShorterThanIt) {
    for (std::size_t size = 0; size < 4; ++size) {
        EXPECT_TRUE(withoutFCS(Bytes(size, 0x80)).empty()) << size;
    }
}

}  // namespace

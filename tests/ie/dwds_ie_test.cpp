#include "halvane/ie/dwds_ie.h"

#include <cstddef>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "tests/support/hostile_bytes.h"

using halvane::ByteBuffer;
using halvane::HalvaneDWDSIE;
using halvane::testing::Bytes;

namespace {

Bytes element(std::uint8_t role, std::uint8_t lastFlagByte) {
    return {
        0xDD, 0x0B,                      // element ID 221, length 11
        0x0A, 0x7E, 0x55, 0x01,          // vendor OUI, type 1
        0xAA, 0xBB,                      // not read
        role,                            //
        0x00, 0x00, 0x00, lastFlagByte,  // flags, the high byte first
    };
}

HalvaneDWDSIE decode(const Bytes& bytes) {
    return HalvaneDWDSIE::initWithIE(ByteBuffer(bytes));
}

// The flags in the order: not supported, workaround, full support, closed network.
std::vector<bool> flagsOf(const HalvaneDWDSIE& ie) {
    return {ie.isAMPDUNotSupportedOverDWDS(), ie.isAMPDUWorkaroundOverDWDS(),
            ie.isAMPDUFullSupportOverDWDS(), ie.isClosedNetworkOverDWDS()};
}

const std::vector<bool> kNoFlags = {false, false, false, false};

TEST(DWDSIE, IsEmptyAtFirst) {
    const HalvaneDWDSIE ie;
    EXPECT_FALSE(ie.isValid());
    EXPECT_FALSE(ie.rawIE());
    EXPECT_FALSE(ie.DWDSRole());
    EXPECT_EQ(flagsOf(ie), kNoFlags);
    EXPECT_EQ(ie.description(), "    IE                  : (null)\n");
}

TEST(DWDSIE, DecodesRoleAndFlags) {
    const auto ie = decode(element(2, 0x05));
    EXPECT_TRUE(ie.isValid());
    EXPECT_EQ(ie.rawIE(), ByteBuffer(element(2, 0x05)));
    EXPECT_EQ(ie.DWDSRole(), "Relay");
    EXPECT_EQ(flagsOf(ie), (std::vector<bool>{true, false, true, false}));
}

TEST(DWDSIE, EachFlagHasItsBitOfTheBigEndianField) {
    for (std::size_t bit = 0; bit < 32; ++bit) {
        Bytes bytes = element(0, 0x00);
        bytes.at(12 - bit / 8) = static_cast<std::uint8_t>(1u << bit % 8);
        std::vector<bool> expected = kNoFlags;
        if (bit < expected.size()) expected[bit] = true;
        EXPECT_EQ(flagsOf(decode(bytes)), expected) << bit;
    }
}

TEST(DWDSIE, NamesTheFourRoles) {
    EXPECT_EQ(HalvaneDWDSIE::stringValueForDWDSRole(0), "Inactive");
    EXPECT_EQ(HalvaneDWDSIE::stringValueForDWDSRole(1), "Master");
    EXPECT_EQ(HalvaneDWDSIE::stringValueForDWDSRole(2), "Relay");
    EXPECT_EQ(HalvaneDWDSIE::stringValueForDWDSRole(3), "Remote");
    EXPECT_EQ(HalvaneDWDSIE::stringValueForDWDSRole(4), "Unknown");
    EXPECT_EQ(HalvaneDWDSIE::stringValueForDWDSRole(255), "Unknown");
}

TEST(DWDSIE, ShortElementIsValidWithoutFlagsOrRole) {
    const ByteBuffer whole(element(3, 0x0F));
    for (std::size_t size = 0; size <= whole.size(); ++size) {
        const auto ie = HalvaneDWDSIE::initWithIE(whole.slice(0, size));
        EXPECT_TRUE(ie.isValid()) << size;
        EXPECT_EQ(ie.DWDSRole(), size < 9 ? "Unknown" : "Remote") << size;
        EXPECT_EQ(flagsOf(ie), std::vector<bool>(4, size == 13)) << size;
    }
}

TEST(DWDSIE, DescribesEveryField) {
    EXPECT_EQ(decode(element(1, 0x0A)).description(),
              "    IE                  : DD 0B 0A 7E 55 01 AA BB 01 00 00 00 0A \n"
              "    Role                : Master\n"
              "    AMPDU Not Supported : NO\n"
              "    AMPDU Workaround    : YES\n"
              "    AMPDU Full Support  : NO\n"
              "    Closed Network      : YES\n");
}

TEST(DWDSIE, HostileFormsDecodeWhatIsThere) {
    halvane::testing::forEachHostileForm(element(1, 0x0F), {1, 8}, [](const ByteBuffer& bytes) {
        const auto ie = HalvaneDWDSIE::initWithIE(bytes);
        EXPECT_EQ(ie.rawIE(), bytes);
        EXPECT_TRUE(ie.isValid());
        EXPECT_EQ(flagsOf(ie), std::vector<bool>(4, bytes.size() >= 13));
        EXPECT_EQ(ie.description().back(), '\n');
    });
}

}  // namespace

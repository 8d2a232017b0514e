#include "halvane/ie/ht_operation_ie.h"

#include <algorithm>
#include <gtest/gtest.h>

#include "tests/support/hostile_bytes.h"

using halvane::ByteBuffer;
using halvane::HalvaneHTOperationIE;
using halvane::testing::Bytes;

namespace {

const Bytes kAbovePrimary = {
    0x3D, 0x16,              // element ID 61, length 22
    0x24,                    // primary channel 36
    0x0D,                    // secondary above, any channel width, RIFS permitted
    0x15, 0x16,              // second and third octet
    0x17, 0x18,              // fourth and fifth octet
    0x01, 0x02, 0x03, 0x04,  // basic HT-MCS set
    0x05, 0x06, 0x07, 0x08,  //
    0x09, 0x0A, 0x0B, 0x0C,  //
    0x0D, 0x0E, 0x0F, 0x10,  //
};

HalvaneHTOperationIE withCapabilities1(unsigned octet) {
    Bytes bytes = kAbovePrimary;
    bytes[3] = static_cast<std::uint8_t>(octet);
    return HalvaneHTOperationIE::initWithIE(ByteBuffer(bytes));
}

TEST(HTOperationIE, IsEmptyAtFirst) {
    const HalvaneHTOperationIE ie;
    EXPECT_FALSE(ie.isValid());
    EXPECT_FALSE(ie.rawIE());
    EXPECT_FALSE(ie.basicMCSSet());
    EXPECT_EQ(ie.staChannelWidth(), 0);
}

TEST(HTOperationIE, DecodesEveryField) {
    const auto ie = HalvaneHTOperationIE::initWithIE(ByteBuffer(kAbovePrimary));
    EXPECT_TRUE(ie.isValid());
    EXPECT_EQ(ie.rawIE(), ByteBuffer(kAbovePrimary));
    EXPECT_EQ(ie.primaryChannel(), 36);
    EXPECT_EQ(ie.capabilities1(), 0x0D);
    EXPECT_EQ(ie.secondaryChannelOffset(), 1);
    EXPECT_EQ(ie.staChannelWidth(), 40);
    EXPECT_TRUE(ie.supportsRIFS());
    EXPECT_EQ(ie.capabilities2(), 0x1615);
    EXPECT_EQ(ie.capabilities3(), 0x1817);
    EXPECT_EQ(ie.basicMCSSet(), ByteBuffer(kAbovePrimary).slice(8));
}

TEST(HTOperationIE, DecodesEveryValueOfTheFirstOctet) {
    for (unsigned octet = 0; octet < 256; ++octet) {
        const auto ie = withCapabilities1(octet);
        EXPECT_EQ(ie.secondaryChannelOffset(), octet % 4);
        EXPECT_EQ(ie.staChannelWidth(), octet / 4 % 2 == 1 ? 40 : 20);
        EXPECT_EQ(ie.supportsRIFS(), octet / 8 % 2 == 1);
    }
}

TEST(HTOperationIE, NeverDecodesTheRawFields) {
    Bytes bytes = kAbovePrimary;
    std::fill(bytes.begin() + 4, bytes.begin() + 8, std::uint8_t{0xFF});
    const auto ie = HalvaneHTOperationIE::initWithIE(ByteBuffer(bytes));
    EXPECT_EQ(ie.capabilities2(), 0xFFFF);
    EXPECT_EQ(ie.capabilities3(), 0xFFFF);
    EXPECT_EQ(ie.htProtectionMode(), 0);
    EXPECT_FALSE(ie.nonGreenfieldHTSTAsPresent());
    EXPECT_FALSE(ie.nonHTSTAsPresentOBSS());
    EXPECT_FALSE(ie.transmitsDualBeacon());
    EXPECT_FALSE(ie.requiresDualCTSProtection());
    EXPECT_FALSE(ie.isSTBCBeacon());
    EXPECT_FALSE(ie.supportsLSIGTXOPProtectionFullSupport());
    EXPECT_FALSE(ie.hasActivePCO());
    EXPECT_FALSE(ie.pcoPhase20MHz());
    EXPECT_FALSE(ie.pcoPhase40MHz());
}

TEST(HTOperationIE, OfAnyOtherSizeDecodesNothing) {
    Bytes bytes = kAbovePrimary;
    bytes.resize(30, 0xFF);
    halvane::testing::forEachHostileForm(bytes, {1}, [](const ByteBuffer& form) {
        const auto ie = HalvaneHTOperationIE::initWithIE(form);
        EXPECT_EQ(ie.isValid(), form.size() == 24) << form.size();
        EXPECT_EQ(ie.staChannelWidth(), form.size() == 24 ? 40 : 0);
        EXPECT_EQ(ie.basicMCSSet().has_value(), form.size() == 24);
        EXPECT_EQ(ie.rawIE(), form);
    });
}

TEST(HTOperationIE, NamesTheSecondaryChannelOffset) {
    using IE = HalvaneHTOperationIE;
    EXPECT_EQ(IE::stringValueForSecondaryChannelOffset(0), "Not Present");
    EXPECT_EQ(IE::stringValueForSecondaryChannelOffset(1), "Above Primary");
    EXPECT_EQ(IE::stringValueForSecondaryChannelOffset(2), std::nullopt);
    EXPECT_EQ(IE::stringValueForSecondaryChannelOffset(3), "Below Primary");
    EXPECT_EQ(IE::stringValueForSecondaryChannelOffset(-1), std::nullopt);
    EXPECT_EQ(IE::stringValueForSecondaryChannelOffset(4), std::nullopt);
}

TEST(HTOperationIE, DescribesEveryField) {
    EXPECT_EQ(
        withCapabilities1(0x06).description(),
        "    IE                                : 3D 16 24 06 15 16 17 18 01 02 03 04 05 06 07 "
        "08 09 0A 0B 0C 0D 0E 0F 10 \n"
        "    Primary Channel                   : 36\n"
        "    Capabilities 1                    : 0x6\n"
        "    Secondary Channel Offset          : (null)\n"
        "    Channel Width                     : 40 MHz\n"
        "    Capabilities 2                    : 0x1615\n"
        "    Capabilities 3                    : 0x1817\n"
        "    Basic MCS Set                     : 01 02 03 04 05 06 07 08 09 0A 0B 0C 0D 0E 0F "
        "10 \n");
}

TEST(HTOperationIE, DescribesAnEmptyObject) {
    EXPECT_EQ(HalvaneHTOperationIE().description(),
              "    Primary Channel                   : 0\n"
              "    Capabilities 1                    : 0x0\n"
              "    Secondary Channel Offset          : Not Present\n"
              "    Channel Width                     : 0 MHz\n"
              "    Capabilities 2                    : 0x00\n"
              "    Capabilities 3                    : 0x00\n"
              "    Basic MCS Set                     : (null)\n");
}

}  // namespace

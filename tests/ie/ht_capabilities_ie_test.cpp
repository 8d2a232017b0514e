#include "halvane/ie/ht_capabilities_ie.h"

#include <algorithm>
#include <cstddef>
#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <vector>

#include "tests/support/hostile_bytes.h"

using halvane::ByteBuffer;
using halvane::HalvaneHTCapabilitiesIE;
using halvane::Number;
using halvane::testing::Bytes;

namespace {

// As a two-stream access point with 40 MHz and both short guard intervals sends it; the fields as
// an independent decoder reads them.
const Bytes kTwoStreams = {
    0x2D, 0x1A,              // element ID 45, length 26
    0xEF, 0x19,              // LDPC, 40 MHz, SM power save disabled, short GI 20 and 40,
                             // Tx STBC, one Rx STBC stream, A-MSDU 7935, DSSS/CCK at 40 MHz
    0x1B,                    // A-MPDU 65535 octets, 8 us
    0xFF, 0xFF, 0x00, 0x00,  // MCS 0 to 15
    0x00, 0x00, 0x00, 0x00,  //
    0x00, 0x00, 0x00, 0x00,  // no highest rate
    0x01, 0x00, 0x00, 0x00,  // transmit set defined
    0x05, 0x04,              // extended capabilities
    0x11, 0x22, 0x33, 0x44,  // transmit beamforming
    0x7F,                    // ASEL
};

HalvaneHTCapabilitiesIE decode(const Bytes& bytes) {
    return HalvaneHTCapabilitiesIE::initWithIE(ByteBuffer(bytes));
}

HalvaneHTCapabilitiesIE withCapabilities(unsigned field) {
    Bytes bytes = kTwoStreams;
    bytes[2] = static_cast<std::uint8_t>(field);
    bytes[3] = static_cast<std::uint8_t>(field >> 8);
    return decode(bytes);
}

HalvaneHTCapabilitiesIE withMCSSet(const Bytes& set) {
    Bytes bytes = kTwoStreams;
    std::fill(bytes.begin() + 5, bytes.begin() + 21, std::uint8_t{0});
    std::ranges::copy(set, bytes.begin() + 5);
    return decode(bytes);
}

TEST(HTCapabilitiesIE, IsEmptyAtFirst) {
    const HalvaneHTCapabilitiesIE ie;
    EXPECT_FALSE(ie.isValid());
    EXPECT_FALSE(ie.rawIE());
    EXPECT_FALSE(ie.mcsRates());
    EXPECT_FALSE(ie.supportedMCSSet());
    EXPECT_EQ(ie.maximumAMSDULength(), 0);
}

TEST(HTCapabilitiesIE, DecodesEveryField) {
    const auto ie = decode(kTwoStreams);
    EXPECT_TRUE(ie.isValid());
    EXPECT_EQ(ie.rawIE(), ByteBuffer(kTwoStreams));
    EXPECT_EQ(ie.capabilities(), 0x19EF);
    EXPECT_TRUE(ie.supportsLDPCCoding());
    EXPECT_TRUE(ie.supports40MHzOperation());
    EXPECT_FALSE(ie.staticSMPowerSaveMode());
    EXPECT_FALSE(ie.dynamicSMPowerSaveMode());
    EXPECT_FALSE(ie.supportsGreenfield());
    EXPECT_TRUE(ie.supports20MHzShortGI());
    EXPECT_TRUE(ie.supports40MHzShortGI());
    EXPECT_TRUE(ie.supportsTxSTBC());
    EXPECT_EQ(ie.numSupportedRxSTBC(), 1);
    EXPECT_FALSE(ie.supportsHTDelayedBlockAck());
    EXPECT_EQ(ie.maximumAMSDULength(), 7935);
    EXPECT_TRUE(ie.supportsDSSSCCK40MHz());
    EXPECT_FALSE(ie.fortyMHzIntolerant());
    EXPECT_FALSE(ie.supportsLSIGTXOPProtectionSupport());
    EXPECT_EQ(ie.paramsAMPDU(), 0x1B);
    EXPECT_EQ(ie.supportedMCSSet(), ByteBuffer(kTwoStreams).slice(5, 16));
    EXPECT_EQ(ie.extendedCapabilities(), 0x0405);
    EXPECT_EQ(ie.transmitBeamformingCapabilities(), 0x44332211u);
    EXPECT_EQ(ie.aselCapability(), 0x7F);
}

TEST(HTCapabilitiesIE, DecodesEachCapabilityBitAlone) {
    using IE = HalvaneHTCapabilitiesIE;
    struct Row {
        unsigned bit;
        bool (IE::*flag)() const;
    };
    const Row rows[] = {
        {0, &IE::supportsLDPCCoding},
        {1, &IE::supports40MHzOperation},
        {2, &IE::dynamicSMPowerSaveMode},
        {4, &IE::supportsGreenfield},
        {5, &IE::supports20MHzShortGI},
        {6, &IE::supports40MHzShortGI},
        {7, &IE::supportsTxSTBC},
        {10, &IE::supportsHTDelayedBlockAck},
        {12, &IE::supportsDSSSCCK40MHz},
        {14, &IE::fortyMHzIntolerant},
        {15, &IE::supportsLSIGTXOPProtectionSupport},
    };
    for (unsigned bit = 0; bit < 16; ++bit) {
        const auto ie = withCapabilities(1u << bit);
        for (const Row& row : rows) {
            EXPECT_EQ((ie.*row.flag)(), row.bit == bit) << row.bit << " " << bit;
        }
        EXPECT_EQ(ie.staticSMPowerSaveMode(), bit != 2 && bit != 3) << bit;
        EXPECT_EQ(ie.numSupportedRxSTBC(), bit == 8 ? 1 : bit == 9 ? 2 : 0) << bit;
        EXPECT_EQ(ie.maximumAMSDULength(), bit == 11 ? 7935 : 3839) << bit;
    }
}

TEST(HTCapabilitiesIE, TellsStaticFromDynamicPowerSave) {
    const bool expected[4][2] = {{true, false}, {false, true}, {false, false}, {false, false}};
    for (unsigned mode = 0; mode < 4; ++mode) {
        const auto ie = withCapabilities(mode << 2);
        EXPECT_EQ(ie.staticSMPowerSaveMode(), expected[mode][0]) << mode;
        EXPECT_EQ(ie.dynamicSMPowerSaveMode(), expected[mode][1]) << mode;
    }
}

TEST(HTCapabilitiesIE, CountsUpToThreeRxSTBCStreams) {
    EXPECT_EQ(withCapabilities(3u << 8).numSupportedRxSTBC(), 3);
}

TEST(HTCapabilitiesIE, ListsTheMCSIndicesOfTheReceiveBitmask) {
    std::vector<Number> zeroTo15;
    for (int i = 0; i < 16; ++i) zeroTo15.emplace_back(i);
    EXPECT_EQ(decode(kTwoStreams).mcsRates(), zeroTo15);

    EXPECT_EQ(withMCSSet({}).mcsRates(), std::vector<Number>{});
    EXPECT_EQ(withMCSSet({0, 0, 0, 0, 0x01}).mcsRates(), std::vector<Number>{32});

    const auto all = withMCSSet(Bytes(16, 0xFF)).mcsRates();
    ASSERT_EQ(all->size(), 77u);
    for (std::size_t i = 0; i < all->size(); ++i) EXPECT_EQ((*all)[i], Number(i));
}

TEST(HTCapabilitiesIE, EndsTheMCSIndicesAt76) {
    const auto atByte9 = [](std::uint8_t byte) {
        return withMCSSet({0, 0, 0, 0, 0, 0, 0, 0, 0, byte}).mcsRates();
    };
    EXPECT_EQ(atByte9(0x10), std::vector<Number>{76});
    EXPECT_EQ(atByte9(0xE0), std::vector<Number>{});
    EXPECT_EQ(atByte9(0xFF), (std::vector<Number>{72, 73, 74, 75, 76}));
}

TEST(HTCapabilitiesIE, DoesNotEmptyTheIndicesWhenParsedAgain) {
    auto ie = withMCSSet({0x03});
    ie.parseSupportedMCSSet();
    EXPECT_EQ(ie.mcsRates(), (std::vector<Number>{0, 1, 0, 1}));
    HalvaneHTCapabilitiesIE empty;
    empty.parseSupportedMCSSet();
    EXPECT_EQ(empty.mcsRates(), std::vector<Number>{});
}

TEST(HTCapabilitiesIE, OfAnyOtherSizeDecodesNothing) {
    Bytes bytes = kTwoStreams;
    bytes.resize(40, 0xFF);
    halvane::testing::forEachPrefix(bytes, [](const ByteBuffer& prefix) {
        const auto ie = HalvaneHTCapabilitiesIE::initWithIE(prefix);
        EXPECT_EQ(ie.isValid(), prefix.size() == 28) << prefix.size();
        EXPECT_EQ(ie.mcsRates().has_value(), prefix.size() == 28);
        EXPECT_EQ(ie.capabilities() != 0, prefix.size() == 28);
        EXPECT_EQ(ie.rawIE(), prefix);
    });
}

TEST(HTCapabilitiesIE, TrustsTheBufferAndNotTheLengthByte) {
    halvane::testing::forEachHostileForm(kTwoStreams, {1}, [](const ByteBuffer& bytes) {
        const auto ie = HalvaneHTCapabilitiesIE::initWithIE(bytes);
        EXPECT_EQ(ie.isValid(), bytes.size() == 28);
    });
}

TEST(HTCapabilitiesIE, DescribesEveryField) {
    Bytes bytes = kTwoStreams;
    bytes[5] = 0x05;
    bytes[6] = 0x00;
    EXPECT_EQ(
        decode(bytes).description(),
        "    IE                                : 2D 1A EF 19 1B 05 00 00 00 00 00 00 00 00 00 "
        "00 00 01 00 00 00 05 04 11 22 33 44 7F \n"
        "    Capabilities                      : 0x19ef\n"
        "    Supports LDPC Coding              : YES\n"
        "    Supports 40MHz Operation          : YES\n"
        "    Static SM Powersave Mode          : NO\n"
        "    Dynamic SM Powersave Mode         : NO\n"
        "    Supports Greenfield               : NO\n"
        "    Supports 20 MHz Short GI          : YES\n"
        "    Supports 40 MHz Short GI          : YES\n"
        "    Supports Tx STBC                  : YES\n"
        "    Number Supported Rx STBC          : 1\n"
        "    Supports HT Delayed Block Ack     : NO\n"
        "    Maximum A-MSDU Length             : 7935\n"
        "    Supports DSSS CCK 40 MHz          : YES\n"
        "    40 MHz Intolerant                 : NO\n"
        "    Supports LSIG TX OP Protection    : NO\n"
        "    AMPDU Parameters                  : 0x1b\n"
        "    Supported MCS Set                 : 05 00 00 00 00 00 00 00 00 00 00 00 01 00 00 "
        "00 \n"
        "    Supported MCS Indices             : 0 2 \n"
        "    Extended Capabilities             : 0x405\n"
        "    Transmit Beamforming Capabilities : 0x44332211\n"
        "    ASEL Capabilities                 : 0x7f\n");
}

TEST(HTCapabilitiesIE, DescribesEachFlagUnderItsLabel) {
    const std::pair<unsigned, const char*> rows[] = {
        {0, "Supports LDPC Coding          "},  {1, "Supports 40MHz Operation      "},
        {2, "Dynamic SM Powersave Mode     "},  {4, "Supports Greenfield           "},
        {5, "Supports 20 MHz Short GI      "},  {6, "Supports 40 MHz Short GI      "},
        {7, "Supports Tx STBC              "},  {10, "Supports HT Delayed Block Ack "},
        {12, "Supports DSSS CCK 40 MHz      "}, {14, "40 MHz Intolerant             "},
        {15, "Supports LSIG TX OP Protection"},
    };
    constexpr unsigned kNoSMPowerSave = 3u << 2;
    for (const auto& [bit, label] : rows) {
        const unsigned rest = bit == 2 ? 0 : kNoSMPowerSave;
        const auto text = withCapabilities(1u << bit | rest).description();
        EXPECT_NE(text.find(std::string("    ") + label + "    : YES\n"), std::string::npos)
            << label << text;
        EXPECT_EQ(text.find("YES"), text.rfind("YES")) << label;
    }
    EXPECT_NE(withCapabilities(0).description().find("Static SM Powersave Mode          : YES\n"),
              std::string::npos);
}

TEST(HTCapabilitiesIE, DescribesAnEmptyObject) {
    EXPECT_EQ(HalvaneHTCapabilitiesIE().description(),
              "    Capabilities                      : 0x00\n"
              "    Supports LDPC Coding              : NO\n"
              "    Supports 40MHz Operation          : NO\n"
              "    Static SM Powersave Mode          : NO\n"
              "    Dynamic SM Powersave Mode         : NO\n"
              "    Supports Greenfield               : NO\n"
              "    Supports 20 MHz Short GI          : NO\n"
              "    Supports 40 MHz Short GI          : NO\n"
              "    Supports Tx STBC                  : NO\n"
              "    Number Supported Rx STBC          : 0\n"
              "    Supports HT Delayed Block Ack     : NO\n"
              "    Maximum A-MSDU Length             : 0\n"
              "    Supports DSSS CCK 40 MHz          : NO\n"
              "    40 MHz Intolerant                 : NO\n"
              "    Supports LSIG TX OP Protection    : NO\n"
              "    AMPDU Parameters                  : 0x0\n"
              "    Supported MCS Set                 : (null)\n"
              "    Extended Capabilities             : 0x00\n"
              "    Transmit Beamforming Capabilities : 0x0000\n"
              "    ASEL Capabilities                 : 0x0\n");
}

}  // namespace

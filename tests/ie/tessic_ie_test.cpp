#include "halvane/ie/tessic_ie.h"

#include <cstddef>
#include <gtest/gtest.h>
#include <set>
#include <string>
#include <vector>

#include "tests/support/hostile_bytes.h"

using halvane::ByteBuffer;
using halvane::HalvaneTessicIE;
using halvane::Number;
using halvane::testing::Bytes;

namespace {

Bytes element(std::uint8_t flagsLow, std::uint8_t flagsHigh) {
    return {
        0xDD,     0x07,             // element ID 221, length 7
        0x0A,     0x7E,      0x56,  // vendor-general OUI
        0x02,                       // version 2
        0x75,                       // product ID 117
        flagsLow, flagsHigh,        // flags, the low byte first
    };
}

HalvaneTessicIE decode(const Bytes& bytes) {
    return HalvaneTessicIE::initWithIE(ByteBuffer(bytes));
}

// The names of the flags that are set. One comparison thus also shows that no other flag is set.
using Flags = std::set<std::string>;

Flags flagsOf(const HalvaneTessicIE& ie) {
    Flags names;
    if (ie.isWoWCapable()) names.insert("WoW");
    if (ie.hasInterferenceRobustness()) names.insert("interference");
    if (ie.isUnconfigured()) names.insert("unconfigured");
    if (ie.isPPPoEServer()) names.insert("PPPoE");
    if (ie.isGuestNetwork()) names.insert("guest");
    if (ie.hasLegacyWDS()) names.insert("WDS");
    if (ie.isWPSCapable()) names.insert("WPS capable");
    if (ie.isWPSActive()) names.insert("WPS active");
    if (ie.isSAWCapable()) names.insert("SAW");
    return names;
}

TEST(TessicIE, IsEmptyAtFirst) {
    const HalvaneTessicIE ie;
    EXPECT_FALSE(ie.isValid());
    EXPECT_FALSE(ie.rawIE());
    EXPECT_FALSE(ie.TessicVersion());
    EXPECT_FALSE(ie.TessicProductName());
    EXPECT_EQ(flagsOf(ie), Flags{});
}

TEST(TessicIE, WithoutAnElementIsNotValid) {
    const auto ie = HalvaneTessicIE::initWithIE(std::nullopt);
    EXPECT_FALSE(ie.isValid());
    EXPECT_FALSE(ie.rawIE());
    EXPECT_EQ(ie.description(), "    IE                       : (null)\n");
}

TEST(TessicIE, DecodesVersionProductAndFlags) {
    const auto ie = decode(element(0x00, 0x00));
    EXPECT_TRUE(ie.isValid());
    EXPECT_EQ(ie.rawIE(), ByteBuffer(element(0x00, 0x00)));
    EXPECT_EQ(ie.TessicVersion(), Number(2));
    EXPECT_EQ(ie.TessicProductName(), HalvaneTessicIE::stringValueForProductID(117));
    EXPECT_EQ(flagsOf(ie), Flags{});
}

TEST(TessicIE, EachFlagHasItsBitOfTheLittleEndianField) {
    const std::vector<std::string> flagOfBit = {"WoW",
                                                "",
                                                "",
                                                "",
                                                "",
                                                "",
                                                "",
                                                "",
                                                "interference",
                                                "unconfigured",
                                                "PPPoE",
                                                "guest",
                                                "WDS",
                                                "WPS capable",
                                                "WPS active",
                                                "SAW"};
    ASSERT_EQ(flagOfBit.size(), 16u);
    for (std::size_t bit = 0; bit < 16; ++bit) {
        const unsigned field = 1u << bit;
        const auto ie = decode(element(static_cast<std::uint8_t>(field & 0xFF),
                                       static_cast<std::uint8_t>(field >> 8)));
        EXPECT_EQ(flagsOf(ie), flagOfBit[bit].empty() ? Flags{} : Flags{flagOfBit[bit]}) << bit;
    }
    EXPECT_EQ(flagsOf(decode(element(0x01, 0xFF))).size(), 9u);
}

TEST(TessicIE, ShortElementKeepsWholeFieldsAndIsNotValid) {
    struct Row {
        std::size_t size;
        bool hasVersion, hasProduct, isValid;
    };
    const std::vector<Row> rows = {
        {0, false, false, false}, {5, false, false, false}, {6, true, false, false},
        {7, true, true, false},   {8, true, true, false},   {9, true, true, true},
        {10, true, true, true},
    };
    Bytes longest = element(0x01, 0xFF);
    longest.push_back(0xEE);
    for (const Row& row : rows) {
        const auto ie = HalvaneTessicIE::initWithIE(ByteBuffer(longest).slice(0, row.size));
        EXPECT_EQ(ie.TessicVersion().has_value(), row.hasVersion) << row.size;
        EXPECT_EQ(ie.TessicProductName().has_value(), row.hasProduct) << row.size;
        EXPECT_EQ(ie.isValid(), row.isValid) << row.size;
        EXPECT_EQ(flagsOf(ie).size(), row.isValid ? 9u : 0u) << row.size;
    }
}

TEST(TessicIE, NamesThirteenProductsBetween3And117) {
    std::set<std::string> names;
    for (std::int64_t id = -1; id <= 256; ++id) {
        const auto name = HalvaneTessicIE::stringValueForProductID(id);
        if (name == "Unknown") continue;
        EXPECT_GE(id, 3);
        EXPECT_LE(id, 117);
        EXPECT_TRUE(names.insert(name).second) << name << " twice";
    }
    EXPECT_EQ(names.size(), 13u);
    EXPECT_NE(HalvaneTessicIE::stringValueForProductID(3), "Unknown");
    EXPECT_NE(HalvaneTessicIE::stringValueForProductID(117), "Unknown");
    EXPECT_EQ(HalvaneTessicIE::stringValueForProductID(256 + 3), "Unknown");
    EXPECT_EQ(HalvaneTessicIE::stringValueForProductID(INT64_MIN), "Unknown");
}

TEST(TessicIE, UnknownProductHasTheTextUnknown) {
    EXPECT_EQ(decode({0xDD, 0x05, 0x0A, 0x7E, 0x56, 0x01, 0x02}).TessicProductName(), "Unknown");
}

TEST(TessicIE, DescribesEveryFieldOfAValidElement) {
    EXPECT_EQ(decode(element(0x01, 0x55)).description(),
              "    IE                       : DD 07 0A 7E 56 02 75 01 55 \n"
              "    Tessic Version            : 2\n"
              "    Tessic Product            : Tessic Tower 3\n"
              "    Interferemce Robustness  : YES\n"
              "    Unfconigured             : NO\n"
              "    PPPoE Server             : YES\n"
              "    Guest Network            : NO\n"
              "    Legacy WDS               : YES\n"
              "    WPS Capable              : NO\n"
              "    WPS Active               : YES\n"
              "    SAW Capable              : NO\n"
              "    WOW Capable              : YES\n");
}

TEST(TessicIE, DescribesOnlyTheBytesOfAShortElement) {
    EXPECT_EQ(decode({0xDD, 0x06, 0x0A, 0x7E, 0x56, 0x02, 0x75, 0x01}).description(),
              "    IE                       : DD 06 0A 7E 56 02 75 01 \n");
}

TEST(TessicIE, HostileFormsDecodeWhatIsThere) {
    halvane::testing::forEachHostileForm(element(0xFF, 0xFF), {1, 6}, [](const ByteBuffer& bytes) {
        const auto ie = HalvaneTessicIE::initWithIE(bytes);
        EXPECT_EQ(ie.rawIE(), bytes);
        EXPECT_EQ(ie.isValid(), bytes.size() >= 9);
        EXPECT_EQ(ie.TessicVersion().has_value(), bytes.size() >= 6);
        EXPECT_EQ(ie.description().back(), '\n');
    });
}

}  // namespace

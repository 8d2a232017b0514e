#include "halvane/ie/country_ie.h"

#include <cstddef>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "tests/support/hostile_bytes.h"

using halvane::ByteBuffer;
using halvane::HalvaneCountryIE;
using halvane::testing::Bytes;

namespace {

// As a Korean access point sends it in its beacons.
const Bytes kKorea = {
    0x07, 0x06,        // element ID 7, length 6
    0x4B, 0x52, 0x20,  // "KR ", all environments
    0x01, 0x0D, 0x14,  // channels 1 to 13, 20 dBm
};

// Channel triplets around regulatory ones, at the edge between the two, and a byte of padding.
const Bytes kMixed = {
    0x07, 0x10,       // element ID 7, length 16
    'U',  'S',  'I',  // indoor
    36,   4,    17,   // channels 36 to 48, 17 dBm
    201,  1,    2,    // operating class 1, coverage class 2
    200,  1,    23,   // the last first octet of a channel triplet
    255,  5,    0,    // the last one of a regulatory triplet
    0x00,             // padding
};

Bytes prefixOf(const Bytes& bytes, std::size_t size) {
    return Bytes(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(size));
}

HalvaneCountryIE decode(const Bytes& bytes) {
    return HalvaneCountryIE::initWithIE(ByteBuffer(bytes));
}

template <typename Tuples>
std::vector<std::string> textsOf(const Tuples& tuples) {
    std::vector<std::string> texts;
    if (!tuples) return texts;
    for (const auto& tuple : *tuples) texts.push_back(tuple.description());
    return texts;
}

TEST(CountryIE, IsEmptyAtFirst) {
    const HalvaneCountryIE ie;
    EXPECT_FALSE(ie.isValid());
    EXPECT_FALSE(ie.rawIE());
    EXPECT_FALSE(ie.countryCode());
    EXPECT_FALSE(ie.channelTuples());
    EXPECT_FALSE(ie.regulatoryTuples());
    EXPECT_EQ(ie.description(), "    IE                       : (null)\n");
}

TEST(CountryIE, DecodesACapturedElement) {
    const auto ie = decode(kKorea);
    EXPECT_TRUE(ie.isValid());
    EXPECT_EQ(ie.rawIE(), ByteBuffer(kKorea));
    EXPECT_EQ(ie.countryCode(), (ByteBuffer{'K', 'R', ' '}));
    ASSERT_TRUE(ie.channelTuples());
    ASSERT_EQ(ie.channelTuples()->size(), 1u);
    EXPECT_EQ(ie.channelTuples()->front().firstChannel(), 1);
    EXPECT_EQ(ie.channelTuples()->front().numChannels(), 13);
    EXPECT_EQ(ie.channelTuples()->front().maxTxPower(), 20);
    EXPECT_FALSE(ie.regulatoryTuples());
}

TEST(CountryIE, SplitsTripletsByTheirFirstByteInElementOrder) {
    const auto ie = decode(kMixed);
    EXPECT_EQ(textsOf(ie.channelTuples()),
              (std::vector<std::string>{
                  "First Channel <36>, Num Channels  <4>, Max Tx Power <17>",
                  "First Channel <200>, Num Channels  <1>, Max Tx Power <23>",
              }));
    EXPECT_EQ(textsOf(ie.regulatoryTuples()),
              (std::vector<std::string>{
                  "Extension Identifier <201>, Regulatory Class <1>, Coverage Class <2>",
                  "Extension Identifier <255>, Regulatory Class <5>, Coverage Class <0>",
              }));
}

TEST(CountryIE, OfRegulatoryTripletsAloneHasNoChannelArray) {
    const auto ie = decode({7, 6, 'U', 'S', ' ', 201, 1, 2});
    EXPECT_FALSE(ie.channelTuples());
    ASSERT_TRUE(ie.regulatoryTuples());
    EXPECT_EQ(ie.regulatoryTuples()->size(), 1u);
}

TEST(CountryIE, ShortElementIsValidAndLacksWhatItDoesNotReach) {
    struct Row {
        std::size_t bodySize;
        bool hasCode;
        std::size_t tuples;
    };
    const std::vector<Row> rows = {{0, false, 0}, {2, false, 0}, {3, true, 0}, {4, true, 0},
                                   {5, true, 0},  {6, true, 1},  {7, true, 1}, {8, true, 1},
                                   {9, true, 2},  {15, true, 4}, {16, true, 4}};
    for (const Row& row : rows) {
        const auto ie = decode(prefixOf(kMixed, 2 + row.bodySize));
        EXPECT_TRUE(ie.isValid()) << row.bodySize;
        EXPECT_EQ(ie.countryCode().has_value(), row.hasCode) << row.bodySize;
        EXPECT_EQ(textsOf(ie.channelTuples()).size() + textsOf(ie.regulatoryTuples()).size(),
                  row.tuples)
            << row.bodySize;
        EXPECT_EQ(ie.channelTuples().has_value(), row.tuples > 0) << row.bodySize;
        EXPECT_EQ(ie.regulatoryTuples().has_value(), row.tuples > 1) << row.bodySize;
    }
}

TEST(CountryIE, DecodingAgainChangesNothing) {
    auto ie = decode(kMixed);
    const auto text = ie.description();
    ie.parseIE();
    EXPECT_EQ(ie.description(), text);
}

TEST(CountryIE, DescribesChannelTripletsBeforeRegulatoryOnes) {
    EXPECT_EQ(
        decode(kMixed).description(),
        "    IE                       : 07 10 55 53 49 24 04 11 C9 01 02 C8 01 17 FF 05 00 00 \n"
        "    Country Code             : <555349>\n"
        "    Channel Tuple            : First Channel <36>, Num Channels  <4>, Max Tx Power <17>\n"
        "    Channel Tuple            : First Channel <200>, Num Channels  <1>, Max Tx Power "
        "<23>\n"
        "    Regulatory Tuple         : Extension Identifier <201>, Regulatory Class <1>, "
        "Coverage Class <2>\n"
        "    Regulatory Tuple         : Extension Identifier <255>, Regulatory Class <5>, "
        "Coverage Class <0>\n");
}

TEST(CountryIE, DescribesAMissingCountryStringAsNull) {
    EXPECT_EQ(decode({7, 2, 'U', 'S'}).description(),
              "    IE                       : 07 02 55 53 \n"
              "    Country Code             : (null)\n");
}

TEST(CountryIE, HostileFormsDecodeWhatIsThere) {
    halvane::testing::forEachHostileForm(kMixed, {1, 5, 8}, [](const ByteBuffer& element) {
        const auto ie = HalvaneCountryIE::initWithIE(element);
        EXPECT_EQ(ie.rawIE(), element);
        EXPECT_TRUE(ie.isValid());
        const auto tuples =
            textsOf(ie.channelTuples()).size() + textsOf(ie.regulatoryTuples()).size();
        EXPECT_EQ(tuples, element.size() < 5 ? 0 : (element.size() - 5) / 3);
        EXPECT_EQ(ie.description().back(), '\n');
    });
}

}  // namespace

#include <cstddef>
#include <cstdint>
#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <vector>

#include "halvane/air/reduced_neighbor_report_internal.h"
#include "halvane/base/mac_address.h"

#include "tests/air/element_samples.h"

using halvane::MacAddress;
using halvane::testing::bytesOf;
using namespace halvane::air;

namespace {

constexpr MacAddress kBssid({0x02, 0, 0, 0, 0, 0xAA});

const TbttInformation& onlyPoint(const ReducedNeighborReport& report) {
    return report.neighbors.at(0).accessPoints.at(0);
}

// 9.4.2.170.2 and 802.11be: an access point with every field.
TEST(AirReducedNeighborReport, DecodesEveryField) {
    const auto whole =
        ReducedNeighborReport::decode(bytesOf("0410 83 25 14 0200000000AA 12345678 5A FE 012530"));
    ASSERT_TRUE(whole);
    ASSERT_EQ(whole->neighbors.size(), 1u);
    EXPECT_EQ(whole->neighbors[0].type(), 0);
    EXPECT_TRUE(whole->neighbors[0].isFiltered());
    EXPECT_EQ(whole->neighbors[0].length(), 16u);
    EXPECT_EQ(whole->neighbors[0].operatingClass, 131);
    EXPECT_EQ(whole->neighbors[0].channel, 37);
    const TbttInformation& point = onlyPoint(*whole);
    EXPECT_EQ(point.tbttOffset, 20);
    EXPECT_EQ(point.bssid, kBssid);
    EXPECT_EQ(point.shortSsid, 0x78563412u);
    ASSERT_TRUE(point.bssParameters);
    EXPECT_FALSE(point.bssParameters->isOctRecommended());
    EXPECT_TRUE(point.bssParameters->hasSameSsid());
    EXPECT_FALSE(point.bssParameters->isInMultipleBssidSet());
    EXPECT_TRUE(point.bssParameters->isTransmittedBssid());
    EXPECT_TRUE(point.bssParameters->isInEssWithCoLocatedAp());
    EXPECT_FALSE(point.bssParameters->sendsUnsolicitedProbeResponses());
    EXPECT_TRUE(point.bssParameters->isCoLocated());
    EXPECT_EQ(point.psd, -2);
    EXPECT_EQ(point.maxPsd(), -1.0);
    ASSERT_TRUE(point.mldParameters);
    EXPECT_EQ(point.mldParameters->apMldId(), 1);
    EXPECT_EQ(point.mldParameters->linkId(), 5);
    EXPECT_EQ(point.mldParameters->bssParametersChangeCount(), 2);
    EXPECT_TRUE(point.mldParameters->areAllUpdatesIncluded());
    EXPECT_TRUE(point.mldParameters->isLinkDisabled());
    EXPECT_TRUE(point.rest.empty());
}

TEST(AirReducedNeighborReport, TellsUnknownValues) {
    TbttMldParameters parameters;
    parameters.fields.octets = {0xFF, 0xFF, 0x0F};
    EXPECT_FALSE(parameters.apMldId() || parameters.linkId() ||
                 parameters.bssParametersChangeCount());
    EXPECT_FALSE(parameters.areAllUpdatesIncluded() || parameters.isLinkDisabled());
    TbttInformation point;
    EXPECT_FALSE(point.maxPsd());
    point.psd = 127;
    EXPECT_FALSE(point.maxPsd());
    point.psd = -128;
    EXPECT_EQ(point.maxPsd(), -64.0);
}

struct LengthRow {
    std::uint8_t length;
    std::string_view fields;  // o, b, s, p, d, m as they are there
    std::size_t rest;
};

std::string fieldsOf(const TbttInformation& point) {
    std::string fields;
    if (point.tbttOffset) fields += 'o';
    if (point.bssid) fields += 'b';
    if (point.shortSsid) fields += 's';
    if (point.bssParameters) fields += 'p';
    if (point.psd) fields += 'd';
    if (point.mldParameters) fields += 'm';
    return fields;
}

TbttInformation pointOf(std::uint8_t type, std::uint8_t length) {
    std::vector<std::uint8_t> body(4u + length, 0x11);
    body[0] = type;
    body[1] = length;
    const auto report = ReducedNeighborReport::decode(body);
    EXPECT_TRUE(report && report->neighbors.size() == 1 && report->rest.empty());
    EXPECT_EQ(report->encode(), body);
    return onlyPoint(*report);
}

// Table 9-338 with 802.11be. Reserved lengths are skipped whole.
TEST(AirReducedNeighborReport, HasTheFieldsOfItsLength) {
    constexpr LengthRow kRows[] = {
        {1, "o", 0},       {2, "op", 0},      {3, "", 3},           {4, "", 4},     {5, "os", 0},
        {6, "osp", 0},     {7, "ob", 0},      {8, "obp", 0},        {9, "obpd", 0}, {10, "obm", 0},
        {11, "obs", 0},    {12, "obsp", 0},   {13, "obspd", 0},     {14, "", 14},   {15, "", 15},
        {16, "obspdm", 0}, {17, "obspdm", 1}, {255, "obspdm", 239},
    };
    for (const LengthRow& row : kRows) {
        const TbttInformation point = pointOf(0, row.length);
        EXPECT_EQ(fieldsOf(point), row.fields) << int{row.length};
        EXPECT_EQ(point.rest.size(), row.rest) << int{row.length};
    }
}

TEST(AirReducedNeighborReport, HasTheFieldsOfItsType) {
    EXPECT_EQ(fieldsOf(pointOf(1, 3)), "m");
    EXPECT_EQ(fieldsOf(pointOf(1, 16)), "m");
    EXPECT_EQ(pointOf(1, 16).rest.size(), 13u);
    EXPECT_EQ(fieldsOf(pointOf(1, 2)), "");
    EXPECT_EQ(fieldsOf(pointOf(2, 13)), "");
    EXPECT_EQ(fieldsOf(pointOf(3, 1)), "");
}

TEST(AirReducedNeighborReport, DecodesSeveralChannelsAndAccessPoints) {
    const auto report =
        ReducedNeighborReport::decode(bytesOf("2001 51 06 01 02 03 0000 51 0B 0001 80 2A FF"));
    ASSERT_TRUE(report);
    ASSERT_EQ(report->neighbors.size(), 3u);
    ASSERT_EQ(report->neighbors[0].accessPoints.size(), 3u);
    EXPECT_EQ(report->neighbors[0].accessPoints[2].tbttOffset, 3);
    EXPECT_TRUE(report->neighbors[1].accessPoints.empty());
    EXPECT_EQ(report->neighbors[2].channel, 42);
    EXPECT_EQ(report->neighbors[2].accessPoints.at(0).tbttOffset, 255);
}

TEST(AirReducedNeighborReport, KeepsChannelsBeforeOneThatDoesNotFit) {
    const auto report = ReducedNeighborReport::decode(bytesOf("0001 51 06 01 1001 51 0B 01"));
    ASSERT_TRUE(report);
    EXPECT_EQ(report->neighbors.size(), 1u);
    EXPECT_EQ(report->rest.size(), 5u);
    const auto none = ReducedNeighborReport::decode(bytesOf("0000 51"));
    ASSERT_TRUE(none);
    EXPECT_TRUE(none->neighbors.empty());
}

TEST(AirReducedNeighborReport, IsReadWithoutListsAsItIsDecoded) {
    for (const auto* const hex :
         {"0410 83 25 14 0200000000AA 12345678 5A FE 012530", "1103 51 06 000000 000100 0000 51 01",
          "0107 51 06 01 02", "0301 51 06 FF FF", "", "01"}) {
        const auto body = bytesOf(hex);
        const auto report = ReducedNeighborReport::decode(body);
        ASSERT_TRUE(report) << hex;
        std::vector<TbttInformation> wanted;
        std::vector<TbttInformation> found;
        for (const auto& channel : report->neighbors) {
            wanted.insert(wanted.end(), channel.accessPoints.begin(), channel.accessPoints.end());
        }
        forEachNeighbor(body, [&](const auto& channel, const auto& accessPoint) {
            EXPECT_TRUE(channel.channel == 6 || channel.channel == 37) << hex;
            found.push_back(accessPoint);
        });
        EXPECT_EQ(found, wanted) << hex;
    }
}

TEST(AirReducedNeighborReport, IsEncodedFromItsFields) {
    ReducedNeighborReport report;
    auto& neighbor = report.neighbors.emplace_back();
    neighbor.operatingClass = 131;
    neighbor.channel = 5;
    for (std::uint8_t i = 0; i < 2; ++i) {
        auto& point = neighbor.accessPoints.emplace_back();
        point.tbttOffset = i;
        point.bssid = kBssid;
        point.bssParameters.emplace();
    }
    EXPECT_EQ(report.encode(), bytesOf("1008 83 05 00 0200000000AA 00 01 0200000000AA 00"));
}

}  // namespace

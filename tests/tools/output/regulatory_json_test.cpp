#include "tools/halvane/output/regulatory_json.h"

#include <cstdint>
#include <gtest/gtest.h>
#include <optional>

using namespace halvane;
using namespace halvane::tool;

namespace {

TEST(RegulatoryJSON, HasTheSixPropertiesOfAChannel) {
    auto channel = HalvaneChannel::initWithChannel_withFrequency_isRadarProne(52, 5260, true);
    channel.setSupports40MHz(true);
    EXPECT_EQ(jsonOf(channel).dump(),
              R"({"channelNumber":52,"channelFrequency":5260,"isRadarProne":true,)"
              R"("isDisabled":false,"supports40MHz":true,"supports80MHz":false})");
    auto other = HalvaneChannel::initWithChannel_withFrequency_isRadarProne(INT64_MIN, -1, false);
    other.setIsDisabled(true);
    other.setSupports80MHz(true);
    EXPECT_EQ(jsonOf(other).dump(),
              R"({"channelNumber":-9223372036854775808,"channelFrequency":-1,"isRadarProne":false,)"
              R"("isDisabled":true,"supports40MHz":false,"supports80MHz":true})");
}

TEST(RegulatoryJSON, HasTheChannelsOfACountry) {
    auto country = HalvaneCountry::initWithFriendlyName_withISOName_withISOCode("\"A\"", "AA", -1);
    country.channels().push_back(
        HalvaneChannel::initWithChannel_withFrequency_isRadarProne(1, 2412, false));
    EXPECT_EQ(jsonOf(country).dump(),
              R"({"friendlyName":"\"A\"","isoName":"AA","isoCode":-1,"channels":[)" +
                  jsonOf(country.channels()[0]).dump() + "]}");
}

TEST(RegulatoryJSON, HasTheCountriesOfASKU) {
    auto sku = HalvaneSKU::initWithFriendlyName_withShortName("Some", "S");
    sku.addDefaultCountry_withISOName_withISOCode("A", "AA", 1);
    const JSON json = jsonOf(sku);
    EXPECT_EQ(json["friendlyName"], "Some");
    EXPECT_EQ(json["shortName"], "S");
    EXPECT_EQ(json["countries"], JSON::array({jsonOf(sku.countries()[0])}));
    EXPECT_EQ(json.size(), 3u);
}

TEST(RegulatoryJSON, LeavesOutAbsentNamesAlone) {
    const auto country = HalvaneCountry::initWithSkeletonRepresentation({});
    EXPECT_EQ(jsonOf(country).dump(), R"({"isoCode":0,"channels":[]})");
    const auto sku = HalvaneSKU::initWithFriendlyName_withShortName(std::nullopt, "");
    EXPECT_EQ(jsonOf(sku).dump(), R"({"shortName":"","countries":[]})");
}

}  // namespace

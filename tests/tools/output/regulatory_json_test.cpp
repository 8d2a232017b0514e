#include "tools/halvane/output/regulatory_json.h"

#include <cstdint>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <optional>

#include "tests/support/written_json.h"

using namespace halvane;
using namespace halvane::testing;
using JSON = nlohmann::ordered_json;

namespace {

TEST(RegulatoryJSON, HasTheSixPropertiesOfAChannel) {
    auto channel = HalvaneChannel::initWithChannel_withFrequency_isRadarProne(52, 5260, true);
    channel.setSupports40MHz(true);
    EXPECT_EQ(jsonText(channel),
              R"({"channelNumber":52,"channelFrequency":5260,"isRadarProne":true,)"
              R"("isDisabled":false,"supports40MHz":true,"supports80MHz":false})");
    auto other = HalvaneChannel::initWithChannel_withFrequency_isRadarProne(INT64_MIN, -1, false);
    other.setIsDisabled(true);
    other.setSupports80MHz(true);
    EXPECT_EQ(jsonText(other),
              R"({"channelNumber":-9223372036854775808,"channelFrequency":-1,"isRadarProne":false,)"
              R"("isDisabled":true,"supports40MHz":false,"supports80MHz":true})");
}

TEST(RegulatoryJSON, HasTheChannelsOfACountry) {
    auto country = HalvaneCountry::initWithFriendlyName_withISOName_withISOCode("\"A\"", "AA", -1);
    country.channels().push_back(
        HalvaneChannel::initWithChannel_withFrequency_isRadarProne(1, 2412, false));
    EXPECT_EQ(jsonText(country),
              R"({"friendlyName":"\"A\"","isoName":"AA","isoCode":-1,"channels":[)" +
                  jsonText(country.channels()[0]) + "]}");
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
    EXPECT_EQ(jsonText(country), R"({"isoCode":0,"channels":[]})");
    const auto sku = HalvaneSKU::initWithFriendlyName_withShortName(std::nullopt, "");
    EXPECT_EQ(jsonText(sku), R"({"shortName":"","countries":[]})");
}

}  // namespace

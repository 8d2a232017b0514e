// Channels, countries and SKUs under any operations: look-ups agree with a walk over the rows, and
// sorting and removal keep the order.
#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "halvane/regulatory/channel.h"
#include "halvane/regulatory/channel_map_internal.h"
#include "halvane/regulatory/country.h"
#include "halvane/regulatory/sku.h"

#include "fuzz/byte_source.h"
#include "fuzz/require.h"

using namespace halvane;

namespace {

void checkMap(unsigned number) {
    const unsigned frequency = HalvaneChannel::channelFrequencyForNumber(number);
    if (frequency != 0) REQUIRE(HalvaneChannel::channelNumberForFrequency(frequency) == number);
    const unsigned extension = HalvaneChannel::channelExtensionForNumber(number);
    REQUIRE(extension == 0 || HalvaneChannel::channelFrequencyForNumber(extension) != 0);
    auto country = HalvaneCountry::initWithFriendlyName_withISOName_withISOCode("a", "b", 1);
    country.createDefaultChannelList();
    const auto found =
        std::ranges::find(country.channels(), std::int64_t{number}, &HalvaneChannel::channelNumber);
    REQUIRE((found != country.channels().end()) == (frequency != 0));
    if (frequency != 0) REQUIRE(found->channelFrequency() == frequency);
}

// A map with rows from the input after the standard ones.
void checkOwnMap(fuzzing::ByteSource source) {
    ChannelMap map;
    map.add(1, 1, 1);  // dropped: there is no map yet
    map.build();
    std::vector<std::array<unsigned, 3>> rows;
    while (!source.empty() && rows.size() < 64) {
        rows.push_back({200u + source.byte(), 10000u + source.byte(), source.byte()});
        map.add(rows.back()[0], rows.back()[1], rows.back()[2]);
    }
    for (const auto& row : rows) {
        const auto byNumber = std::ranges::find(rows, row[0], [](const auto& r) { return r[0]; });
        const auto byFrequency =
            std::ranges::find(rows, row[1], [](const auto& r) { return r[1]; });
        REQUIRE(map.frequencyForNumber(row[0]) == (*byNumber)[1]);
        const auto byExtension = std::ranges::find_if(
            rows, [&row](const auto& r) { return r[0] == row[0] && r[2] != 0; });
        REQUIRE(map.extensionForNumber(row[0]) ==
                (byExtension != rows.end() ? (*byExtension)[2] : 0));
        REQUIRE(map.numberForFrequency(row[1]) == (*byFrequency)[0]);
    }
}

HalvaneChannel channelFrom(fuzzing::ByteSource& source) {
    auto channel = HalvaneChannel::initWithChannel_withFrequency_isRadarProne(
        source.byte(), source.byte(), source.flag());
    channel.setIsDisabled(source.flag());
    channel.setSupports40MHz(source.flag());
    channel.setSupports80MHz(source.flag());
    return channel;
}

HalvaneCountry countryFrom(fuzzing::ByteSource& source) {
    auto country = HalvaneCountry::initWithFriendlyName_withISOName_withISOCode(
        source.text(6), source.text(2), source.byte());
    if (source.below(8) == 7) country.setFriendlyName(std::nullopt);
    for (std::size_t i = source.below(5); i > 0; --i) {
        country.channels().push_back(channelFrom(source));
    }
    country.sortChannelsByFrequency();
    REQUIRE(std::ranges::is_sorted(country.channels(), {}, &HalvaneChannel::channelFrequency));
    REQUIRE(!country.description().empty());
    for (const auto& channel : country.channels()) {
        REQUIRE(HalvaneCountry::compareByFrequency_channel2(country.channels().front(), channel) <=
                0);
        REQUIRE(!channel.description().empty());
    }
    return country;
}

void checkSKU(fuzzing::ByteSource source) {
    auto sku = HalvaneSKU::initWithFriendlyName_withShortName(source.text(4), source.text(4));
    for (std::size_t i = source.below(8); i > 0; --i) sku.addCountry(countryFrom(source));
    sku.addDefaultCountry_withISOName_withISOCode(source.text(6), "ZZ", 999);
    REQUIRE(sku.findCountryByISOName("zz") != nullptr);
    sku.sortCountriesByFriendlyName();
    const auto& countries = sku.countries();
    for (std::size_t i = 1; i < countries.size(); ++i) {
        REQUIRE(WiFiManagerCompareCountryByFriendlyName(countries[i - 1], countries[i], nullptr) <=
                0);
    }
    const auto back = HalvaneSKU::initWithSkeletonRepresentation(sku.skeletonRepresentation());
    REQUIRE(back == sku && back.description() == sku.description());
    const std::string name = countries[source.below(countries.size())].friendlyName().value_or("");
    const auto* found = sku.findCountryByFriendlyName(name);
    const auto expected = found != nullptr ? std::optional(*found) : std::nullopt;
    const std::size_t before = countries.size();
    REQUIRE(sku.removeCountryByFriendlyName(name) == expected);
    REQUIRE((countries.size() < before) == expected.has_value());
    if (expected) REQUIRE(std::ranges::count(countries, *expected) == 0);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzzing::ByteSource source(data, size);
    static const auto skus = HalvaneSKU::createDefaultSKUList();
    REQUIRE(skus.size() == 7);
    checkMap(source.byte());
    REQUIRE(HalvaneChannel::channelNumberForFrequency(source.integer<std::uint16_t>()) > 0);
    checkOwnMap(source);
    checkSKU(source);
    return 0;
}

#include "halvane/regulatory/sku.h"

#include <algorithm>
#include <iterator>
#include <utility>
#include <vector>

#include "halvane/base/describe.h"
#include "halvane/base/memory_allows_internal.h"
#include "halvane/base/skeleton_internal.h"
#include "halvane/regulatory/case_folding_internal.h"
#include "halvane/regulatory/sku_table_internal.h"
#include "halvane/utils/log.h"
#include "halvane/utils/printf/std_string_internal.h"

namespace halvane {

namespace {

constexpr const char* kFriendlyName = "FriendlyName";
constexpr const char* kShortName = "ShortName";
constexpr const char* kCountries = "Countries";

// What a search compares, and how it logs the comparison.
struct Search {
    const std::optional<std::string>& (HalvaneCountry::*property)() const;
    const char* function;
    const char* format;
};

constexpr Search kByFriendlyName = {
    &HalvaneCountry::friendlyName,
    "-[HalvaneSKU findCountryByFriendlyName:]",
    "Compare Country <%@> to Friendly Name <%@>\n",
};
constexpr Search kByISOName = {
    &HalvaneCountry::isoName,
    "-[HalvaneSKU findCountryByISOName:]",
    "Compare Country <%@> to ISO Name <%@>\n",
};

// The wanted name is the first argument, although the texts suggest the reverse order: readers of
// the log know the lines in this form.
void logComparison(const Search& search, std::string_view name,
                   const std::optional<std::string>& own) {
    if (!LogIsEnabled(&gLogCategory_WiFi, kLogLevelVerbose)) return;
    const PropertyListValue wanted = name;
    const PropertyListValue found = own ? PropertyListValue(*own) : PropertyListValue();
    LogPrintF(&gLogCategory_WiFi, search.function, kLogLevelVerbose, search.format, &wanted,
              &found);
}

// `countries` may be constant; the resulting country is constant then too.
template <typename Countries>
auto* findCountry(Countries& countries, const Search& search, std::string_view name) {
    const auto found = std::ranges::find_if(countries, [&](const HalvaneCountry& country) {
        const auto& own = (country.*search.property)();
        logComparison(search, name, own);
        return own && orderOfFolded(*own, name) == 0;
    });
    return found != countries.end() ? &*found : nullptr;
}

}  // namespace

HalvaneSKU HalvaneSKU::initWithFriendlyName_withShortName(std::optional<std::string> friendlyName,
                                                          std::optional<std::string> shortName) {
    HalvaneSKU sku;
    sku.friendlyName_ = std::move(friendlyName);
    sku.shortName_ = std::move(shortName);
    return sku;
}

HalvaneSKU HalvaneSKU::initWithSkeletonRepresentation(const PropertyListDictionary& skeleton) {
    HalvaneSKU sku;
    sku.friendlyName_ = skeleton::textFor(skeleton, kFriendlyName);
    sku.shortName_ = skeleton::textFor(skeleton, kShortName);
    sku.countries_ = skeleton::recordsFor<HalvaneCountry>(skeleton, kCountries);
    return sku;
}

std::vector<HalvaneSKU> HalvaneSKU::createDefaultSKUList() {
    auto list = ifMemoryAllows([] {
        std::vector<HalvaneSKU> skus;
        skus.reserve(std::size(kDefaultSKUs));
        for (const DefaultSKU& row : kDefaultSKUs) {
            const auto countries = defaultCountriesOf(row.sku);
            HalvaneSKU& sku = skus.emplace_back(
                initWithFriendlyName_withShortName(row.friendlyName, row.shortName));
            sku.countries_.reserve(countries.size());
            for (const DefaultCountry& country : countries) {
                sku.addDefaultCountry_withISOName_withISOCode(country.friendlyName, country.isoName,
                                                              country.isoCode);
            }
        }
        return skus;
    });
    return list ? std::move(*list) : std::vector<HalvaneSKU>();
}

PropertyListDictionary HalvaneSKU::skeletonRepresentation() const {
    PropertyListDictionary skeleton;
    skeleton::setIfPresent(skeleton, kFriendlyName, friendlyName_);
    skeleton::setIfPresent(skeleton, kShortName, shortName_);
    skeleton.set(kCountries, skeleton::skeletonsOf(countries_));
    return skeleton;
}

void HalvaneSKU::addDefaultCountry_withISOName_withISOCode(std::string friendlyName,
                                                           std::string isoName,
                                                           std::int64_t isoCode) {
    auto country = HalvaneCountry::initWithFriendlyName_withISOName_withISOCode(
        std::move(friendlyName), std::move(isoName), isoCode);
    country.createDefaultChannelList();
    addCountry(std::move(country));
}

const HalvaneCountry* HalvaneSKU::findCountryByFriendlyName(std::string_view name) const {
    return findCountry(countries_, kByFriendlyName, name);
}

HalvaneCountry* HalvaneSKU::findCountryByFriendlyName(std::string_view name) {
    return findCountry(countries_, kByFriendlyName, name);
}

const HalvaneCountry* HalvaneSKU::findCountryByISOName(std::string_view name) const {
    return findCountry(countries_, kByISOName, name);
}

HalvaneCountry* HalvaneSKU::findCountryByISOName(std::string_view name) {
    return findCountry(countries_, kByISOName, name);
}

std::optional<HalvaneCountry> HalvaneSKU::removeCountryByFriendlyName(std::string_view name) {
    const HalvaneCountry* const found = findCountryByFriendlyName(name);
    if (found == nullptr) return std::nullopt;
    // A copy, since the erasure destroys the country and may destroy `name`, which may belong to
    // it.
    std::optional<HalvaneCountry> country = *found;
    std::erase(countries_, *country);
    return country;
}

void HalvaneSKU::sortCountriesByFriendlyName() {
    std::ranges::stable_sort(countries_, [](const HalvaneCountry& a, const HalvaneCountry& b) {
        return WiFiManagerCompareCountryByFriendlyName(a, b, nullptr) < 0;
    });
}

std::string HalvaneSKU::description() const {
    const PropertyListValue friendlyName = describe(friendlyName_);
    const PropertyListValue shortName = describe(shortName_);
    return stringPrintF("Friendly Name <%@>, Short Name <%@>", &friendlyName, &shortName);
}

}  // namespace halvane

// One SKU: a region that a variant of a product is made for, and its countries.
//
// A value type, used by one thread at a time.
#ifndef HALVANE_REGULATORY_SKU_H
#define HALVANE_REGULATORY_SKU_H

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "halvane/base/export.h"
#include "halvane/base/property_list_value.h"
#include "halvane/regulatory/country.h"

namespace halvane {

class HALVANE_EXPORT HalvaneSKU {
  public:
    // A SKU without countries.
    static HalvaneSKU initWithFriendlyName_withShortName(std::optional<std::string> friendlyName,
                                                         std::optional<std::string> shortName);

    // A missing key reads as absent, or as no countries.
    static HalvaneSKU initWithSkeletonRepresentation(const PropertyListDictionary& skeleton);

    // The seven SKUs that the library knows, 239 countries in all, each with its default channels.
    // The list is made anew by each call, and is the caller's. Empty where memory is short of it.
    static std::vector<HalvaneSKU> createDefaultSKUList();

    // "FriendlyName" and "ShortName" where there is one; "Countries" always.
    PropertyListDictionary skeletonRepresentation() const;

    // "Worldwide ETSI"
    const std::optional<std::string>& friendlyName() const { return friendlyName_; }
    void setFriendlyName(std::optional<std::string> value) { friendlyName_ = std::move(value); }

    // "ETSI"
    const std::optional<std::string>& shortName() const { return shortName_; }
    void setShortName(std::optional<std::string> value) { shortName_ = std::move(value); }

    // In order of insertion unless sorted. The list may be changed in place.
    const std::vector<HalvaneCountry>& countries() const { return countries_; }
    std::vector<HalvaneCountry>& countries() { return countries_; }
    void setCountries(std::vector<HalvaneCountry> value) { countries_ = std::move(value); }

    // Appends a country; the first makes it, with its default channels.
    void addDefaultCountry_withISOName_withISOCode(std::string friendlyName, std::string isoName,
                                                   std::int64_t isoCode);
    void addCountry(HalvaneCountry country) { countries_.push_back(std::move(country)); }

    // The first country of that name, or null. Case does not count, as in
    // WiFiManagerCompareCountryByFriendlyName(); a country without the name is never found. Valid
    // until countries() changes. Each comparison is logged to WiFi at level "verbose".
    const HalvaneCountry* findCountryByFriendlyName(std::string_view name) const;
    HalvaneCountry* findCountryByFriendlyName(std::string_view name);
    const HalvaneCountry* findCountryByISOName(std::string_view name) const;
    HalvaneCountry* findCountryByISOName(std::string_view name);

    // Removes what findCountryByFriendlyName() finds, and every country equal to it, and answers
    // it. Absent, and nothing removed, where there is none.
    std::optional<HalvaneCountry> removeCountryByFriendlyName(std::string_view name);

    // By WiFiManagerCompareCountryByFriendlyName(); those it says are the same keep their order.
    void sortCountriesByFriendlyName();

    // "Friendly Name <Worldwide ETSI>, Short Name <ETSI>"
    std::string description() const;

    // All properties are equal, the countries in the same order.
    friend bool operator==(const HalvaneSKU& a, const HalvaneSKU& b) = default;

  private:
    HalvaneSKU() = default;

    std::optional<std::string> friendlyName_;
    std::optional<std::string> shortName_;
    std::vector<HalvaneCountry> countries_;
};

}  // namespace halvane

#endif

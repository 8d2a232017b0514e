// One SKU: a region for which a variant of a product is made, and its countries.
//
// A value type; only one thread at a time may use it.
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
    // Creates a SKU without countries.
    static HalvaneSKU initWithFriendlyName_withShortName(std::optional<std::string> friendlyName,
                                                         std::optional<std::string> shortName);

    // A missing key reads as absent, or as no countries.
    static HalvaneSKU initWithSkeletonRepresentation(const PropertyListDictionary& skeleton);

    // Returns the seven SKUs that the library knows, with 239 countries in all, each with its
    // default channels. Each call creates a new list, which the caller owns. The list is empty if
    // memory runs out.
    static std::vector<HalvaneSKU> createDefaultSKUList();

    // Writes "FriendlyName" and "ShortName" if present, and always "Countries".
    PropertyListDictionary skeletonRepresentation() const;

    // "Worldwide ETSI"
    const std::optional<std::string>& friendlyName() const { return friendlyName_; }
    void setFriendlyName(std::optional<std::string> value) { friendlyName_ = std::move(value); }

    // "ETSI"
    const std::optional<std::string>& shortName() const { return shortName_; }
    void setShortName(std::optional<std::string> value) { shortName_ = std::move(value); }

    // In order of insertion unless sorted. The caller may change the list in place.
    const std::vector<HalvaneCountry>& countries() const { return countries_; }
    std::vector<HalvaneCountry>& countries() { return countries_; }
    void setCountries(std::vector<HalvaneCountry> value) { countries_ = std::move(value); }

    // Appends a country. The first function creates it with its default channels.
    void addDefaultCountry_withISOName_withISOCode(std::string friendlyName, std::string isoName,
                                                   std::int64_t isoCode);
    void addCountry(HalvaneCountry country) { countries_.push_back(std::move(country)); }

    // Returns the first country of that name, or null. Case is ignored as in
    // WiFiManagerCompareCountryByFriendlyName(). A country without a name is never found. The
    // result is valid until countries() changes. Each comparison is logged to WiFi at level
    // "verbose".
    const HalvaneCountry* findCountryByFriendlyName(std::string_view name) const;
    HalvaneCountry* findCountryByFriendlyName(std::string_view name);
    const HalvaneCountry* findCountryByISOName(std::string_view name) const;
    HalvaneCountry* findCountryByISOName(std::string_view name);

    // Removes the country that findCountryByFriendlyName() finds and every country equal to it, and
    // returns that country. If there is none, the result is absent and nothing is removed.
    std::optional<HalvaneCountry> removeCountryByFriendlyName(std::string_view name);

    // Sorts by WiFiManagerCompareCountryByFriendlyName(). Countries that it calls equal keep their
    // order.
    void sortCountriesByFriendlyName();

    // "Friendly Name <Worldwide ETSI>, Short Name <ETSI>"
    std::string description() const;

    // Equal SKUs have equal properties and the same countries in the same order.
    friend bool operator==(const HalvaneSKU& a, const HalvaneSKU& b) = default;

  private:
    HalvaneSKU() = default;

    std::optional<std::string> friendlyName_;
    std::optional<std::string> shortName_;
    std::vector<HalvaneCountry> countries_;
};

}  // namespace halvane

#endif

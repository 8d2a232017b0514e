// One regulatory country: its names, its number, and the channels that it allows.
//
// A value type, used by one thread at a time.
#ifndef HALVANE_REGULATORY_COUNTRY_H
#define HALVANE_REGULATORY_COUNTRY_H

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "halvane/base/export.h"
#include "halvane/base/number.h"
#include "halvane/base/property_list_value.h"
#include "halvane/regulatory/channel.h"

namespace halvane {

class HALVANE_EXPORT HalvaneCountry {
  public:
    // A country without channels.
    static HalvaneCountry initWithFriendlyName_withISOName_withISOCode(std::string friendlyName,
                                                                       std::string isoName,
                                                                       const Number& isoCode);

    // A missing key reads as absent, 0 or no channels.
    static HalvaneCountry initWithSkeletonRepresentation(const PropertyListDictionary& skeleton);

    // "FriendlyName" and "ISOName" where there is one; "ISOCode" and "Channels" always.
    PropertyListDictionary skeletonRepresentation() const;

    // For people: "United Kingdom".
    const std::optional<std::string>& friendlyName() const { return friendlyName_; }
    void setFriendlyName(std::optional<std::string> value) { friendlyName_ = std::move(value); }

    // ISO 3166-1 alpha-2: "GB".
    const std::optional<std::string>& isoName() const { return isoName_; }
    void setIsoName(std::optional<std::string> value) { isoName_ = std::move(value); }

    // ISO 3166-1 numeric: 826.
    std::int64_t isoCode() const { return isoCode_; }
    void setIsoCode(std::int64_t value) { isoCode_ = value; }

    // In order of insertion unless sorted. The list may be changed in place.
    const std::vector<HalvaneChannel>& channels() const { return channels_; }
    std::vector<HalvaneChannel>& channels() { return channels_; }
    void setChannels(std::vector<HalvaneChannel> value) { channels_ = std::move(value); }

    // Appends the six lists below, in their order: 42 channels, the same for every country. What
    // is there already stays, so that a second call doubles the list.
    void createDefaultChannelList();

    // Each appends the default channels of one band. None has supports80MHz().
    void createDefaultChannelList2Dot4GHz();        // 1 to 14; 14 disabled
    void createDefaultChannelList5GHzLowBand();     // 34 to 48; 34, 38, 42 and 46 disabled
    void createDefaultChannelList5GHzMiddleBand();  // 52 to 64, radar prone
    void createDefaultChannelList5GHzHCEPTBand();   // 100 to 140, radar prone; 140 only 20 MHz wide
    void createDefaultChannelList5GHzUpperBand();   // 149 to 161
    void createDefaultChannelList5GHzISMBand();     // 165, only 20 MHz wide

    // Ascending; channels of the same frequency keep their order.
    void sortChannelsByFrequency();

    // -1, 0 or 1: the frequency of `channel1` is lower, the same, or higher.
    static int compareByFrequency_channel2(const HalvaneChannel& channel1,
                                           const HalvaneChannel& channel2);

    // "Friendly Name <United Kingdom>, ISO Code <GB>, ISO Number <826>"
    std::string description() const;

    // All properties are equal, the channels in the same order.
    friend bool operator==(const HalvaneCountry& a, const HalvaneCountry& b) = default;

  private:
    HalvaneCountry() = default;

    std::optional<std::string> friendlyName_;
    std::optional<std::string> isoName_;
    std::int64_t isoCode_ = 0;
    std::vector<HalvaneChannel> channels_;
};

// -1, 0 or 1: the friendly name of `first` is less, the same, or greater. Case does not count in
// Latin, Greek and Cyrillic letters, whatever the locale is (simple case folding of UTF-8);
// characters are compared by their code points. An absent name is less than any other. `context` is
// not used. Does not throw.
extern "C" HALVANE_EXPORT int WiFiManagerCompareCountryByFriendlyName(const HalvaneCountry& first,
                                                                      const HalvaneCountry& second,
                                                                      void* context);

}  // namespace halvane

#endif

// One regulatory country: its names, its number, and its permitted channels.
//
// A value type; only one thread at a time may use it.
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
    // Creates a country without channels.
    static HalvaneCountry initWithFriendlyName_withISOName_withISOCode(std::string friendlyName,
                                                                       std::string isoName,
                                                                       const Number& isoCode);

    // A missing key reads as absent, as 0, or as no channels.
    static HalvaneCountry initWithSkeletonRepresentation(const PropertyListDictionary& skeleton);

    // Writes "FriendlyName" and "ISOName" if present, and always "ISOCode" and "Channels".
    PropertyListDictionary skeletonRepresentation() const;

    // The name for people: "United Kingdom".
    const std::optional<std::string>& friendlyName() const { return friendlyName_; }
    void setFriendlyName(std::optional<std::string> value) { friendlyName_ = std::move(value); }

    // ISO 3166-1 alpha-2: "GB".
    const std::optional<std::string>& isoName() const { return isoName_; }
    void setIsoName(std::optional<std::string> value) { isoName_ = std::move(value); }

    // ISO 3166-1 numeric: 826.
    std::int64_t isoCode() const { return isoCode_; }
    void setIsoCode(std::int64_t value) { isoCode_ = value; }

    // In order of insertion unless sorted. The caller may change the list in place.
    const std::vector<HalvaneChannel>& channels() const { return channels_; }
    std::vector<HalvaneChannel>& channels() { return channels_; }
    void setChannels(std::vector<HalvaneChannel> value) { channels_ = std::move(value); }

    // Appends the six lists below in their order: 42 channels, the same for every country. Existing
    // channels stay, so a second call doubles the list.
    void createDefaultChannelList();

    // Each function appends the default channels of one band. No channel has supports80MHz().
    void createDefaultChannelList2Dot4GHz();        // 1 to 14; 14 disabled
    void createDefaultChannelList5GHzLowBand();     // 34 to 48; 34, 38, 42 and 46 disabled
    void createDefaultChannelList5GHzMiddleBand();  // 52 to 64, radar prone
    void createDefaultChannelList5GHzHCEPTBand();   // 100 to 140, radar prone; 140 only 20 MHz wide
    void createDefaultChannelList5GHzUpperBand();   // 149 to 161
    void createDefaultChannelList5GHzISMBand();     // 165, only 20 MHz wide

    // Sorts by ascending frequency. Channels of the same frequency keep their order.
    void sortChannelsByFrequency();

    // Returns -1, 0 or 1 if the frequency of `channel1` is lower than, equal to or higher than the
    // other.
    static int compareByFrequency_channel2(const HalvaneChannel& channel1,
                                           const HalvaneChannel& channel2);

    // "Friendly Name <United Kingdom>, ISO Code <GB>, ISO Number <826>"
    std::string description() const;

    // Equal countries have equal properties and the same channels in the same order.
    friend bool operator==(const HalvaneCountry& a, const HalvaneCountry& b) = default;

  private:
    HalvaneCountry() = default;

    std::optional<std::string> friendlyName_;
    std::optional<std::string> isoName_;
    std::int64_t isoCode_ = 0;
    std::vector<HalvaneChannel> channels_;
};

// Returns -1, 0 or 1 if the friendly name of `first` is less than, equal to or greater than the
// other. Latin, Greek and Cyrillic letters are compared without regard to case, whatever the locale
// is (simple case folding of UTF-8). Characters are ordered by their code points. An absent name is
// less than any other. `context` is not used. The function does not throw.
extern "C" HALVANE_EXPORT int WiFiManagerCompareCountryByFriendlyName(const HalvaneCountry& first,
                                                                      const HalvaneCountry& second,
                                                                      void* context);

}  // namespace halvane

#endif

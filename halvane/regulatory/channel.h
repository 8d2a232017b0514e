// One 802.11 channel of the regulatory data, and the process-wide map of channels and frequencies.
//
// A record is a value type, used by one thread at a time. The class-level map operations may be
// called from any thread.
#ifndef HALVANE_REGULATORY_CHANNEL_H
#define HALVANE_REGULATORY_CHANNEL_H

#include <cstdint>
#include <string>

#include "halvane/base/export.h"
#include "halvane/base/number.h"
#include "halvane/base/property_list_value.h"

namespace halvane {

class HALVANE_EXPORT HalvaneChannel {
  public:
    // The flags that are not given start false.
    static HalvaneChannel initWithChannel_withFrequency_isRadarProne(const Number& channel,
                                                                     const Number& frequency,
                                                                     bool isRadarProne);

    // The same with a number for the flag: true unless it is 0.
    static HalvaneChannel initWithChannel_withFrequency_isRadarProne(const Number& channel,
                                                                     const Number& frequency,
                                                                     const Number& isRadarProne) {
        return initWithChannel_withFrequency_isRadarProne(channel, frequency,
                                                          isRadarProne != Number(0));
    }

    // A missing key reads as 0 or false.
    static HalvaneChannel initWithSkeletonRepresentation(const PropertyListDictionary& skeleton);

    // "ChannelNumber", "ChannelFrequency", "isRadarProne", "isDisabled", "supports40MHz" and
    // "supports80MHz", all always written.
    PropertyListDictionary skeletonRepresentation() const;

    // IEEE channel number.
    std::int64_t channelNumber() const { return channelNumber_; }
    void setChannelNumber(std::int64_t value) { channelNumber_ = value; }

    // Centre frequency in MHz.
    std::int64_t channelFrequency() const { return channelFrequency_; }
    void setChannelFrequency(std::int64_t value) { channelFrequency_ = value; }

    // Needs radar detection (DFS).
    bool isRadarProne() const { return isRadarProne_; }
    void setIsRadarProne(bool value) { isRadarProne_ = value; }

    // Listed, but not to be used.
    bool isDisabled() const { return isDisabled_; }
    void setIsDisabled(bool value) { isDisabled_ = value; }

    // Can be part of a 40 MHz, or an 80 MHz, channel.
    bool supports40MHz() const { return supports40MHz_; }
    void setSupports40MHz(bool value) { supports40MHz_ = value; }
    bool supports80MHz() const { return supports80MHz_; }
    void setSupports80MHz(bool value) { supports80MHz_ = value; }

    // "Channel <52> Frequency <5260> Radar Prone <YES> Supports HT40 <YES>"; the frequency is left
    // out unless it is above 0.
    std::string description() const;

    // All properties are equal.
    friend bool operator==(const HalvaneChannel& a, const HalvaneChannel& b) = default;

    // Builds the map of the 42 channels of the 2.4 GHz and 5 GHz bands unless it exists already;
    // every lookup does so first. Building it and looking up its channels needs no memory and takes
    // no lock.
    static void initChannelMapTable();

    // Appends a row to the map, with an extension channel of 0 for none. While the map does not
    // exist the row is dropped. Where there is no memory for the row, std::bad_alloc is thrown and
    // the map stays as it was.
    static void addChannelToMapTable_frequency_extensionChannel(unsigned channel,
                                                                unsigned frequency,
                                                                unsigned extensionChannel);

    // The channel at a centre frequency in MHz. For an unknown frequency the result is the
    // frequency of the map's last row (5825), not 0: check with channelFrequencyForNumber().
    static unsigned channelNumberForFrequency(unsigned frequency);

    // The centre frequency in MHz; 0 for an unknown channel.
    static unsigned channelFrequencyForNumber(unsigned channel);

    // The other half of the channel's 40 MHz channel; 0 where there is none.
    static unsigned channelExtensionForNumber(unsigned channel);

  private:
    HalvaneChannel() = default;

    std::int64_t channelNumber_ = 0;
    std::int64_t channelFrequency_ = 0;
    bool isRadarProne_ = false;
    bool isDisabled_ = false;
    bool supports40MHz_ = false;
    bool supports80MHz_ = false;
};

}  // namespace halvane

#endif

// One 802.11 channel of the regulatory data, and the process-wide map of channels and frequencies.
//
// A record is a value type; only one thread at a time may use it. Any thread may call the
// class-level map operations.
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
    // The other flags are false.
    static HalvaneChannel initWithChannel_withFrequency_isRadarProne(const Number& channel,
                                                                     const Number& frequency,
                                                                     bool isRadarProne);

    // The same with a number for the flag: any number but 0 means true.
    static HalvaneChannel initWithChannel_withFrequency_isRadarProne(const Number& channel,
                                                                     const Number& frequency,
                                                                     const Number& isRadarProne) {
        return initWithChannel_withFrequency_isRadarProne(channel, frequency,
                                                          isRadarProne != Number(0));
    }

    // A missing key reads as 0 or false.
    static HalvaneChannel initWithSkeletonRepresentation(const PropertyListDictionary& skeleton);

    // Always writes "ChannelNumber", "ChannelFrequency", "isRadarProne", "isDisabled",
    // "supports40MHz" and "supports80MHz".
    PropertyListDictionary skeletonRepresentation() const;

    // IEEE channel number.
    std::int64_t channelNumber() const { return channelNumber_; }
    void setChannelNumber(std::int64_t value) { channelNumber_ = value; }

    // Centre frequency in MHz.
    std::int64_t channelFrequency() const { return channelFrequency_; }
    void setChannelFrequency(std::int64_t value) { channelFrequency_ = value; }

    // Whether the channel needs radar detection (DFS).
    bool isRadarProne() const { return isRadarProne_; }
    void setIsRadarProne(bool value) { isRadarProne_ = value; }

    // Whether the channel is listed but must not be used.
    bool isDisabled() const { return isDisabled_; }
    void setIsDisabled(bool value) { isDisabled_ = value; }

    // Whether the channel can be part of a 40 MHz or an 80 MHz channel.
    bool supports40MHz() const { return supports40MHz_; }
    void setSupports40MHz(bool value) { supports40MHz_ = value; }
    bool supports80MHz() const { return supports80MHz_; }
    void setSupports80MHz(bool value) { supports80MHz_ = value; }

    // "Channel <52> Frequency <5260> Radar Prone <YES> Supports HT40 <YES>". A frequency of 0 or
    // less is omitted.
    std::string description() const;

    // Equal channels have equal properties.
    friend bool operator==(const HalvaneChannel& a, const HalvaneChannel& b) = default;

    // Builds the map of the 42 channels of the 2.4 GHz and 5 GHz bands unless it exists. Every
    // lookup does so first. Building the map and looking up these channels allocates nothing and
    // takes no lock.
    static void initChannelMapTable();

    // Appends a row to the map. An extension channel of 0 means none. If the map does not exist,
    // the row is dropped. If memory runs out, std::bad_alloc is thrown and the map is unchanged.
    static void addChannelToMapTable_frequency_extensionChannel(unsigned channel,
                                                                unsigned frequency,
                                                                unsigned extensionChannel);

    // Returns the channel at a centre frequency in MHz. An unknown frequency does not give 0, but
    // the frequency in the map's last row (5825): check the result with
    // channelFrequencyForNumber().
    static unsigned channelNumberForFrequency(unsigned frequency);

    // Returns the centre frequency in MHz; 0 for an unknown channel.
    static unsigned channelFrequencyForNumber(unsigned channel);

    // Returns the other half of the channel's 40 MHz channel; 0 if there is none.
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

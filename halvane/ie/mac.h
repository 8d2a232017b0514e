// The record of one BSS (or one station) as seen in the air.
//
// A caller creates the record from the address, sets the measured values, and passes the element
// bytes of a beacon or probe response. The record splits them into elements, keeps each one,
// decodes the known ones, and derives rates, channel width and a security label. It reports no
// errors: unreadable bytes stay in invalidIEs(), or in an element object whose isValid() is false.
//
// A value type with shared buffers: copying a record copies no element bytes. A derived class such
// as HalvaneClient describes its whole record through a reference to this class; a copy into a
// HalvaneMAC keeps only what this class stores. A reference that a getter returns is valid until
// the record is next changed. Used by one thread at a time.
#ifndef HALVANE_IE_MAC_H
#define HALVANE_IE_MAC_H

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/export.h"
#include "halvane/base/number.h"
#include "halvane/base/property_list_value.h"
#include "halvane/ie/country_ie.h"
#include "halvane/ie/dwds_ie.h"
#include "halvane/ie/ht_capabilities_ie.h"
#include "halvane/ie/ht_operation_ie.h"
#include "halvane/ie/link_quality_history.h"
#include "halvane/ie/mac_record.h"
#include "halvane/ie/rsn_ie.h"
#include "halvane/ie/tessic_ie.h"
#include "halvane/ie/wps_ie.h"

namespace halvane {

class HALVANE_EXPORT HalvaneMAC {
  public:
    // Creates a record of `mac` (6 bytes), added now, with everything else empty.
    static HalvaneMAC initWithMAC(const ByteBuffer& mac);

    HalvaneMAC(const HalvaneMAC&) = default;
    HalvaneMAC(HalvaneMAC&&) noexcept = default;
    HalvaneMAC& operator=(const HalvaneMAC&) = default;
    HalvaneMAC& operator=(HalvaneMAC&&) noexcept = default;
    virtual ~HalvaneMAC();

    // The same as initWithMAC(), setCapabilityField() and setInformationElements(), with one
    // reading of the clock.
    static HalvaneMAC initWithMAC_withCapabilityField_withInformationElements(
        const ByteBuffer& mac, std::uint16_t field, const ByteBuffer& elements);

    // Rebuilds a record and decodes its elements again. Missing keys and values of another kind
    // read as nothing. A stamp or capability field that is out of range reads as the nearest limit:
    // "Capabilities" of 65536 as 65535. The raw buffer is not split again, so invalidIEs() stays
    // absent.
    static HalvaneMAC initWithSkeletonRepresentation(const PropertyListDictionary& skeleton);

    // Writes "MAC", "RawIEBuffer", "IEs", "LastUpdated", "FirstUpdated" (firstAdded()),
    // "Capabilities", "Channel", "Noise", "RSSI" and "BeaconInterval". Derived values are not
    // written.
    virtual PropertyListDictionary skeletonRepresentation() const;

    // The BSSID or station address.
    const ByteBuffer& mac() const { return record_->mac; }

    // The times of the last change and of creation, in microseconds of system up-time.
    std::uint64_t lastUpdated() const { return record_->lastUpdated; }
    std::uint64_t firstAdded() const { return record_->firstAdded; }

    // Values that the caller measured: primary channel number, dBm, dBm, and the beacon interval as
    // the frame states it (in TU of 1.024 ms; a description prints it with the unit "ms"). Setting
    // one does not change lastUpdated().
    const std::optional<Number>& channel() const { return record_->channel; }
    void setChannel(std::optional<Number> value) { record_.change().channel = value; }
    const std::optional<Number>& noise() const { return record_->noise; }
    void setNoise(std::optional<Number> value) { record_.change().noise = value; }
    const std::optional<Number>& RSSI() const { return record_->RSSI; }
    void setRSSI(std::optional<Number> value) { record_.change().RSSI = value; }
    const std::optional<Number>& beaconInterval() const { return record_->beaconInterval; }
    void setBeaconInterval(std::optional<Number> value) { record_.change().beaconInterval = value; }

    // The capability information field (IEEE 802.11-2012, 8.4.1.4, figure 8-38; later editions
    // reserve some of its bits), and its bits. Bit 12 is not decoded.
    std::uint16_t capabilities() const { return record_->capabilities; }
    void setCapabilityField(std::uint16_t field);
    bool isESS() const { return hasCapability(0); }
    bool isIBSS() const { return hasCapability(1); }
    bool isCFPollable() const { return hasCapability(2); }
    bool isCFPollRequest() const { return hasCapability(3); }
    bool isPrivacy() const { return hasCapability(4); }
    bool isShortPreamble() const { return hasCapability(5); }
    bool isPBCC() const { return hasCapability(6); }
    bool isChannelAgility() const { return hasCapability(7); }
    bool isSpectrumManagement() const { return hasCapability(8); }
    bool isQoS() const { return hasCapability(9); }
    bool isShortSlotTime() const { return hasCapability(10); }
    bool isAPSD() const { return hasCapability(11); }
    bool isDSSSOFDM() const { return hasCapability(13); }
    bool isDelayedBlockAck() const { return hasCapability(14); }
    bool isImmediateBlockAck() const { return hasCapability(15); }

    // Replaces the elements and derives everything again. The buffer's length counts modulo 65536.
    // The size of an element is its length byte plus 2, modulo 256: with length byte 255 the
    // element has one byte; length byte 254 would mean no bytes and ends the walk.
    void setInformationElements(const ByteBuffer& elements);

    // The bytes of the last call; absent before.
    const std::optional<ByteBuffer>& ieBuffer() const { return record_->ieBuffer; }
    // One buffer per element: ID, length and body.
    const std::vector<ByteBuffer>& IEs() const;
    // The trailing bytes that form no whole element; absent if there are none.
    const std::optional<ByteBuffer>& invalidIEs() const { return record_.walk().invalidIEs; }

    // Octets, not text. Absent if every SSID element is missing, empty or all zeros (hidden). A
    // hidden one after a named one leaves the name.
    const std::optional<ByteBuffer>& SSID() const { return record_.walk().SSID; }
    // In Mbit/s, real, ascending, from both rate elements. Duplicates are kept.
    const std::optional<std::vector<Number>>& supportedRates() const;

    // The decoded elements. The last element of each kind counts.
    const std::optional<HalvaneRSNIE>& rsn() const { return record_.walk().rsn; }
    const std::optional<HalvaneRSNIE>& wpa() const { return record_.walk().rare->wpa; }
    const std::optional<HalvaneCountryIE>& countryIE() const { return record_.walk().countryIE; }
    const std::optional<HalvaneTessicIE>& tessicIE() const { return record_.walk().rare->tessicIE; }
    const std::optional<HalvaneDWDSIE>& dwdsIE() const { return record_.walk().rare->dwdsIE; }
    const std::optional<HalvaneWPSIE>& wpsIE() const { return record_.walk().rare->wpsIE; }
    const std::optional<HalvaneHTCapabilitiesIE>& HTCaps() const { return record_.walk().HTCaps; }
    const std::optional<HalvaneHTOperationIE>& HTOperation() const {
        return record_.walk().HTOperation;
    }

    // Derived from the elements: the rate in Mbit/s; the width, 20 or 40 MHz; and the label, "WPA
    // Enterprise", "WPA Personal", "WEP", "WPS" or "Open". Rate and width are 0 if the HT Operation
    // element is broken. Elements without any rate leave the other two values unchanged.
    const std::optional<Number>& maxPHYRate() const { return record_.walk().maxPHYRate; }
    const std::optional<Number>& channelWidth() const { return record_.walk().channelWidth; }
    const std::optional<std::string>& securityFriendlyName() const {
        return record_.walk().securityFriendlyName;
    }

    // Whether securityFriendlyName() would be possible: no privacy; privacy without RSN and WPA;
    // RSN or WPA with PSK; RSN or WPA with 802.1X.
    bool doesSupportSecurityOpen() const;
    bool doesSupportSecurityWEP() const;
    bool doesSupportSecurityWPAPersonal() const;
    bool doesSupportSecurityWPAEnterprise() const;
    // Whether there is a WPS element, whatever privacy() is.
    bool doesSupportSecurityWPS() const;

    // Merges a newer sighting of the same address; does nothing for another address. The measured
    // numbers that `other` has and its capability field replace those of this record. Its elements
    // do so only if they reveal the SSID that this record lacks.
    void mergeEntries(const HalvaneMAC& other);

    // Adds a sample (dBm, Mbit/s) to the history and updates averageRate().
    void updateLinkQuality_withTxRate(const Number& rssi, const Number& txRate);
    // The newest 256 samples, oldest first.
    const HalvaneLinkQualityHistory& linkQualityHistory() const { return record_->link->history; }
    // In Mbit/s, over the samples of the last 30 seconds; absent before the first sample.
    const std::optional<Number>& averageRate() const { return record_->link->averageRate; }

    // Sets maxClientRate() to the smaller of a client's rate (Mbit/s) and maxPHYRate(), or to the
    // client's rate if maxPHYRate() is absent.
    void determineMaximumClientRate(const Number& rate);
    const std::optional<Number>& maxClientRate() const { return record_->link->maxClientRate; }

    // Several lines of padded labels, then each decoded element under its heading.
    virtual std::string description() const;

    // Compares what a skeleton representation contains. Derived values do not count, since they may
    // come from an earlier capability field or earlier elements. An absent element buffer equals an
    // empty one, which is how it reads back. A NaN equals nothing: a record with a NaN does not
    // even equal itself.
    friend HALVANE_EXPORT bool operator==(const HalvaneMAC& a, const HalvaneMAC& b);

  protected:
    // For derived classes: the same as initWithMAC() and initWithSkeletonRepresentation().
    explicit HalvaneMAC(const ByteBuffer& mac);
    explicit HalvaneMAC(const PropertyListDictionary& skeleton);

    // The stages of the decoding. Each takes one whole element of IEs().
    void parseInformationElements();
    void parseInformationElement(const ByteBuffer& element);
    void parseInformationElementSSID(const ByteBuffer& element);
    // An element whose body is longer than `maximumLength` bytes is ignored.
    void parseInformationElementSupportedRates_withMaximumLength(const ByteBuffer& element,
                                                                 unsigned maximumLength);
    void parseInformationElementVendorSpecific(const ByteBuffer& element);
    // Clears the results of the elements, except maxPHYRate(), channelWidth() and the security
    // label.
    void cleanupIEs();

  private:
    bool hasCapability(unsigned bit) const { return (record_->capabilities >> bit & 1u) != 0; }
    void setElements(const ByteBuffer& elements);

    // In a box, since a daemon's reply may hold an almost empty record in every few bytes of text.
    MACRecordBox record_;
};

}  // namespace halvane

#endif

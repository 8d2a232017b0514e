// The record of one BSS (or one station) as seen in the air.
//
// A caller creates it from the address, sets what it measured, and hands over the element bytes of
// a beacon or probe response. The record cuts them into elements, keeps each one, decodes those it
// knows, and derives rates, channel width and a security label. Nothing is ever reported as an
// error: what could not be read stays in invalidIEs(), or in an element object whose isValid() is
// false.
//
// A value type with shared buffers: copying one copies no element bytes. A class on top of it, such
// as HalvaneClient, tells the whole of its record through a reference to this one; a copy into a
// HalvaneMAC keeps what this class holds, and nothing more. What a getter returns a
// reference to is valid until the record is next changed. Used by one thread at a time.
#ifndef HALVANE_IE_MAC_H
#define HALVANE_IE_MAC_H

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "halvane/base/boxed.h"
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
    // A record of `mac` (6 bytes), added now, with everything else empty.
    static HalvaneMAC initWithMAC(const ByteBuffer& mac);

    HalvaneMAC(const HalvaneMAC&) = default;
    HalvaneMAC(HalvaneMAC&&) noexcept = default;
    HalvaneMAC& operator=(const HalvaneMAC&) = default;
    HalvaneMAC& operator=(HalvaneMAC&&) noexcept = default;
    virtual ~HalvaneMAC();

    // Rebuilds a record and decodes its elements again. Missing keys read as nothing, and so do
    // values of another kind. A stamp or capability field that is out of range reads as the nearest
    // one: "Capabilities" of 65536 as 65535. The raw buffer is not walked again, so invalidIEs()
    // stays absent.
    static HalvaneMAC initWithSkeletonRepresentation(const PropertyListDictionary& skeleton);

    // "MAC", "RawIEBuffer", "IEs", "LastUpdated", "FirstUpdated" (firstAdded()), "Capabilities",
    // "Channel", "Noise", "RSSI", "BeaconInterval". What is derived from these is not written.
    virtual PropertyListDictionary skeletonRepresentation() const;

    // The BSSID or station address.
    const ByteBuffer& mac() const { return record_->mac; }

    // Microseconds of system up-time: of the last change, and of creation.
    std::uint64_t lastUpdated() const { return record_->lastUpdated; }
    std::uint64_t firstAdded() const { return record_->firstAdded; }

    // As the caller measured them: primary channel number, dBm, dBm, and the beacon interval as the
    // frame states it (in TU of 1.024 ms; a description prints it with the unit "ms"). Setting one
    // is no change in the sense of lastUpdated().
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
    // An element is as long as its length byte plus 2, modulo 256: a length byte of 255 is a
    // one-byte element, and one of 254, which would be no bytes at all, ends the walk.
    void setInformationElements(const ByteBuffer& elements);

    // The bytes as last handed in; absent before.
    const std::optional<ByteBuffer>& ieBuffer() const { return record_->ieBuffer; }
    // One buffer an element: ID, length and body.
    const std::vector<ByteBuffer>& IEs() const { return record_->IEs; }
    // The trailing bytes that form no whole element; absent when there are none.
    const std::optional<ByteBuffer>& invalidIEs() const { return record_->walk->invalidIEs; }

    // Octets, not text. Absent where every SSID element is missing, empty, or all zeros (hidden);
    // one of those after a named one leaves the name.
    const std::optional<ByteBuffer>& SSID() const { return record_->walk->SSID; }
    // Mbit/s, real, ascending, of both rate elements; duplicates are kept.
    const std::optional<std::vector<Number>>& supportedRates() const {
        return record_->walk->supportedRates;
    }

    // The decoded elements, each from the last element of its kind.
    const std::optional<HalvaneRSNIE>& rsn() const { return *record_->walk->rsn; }
    const std::optional<HalvaneRSNIE>& wpa() const { return *record_->walk->wpa; }
    const std::optional<HalvaneCountryIE>& countryIE() const { return *record_->walk->countryIE; }
    const std::optional<HalvaneTessicIE>& tessicIE() const { return *record_->walk->tessicIE; }
    const std::optional<HalvaneDWDSIE>& dwdsIE() const { return *record_->walk->dwdsIE; }
    const std::optional<HalvaneWPSIE>& wpsIE() const { return *record_->walk->wpsIE; }
    const std::optional<HalvaneHTCapabilitiesIE>& HTCaps() const { return *record_->walk->HTCaps; }
    const std::optional<HalvaneHTOperationIE>& HTOperation() const {
        return *record_->walk->HTOperation;
    }

    // Derived from the elements: Mbit/s; 20 or 40 MHz, or rate and width 0 where the HT Operation
    // element that should tell them is broken; one of "WPA Enterprise", "WPA Personal",
    // "WEP", "WPS", "Open". Elements that give no rate leave the other two as they were.
    const std::optional<Number>& maxPHYRate() const { return record_->walk->maxPHYRate; }
    const std::optional<Number>& channelWidth() const { return record_->walk->channelWidth; }
    const std::optional<std::string>& securityFriendlyName() const {
        return record_->walk->securityFriendlyName;
    }

    bool doesSupportSecurityOpen() const;
    bool doesSupportSecurityWEP() const;
    bool doesSupportSecurityWPAPersonal() const;
    bool doesSupportSecurityWPAEnterprise() const;
    // Whether there is a WPS element; privacy is not looked at.
    bool doesSupportSecurityWPS() const;

    // Folds in a newer sighting of the same address; one of another address does nothing. The
    // measured numbers that it has and its capability field are taken over. Its elements are taken
    // only when they reveal the SSID that this record lacks.
    void mergeEntries(const HalvaneMAC& other);

    // Adds a sample (dBm, Mbit/s) to the history and computes averageRate() again.
    void updateLinkQuality_withTxRate(const Number& rssi, const Number& txRate);
    // The newest 256 samples, oldest first.
    const HalvaneLinkQualityHistory& linkQualityHistory() const { return record_->link->history; }
    // Mbit/s over the samples of the last 30 seconds; absent before the first sample.
    const std::optional<Number>& averageRate() const { return record_->link->averageRate; }

    // Sets maxClientRate() to the smaller of a client's rate (Mbit/s) and maxPHYRate(); to the
    // client's rate while there is no maxPHYRate().
    void determineMaximumClientRate(const Number& rate);
    const std::optional<Number>& maxClientRate() const { return record_->link->maxClientRate; }

    // Several lines of padded labels, then each decoded element under its heading.
    virtual std::string description() const;

    // Equal in what a skeleton representation carries, and in nothing else: what is derived does
    // not count, for it may stem from an earlier capability field or from earlier elements. An
    // absent element buffer equals an empty one, as which it reads back. A NaN equals nothing, so
    // a record that holds one does not even equal itself.
    friend HALVANE_EXPORT bool operator==(const HalvaneMAC& a, const HalvaneMAC& b);

  protected:
    explicit HalvaneMAC(const ByteBuffer& mac);
    explicit HalvaneMAC(const PropertyListDictionary& skeleton);

    // The stages of the walk. Each takes one whole element of IEs().
    void parseInformationElements();
    void parseInformationElement(const ByteBuffer& element);
    void parseInformationElementSSID(const ByteBuffer& element);
    // An element whose body is longer than `maximumLength` bytes is ignored.
    void parseInformationElementSupportedRates_withMaximumLength(const ByteBuffer& element,
                                                                 unsigned maximumLength);
    void parseInformationElementVendorSpecific(const ByteBuffer& element);
    // Clears what the elements gave, but for maxPHYRate(), channelWidth() and the security label.
    void cleanupIEs();

  private:
    bool hasCapability(unsigned bit) const { return (record_->capabilities >> bit & 1u) != 0; }
    void deriveRateAndSecurity();

    // In boxes, for a daemon's reply may hold a record in every few bytes of text, with next to
    // nothing in each.
    Boxed<MACRecord> record_;
};

}  // namespace halvane

#endif

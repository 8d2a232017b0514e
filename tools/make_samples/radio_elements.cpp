#include "tools/make_samples/radio_elements.h"

#include <algorithm>
#include <cstddef>

#include "halvane/air/eht_capabilities.h"
#include "halvane/air/eht_mac_capabilities.h"
#include "halvane/air/eht_mcs_sets.h"
#include "halvane/air/eht_operation.h"
#include "halvane/air/eht_phy_capabilities.h"
#include "halvane/air/he_6ghz_band_capabilities.h"
#include "halvane/air/he_capabilities.h"
#include "halvane/air/he_mac_capabilities.h"
#include "halvane/air/he_operation.h"
#include "halvane/air/he_phy_capabilities.h"
#include "halvane/air/ht_capabilities.h"
#include "halvane/air/ht_mcs_set.h"
#include "halvane/air/ht_operation.h"
#include "halvane/air/mcs_map.h"
#include "halvane/air/secondary_channel_offset.h"
#include "halvane/air/transmit_power_envelope.h"
#include "halvane/air/vht_capabilities.h"
#include "halvane/air/vht_operation.h"
#include "halvane/base/byte_buffer.h"

#include "tools/make_samples/air_elements.h"
#include "tools/make_samples/flags.h"

namespace halvane::samples {

namespace {

using air::ChannelWidth;

bool isAtLeast(const RadioSetup& setup, ChannelWidth width) {
    return setup.width >= width;
}

// The centre of the channel of `width` around the primary channel.
std::uint8_t centerOf(const RadioSetup& setup, ChannelWidth width) {
    return air::wideChannelOf(setup.primary, width).value().center.number;
}

// The same MCS for each of the streams.
template <typename Map>
Map mcsMap(int streams, std::uint32_t highest) {
    Map map;
    for (int i = 0; i < streams; ++i) {
        map.fields.setBits(2 * static_cast<std::size_t>(i), 2, highest);
    }
    return map;
}

air::HtMcsSet htMcsSet(int streams) {
    constexpr std::size_t kSetDefined = 96;
    air::HtMcsSet set;
    for (int i = 0; i < streams; ++i) {
        set.fields.setBits(8 * static_cast<std::size_t>(i), 8, 0xFF);
    }
    set.fields.setBit(kSetDefined, true);
    return set;
}

// --- EHT ---

air::EhtMcsMap<3> ehtMcsMap(int streams) {
    const auto both = static_cast<std::uint8_t>(streams | streams << 4);
    return {{{both, both, both}}};
}

air::EhtMcsSets ehtMcsSets(const RadioSetup& setup) {
    air::EhtMcsSets sets;
    sets.upTo80 = ehtMcsMap(setup.streams);
    if (isAtLeast(setup, ChannelWidth::Mhz160)) sets.at160 = ehtMcsMap(setup.streams);
    if (isAtLeast(setup, ChannelWidth::Mhz320First)) sets.at320 = ehtMcsMap(setup.streams);
    return sets;
}

air::EhtOperationInformation ehtInformation(const RadioSetup& setup) {
    air::EhtOperationInformation information;
    const bool is320 = isAtLeast(setup, ChannelWidth::Mhz320First);
    information.control.setBits(0, 3, std::min(static_cast<std::uint32_t>(setup.width), 4u));
    if (is320 || setup.width == ChannelWidth::Mhz160) {
        const auto half = is320 ? ChannelWidth::Mhz160 : ChannelWidth::Mhz80;
        information.centerSegment0 = centerOf(setup, half);
        information.centerSegment1 = centerOf(setup, setup.width);
    } else {
        information.centerSegment0 = centerOf(setup, setup.width);
    }
    if (setup.punctured != 0) {
        information.disabledSubchannels.emplace().setBits(0, 16, setup.punctured);
    }
    return information;
}

// What stations of Wi-Fi 6 can use of the channel.
air::SixGhzOperationInformation sixGhzInformation(const RadioSetup& setup) {
    air::SixGhzOperationInformation information;
    const ChannelWidth width = std::min(setup.width, ChannelWidth::Mhz160);
    information.primaryChannel = setup.primary.number;
    information.control.setBits(0, 2, static_cast<std::uint32_t>(width));
    information.centerSegment0 = centerOf(setup, std::min(width, ChannelWidth::Mhz80));
    if (width == ChannelWidth::Mhz160) information.centerSegment1 = centerOf(setup, width);
    information.minimumRate = 6;
    return information;
}

}  // namespace

// --- Wi-Fi 4 and 5 ---

Bytes htCapabilities(const RadioSetup& setup) {
    air::HtCapabilities ht;
    // LDPC, no SM power save, short guard interval, STBC, A-MSDUs of 7935 octets; from 40 MHz on
    // the width and its short guard interval too.
    const bool is40 = isAtLeast(setup, ChannelWidth::Mhz40);
    ht.information.fields = {{static_cast<std::uint8_t>(is40 ? 0xEF : 0xAD), 0x09}};
    ht.ampdu.fields = {{0x17}};  // 65535 octets, 4 us apart
    ht.rxMcs = htMcsSet(setup.streams);
    return airElement(ht);
}

Bytes htOperation(const RadioSetup& setup) {
    constexpr std::size_t kAnyWidth = 2;
    air::HtOperation ht;
    ht.primaryChannel = setup.primary.number;
    if (isAtLeast(setup, ChannelWidth::Mhz40)) {
        const bool isAbove = centerOf(setup, ChannelWidth::Mhz40) > setup.primary.number;
        const auto offset = isAbove ? air::SecondaryChannel::Above : air::SecondaryChannel::Below;
        ht.information.setBits(0, 2, static_cast<std::uint32_t>(offset));
        ht.information.setBit(kAnyWidth, true);
    }
    return airElement(ht);
}

Bytes vhtCapabilities(const RadioSetup& setup) {
    using Capability = air::VhtCapability;
    air::VhtCapabilities vht;
    vht.information.setBits(0, 2, 2);   // MPDUs of 11454 octets
    vht.information.setBits(23, 3, 7);  // A-MPDUs of 1048575
    vht.information.setBits(16, 3, static_cast<std::uint32_t>(setup.streams - 1));  // sounding
    setFlags(vht.information, {Capability::RxLdpc, Capability::ShortGi80, Capability::TxStbc,
                               Capability::SuBeamformer, Capability::MuBeamformer});
    if (isAtLeast(setup, ChannelWidth::Mhz160)) {
        vht.information.setBits(2, 2, 1);
        setFlags(vht.information, {Capability::ShortGi160});
    }
    constexpr std::uint32_t kUpToMcs9 = 2;
    vht.rxMcs = vht.txMcs = mcsMap<air::VhtMcsMap>(setup.streams, kUpToMcs9);
    return airElement(vht);
}

Bytes vhtOperation(const RadioSetup& setup) {
    air::VhtOperation vht;
    vht.basicMcs = mcsMap<air::VhtMcsMap>(1, 0);
    if (isAtLeast(setup, ChannelWidth::Mhz80)) {
        vht.information.channelWidth = 1;
        vht.information.centerSegment0 = centerOf(setup, ChannelWidth::Mhz80);
    }
    if (isAtLeast(setup, ChannelWidth::Mhz160)) {
        vht.information.centerSegment1 = centerOf(setup, ChannelWidth::Mhz160);
    }
    return airElement(vht);
}

// --- Wi-Fi 6 ---

Bytes heCapabilities(const RadioSetup& setup) {
    using Mac = air::HeMacCapability;
    using Phy = air::HePhyCapability;
    constexpr std::uint32_t kUpToMcs11 = 2;
    const auto map = mcsMap<air::HeMcsMap>(setup.streams, kUpToMcs11);
    air::HeCapabilities he;
    setFlags(he.mac.bits, {Mac::HtcHe, Mac::TwtResponder, Mac::OmControl});
    setFlags(he.phy.bits, {Phy::Ldpc, Phy::SuBeamformer, Phy::MuBeamformer, Phy::Tx1024QamSmallRu,
                           Phy::Rx1024QamSmallRu});
    const auto dimensions = static_cast<std::uint32_t>(setup.streams - 1);
    he.phy.bits.setBits(40, 3, dimensions);  // of a sounding up to 80 MHz
    he.phy.bits.setBits(78, 2, 2);           // packets are padded by 16 us
    if (setup.primary.band != air::Band::Ghz2) setFlags(he.phy.bits, {Phy::Width40And80});
    he.upTo80 = {map, map};
    if (isAtLeast(setup, ChannelWidth::Mhz160)) {
        setFlags(he.phy.bits, {Phy::Width160});
        he.phy.bits.setBits(43, 3, dimensions);  // of a sounding at 160 MHz
        he.at160 = {map, map};
    }
    return airElement(he);
}

Bytes heOperation(const RadioSetup& setup, std::uint8_t color) {
    air::HeOperation he;
    he.parameters.setBits(0, 3, 4);      // packet extensions of 16 us
    he.parameters.setBits(4, 10, 1023);  // no threshold for RTS
    he.bssColorInformation.setBits(0, 6, color);
    he.basicMcs = mcsMap<air::HeMcsMap>(1, 0);
    if (setup.primary.band == air::Band::Ghz6) he.setSixGhz(sixGhzInformation(setup));
    return airElement(he);
}

Bytes sixGhzCapabilities() {
    air::He6GhzBandCapabilities element;
    element.information.setBits(0, 3, 5);  // 4 us between MPDUs
    element.information.setBits(3, 3, 7);  // A-MPDUs of 1048575 octets
    element.information.setBits(6, 2, 2);  // MPDUs of 11454
    element.information.setBits(9, 2, 3);  // no SM power save
    return airElement(element);
}

Bytes indoorPower() {
    using Interpretation = air::TransmitPowerEnvelope::Interpretation;
    constexpr std::int8_t k10DbmPerMhz = 20;  // in units of 0.5
    air::TransmitPowerEnvelope element;
    element.information.setBits(
        3, 3, static_cast<std::uint32_t>(Interpretation::RegulatoryClientEirpPsd));
    element.values.push_back(k10DbmPerMhz);  // for each 20 MHz
    return airElement(element);
}

// --- Wi-Fi 7 ---

Bytes ehtCapabilities(const RadioSetup& setup) {
    using Phy = air::EhtPhyCapability;
    air::EhtCapabilities eht;
    setFlags(eht.mac.bits,
             {air::EhtMacCapability::OmControl, air::EhtMacCapability::ScsTrafficDescription});
    if (setup.primary.band == air::Band::Ghz2) eht.mac.bits.setBits(6, 2, 2);  // 11454 octets
    setFlags(eht.phy.bits, {Phy::SuBeamformer, Phy::MuBeamformer80, Phy::Ru242InWiderBw});
    const auto dimensions = static_cast<std::uint32_t>(setup.streams - 1);
    eht.phy.bits.setBits(16, 3, dimensions);  // of a sounding up to 80 MHz
    eht.phy.bits.setBits(44, 2, 2);           // packets are padded by 16 us
    if (isAtLeast(setup, ChannelWidth::Mhz160)) {
        setFlags(eht.phy.bits, {Phy::MuBeamformer160});
        eht.phy.bits.setBits(19, 3, dimensions);
    }
    if (isAtLeast(setup, ChannelWidth::Mhz320First)) {
        setFlags(eht.phy.bits, {Phy::Width320, Phy::MuBeamformer320});
        eht.phy.bits.setBits(22, 3, dimensions);
    }
    eht.sets = ByteBuffer(ehtMcsSets(setup).encode());
    return airElement(eht);
}

Bytes ehtOperation(const RadioSetup& setup) {
    air::EhtOperation eht;
    eht.basicMcs.fields = {{0x11, 0x00, 0x00, 0x00}};  // one stream up to MCS 7
    const bool isWider = isAtLeast(setup, ChannelWidth::Mhz320First) || setup.punctured != 0;
    if (isWider) eht.setInformation(ehtInformation(setup));
    return airElement(eht);
}

}  // namespace halvane::samples

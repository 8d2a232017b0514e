// Values that were changed after decoding. What is encoded decodes to the changed value.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <gtest/gtest.h>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "halvane/air/advertisement_protocol.h"
#include "halvane/air/ap_channel_report.h"
#include "halvane/air/bandwidth_indication.h"
#include "halvane/air/bit_octets.h"
#include "halvane/air/bss_ac_access_delay.h"
#include "halvane/air/bss_color_change.h"
#include "halvane/air/bss_load.h"
#include "halvane/air/bss_max_idle_period.h"
#include "halvane/air/channel_switch.h"
#include "halvane/air/channel_switch_wrapper.h"
#include "halvane/air/channel_usage.h"
#include "halvane/air/country.h"
#include "halvane/air/device_name.h"
#include "halvane/air/ds_parameter_set.h"
#include "halvane/air/edca_parameter_set.h"
#include "halvane/air/eht_capabilities.h"
#include "halvane/air/eht_operation.h"
#include "halvane/air/element_info.h"
#include "halvane/air/element_range.h"
#include "halvane/air/element_writer.h"
#include "halvane/air/erp.h"
#include "halvane/air/estimated_service_parameters.h"
#include "halvane/air/extended_bss_load.h"
#include "halvane/air/extended_capabilities.h"
#include "halvane/air/extended_channel_switch.h"
#include "halvane/air/extended_supported_rates.h"
#include "halvane/air/fils_indication.h"
#include "halvane/air/he_6ghz_band_capabilities.h"
#include "halvane/air/he_capabilities.h"
#include "halvane/air/he_operation.h"
#include "halvane/air/he_phy_capabilities.h"
#include "halvane/air/hotspot_indication.h"
#include "halvane/air/ht_capabilities.h"
#include "halvane/air/ht_operation.h"
#include "halvane/air/interworking.h"
#include "halvane/air/max_channel_switch_time.h"
#include "halvane/air/mbo_oce.h"
#include "halvane/air/mesh_configuration.h"
#include "halvane/air/mesh_id.h"
#include "halvane/air/mobility_domain.h"
#include "halvane/air/mu_edca_parameter_set.h"
#include "halvane/air/multi_link.h"
#include "halvane/air/multi_link_traffic.h"
#include "halvane/air/multiple_bssid.h"
#include "halvane/air/multiple_bssid_configuration.h"
#include "halvane/air/multiple_bssid_index.h"
#include "halvane/air/neighbor_report.h"
#include "halvane/air/non_inheritance.h"
#include "halvane/air/nontransmitted_bssid_capability.h"
#include "halvane/air/operating_channel_information.h"
#include "halvane/air/operating_mode_notification.h"
#include "halvane/air/osen.h"
#include "halvane/air/owe_transition_mode.h"
#include "halvane/air/p2p.h"
#include "halvane/air/power_constraint.h"
#include "halvane/air/quiet.h"
#include "halvane/air/quiet_channel.h"
#include "halvane/air/reduced_neighbor_report.h"
#include "halvane/air/rm_enabled_capabilities.h"
#include "halvane/air/roaming_consortium.h"
#include "halvane/air/rsn.h"
#include "halvane/air/rsn_override.h"
#include "halvane/air/rsnx.h"
#include "halvane/air/secondary_channel_offset.h"
#include "halvane/air/short_ssid_list.h"
#include "halvane/air/spatial_reuse.h"
#include "halvane/air/ssid_element.h"
#include "halvane/air/suite.h"
#include "halvane/air/supported_operating_classes.h"
#include "halvane/air/supported_rates.h"
#include "halvane/air/tid_to_link_mapping.h"
#include "halvane/air/tim.h"
#include "halvane/air/time_advertisement.h"
#include "halvane/air/tpc_report.h"
#include "halvane/air/transmit_power_envelope.h"
#include "halvane/air/twt.h"
#include "halvane/air/uora_parameter_set.h"
#include "halvane/air/vht_capabilities.h"
#include "halvane/air/vht_operation.h"
#include "halvane/air/wapi.h"
#include "halvane/air/wide_bandwidth_channel_switch.h"
#include "halvane/air/wifi_display.h"
#include "halvane/air/wmm.h"
#include "halvane/air/wpa.h"
#include "halvane/air/wps_summary.h"
#include "halvane/base/byte_buffer.h"
#include "halvane/base/mac_address.h"
#include "halvane/base/oui.h"
#include "halvane/base/ssid.h"

#include "tests/air/element_samples.h"
#include "tests/support/hostile_bytes.h"

using halvane::ByteBuffer;
using halvane::MacAddress;
using halvane::Ssid;
using halvane::testing::Bytes;
using halvane::testing::bytesOf;
using halvane::testing::kElementSamples;
using halvane::testing::kVendorSamples;
using namespace halvane::air;

namespace {

constexpr MacAddress kAddress({0x02, 0, 0, 0, 0x12, 0x34});
constexpr Suite kSuite = {halvane::kRSNOUI, 9};

ByteBuffer filled(std::size_t size) {
    return ByteBuffer(Bytes(size, 0x5A));
}

// --- Samples by type ---

// The sample number `which` of the element.
template <typename T>
std::string_view sampleOf(std::size_t which = 0) requires requires {
    T::kId;
}
{
    for (const auto& sample : kElementSamples) {
        if (sample.id == T::kId && which-- == 0) return sample.hex;
    }
    return {};
}
template <typename T>
std::string_view sampleOf(std::size_t which = 0) requires requires {
    T::kOui;
}
{
    for (const auto& sample : kVendorSamples) {
        if (sample.oui == T::kOui && sample.type == T::kType && which-- == 0) return sample.hex;
    }
    return {};
}

template <typename T>
T sampleValue(std::size_t which = 0) {
    const auto value = T::decode(bytesOf(sampleOf<T>(which)));
    EXPECT_TRUE(value);
    return value.value_or(T());
}

// --- Edits ---

// The names of the elements that have been edited.
class Edits {
  public:
    // Changes the sample number `which` and holds that the changed value survives.
    template <typename T, typename Change>
    void of(Change change, std::size_t which = 0) {
        const std::string name = nameOf<T>();
        SCOPED_TRACE(name);
        const T before = sampleValue<T>(which);
        T after = before;
        change(after);
        EXPECT_FALSE(after == before) << "nothing changed";
        const std::vector<std::uint8_t> octets = after.encode();
        const auto decoded = T::decode(octets);
        ASSERT_TRUE(decoded) << ByteBuffer(octets).hex();
        EXPECT_TRUE(*decoded == after) << ByteBuffer(octets).hex();
        expectWhole<T>(octets);
        names_.insert(name);
    }

    bool has(std::string_view name) const { return names_.contains(std::string(name)); }

  private:
    template <typename T>
    static std::string nameOf() {
        if constexpr (requires { T::kId; }) {
            return std::string(elementInfo(T::kId)->name);
        } else {
            return std::string(vendorElementInfo(headOf<T>())->name);
        }
    }
    template <typename T>
    static Bytes headOf() {
        return {T::kOui[0], T::kOui[1], T::kOui[2], T::kType};
    }

    // The body also survives the header, and fragments if it needs them.
    template <typename T>
    static void expectWhole(const std::vector<std::uint8_t>& body) {
        std::vector<std::uint8_t> octets;
        if constexpr (requires { T::kId; }) {
            appendElement(octets, T::kId, body);
        } else {
            appendVendorElement(octets, T::kOui, T::kType, body);
        }
        std::vector<std::uint8_t> found;
        for (const Element& element : ElementRange(octets)) {
            EXPECT_EQ(element.offset, 0u);
            found.assign(element.body.begin(), element.body.end());
        }
        if constexpr (!requires { T::kId; }) found.erase(found.begin(), found.begin() + 4);
        EXPECT_EQ(found, body);
    }

    std::set<std::string> names_;
};

void editOperation(Edits& edits) {
    edits.of<SsidElement>([](auto& e) { e.ssid = *Ssid::fromBytes(Bytes(32, 'x')); });
    edits.of<SsidElement>([](auto& e) { e.ssid = Ssid(); });
    edits.of<SupportedRates>([](auto& e) { e.rates.push_back({0x8C}); });
    edits.of<SupportedRates>([](auto& e) { e.rates.clear(); });
    edits.of<ExtendedSupportedRates>([](auto& e) {
        while (e.rates.push_back({0x0C})) {
        }
    });
    edits.of<DsParameterSet>([](auto& e) { e.currentChannel = 14; });
    edits.of<Tim>([](auto& e) { e.partialBitmap = filled(251); });
    edits.of<Tim>([](auto& e) {
        e.bitmapControl.reset();
        e.partialBitmap = ByteBuffer();
    });
    edits.of<Country>([](auto& e) {
        e.countryCode = {'D', 'E'};
        e.triplets.push_back({100, 11, 30});
        e.rest = ByteBuffer();
    });
    edits.of<PowerConstraint>([](auto& e) { e.localConstraint = 255; });
    edits.of<ChannelSwitch>([](auto& e) { e.count = 0; });
    edits.of<ExtendedChannelSwitch>([](auto& e) { e.newOperatingClass = 115; });
    edits.of<WideBandwidthChannelSwitch>([](auto& e) { e.channel.centerSegment1 = 155; });
    edits.of<ChannelSwitchWrapper>([](auto& e) { e.subelements.pop_back(); });
    edits.of<ChannelSwitchWrapper>(
        [](auto& e) { e.subelements.front().newCountry->environmentOctet = 'I'; });
    edits.of<SecondaryChannelOffset>([](auto& e) { e.offset = 3; });
    edits.of<Quiet>([](auto& e) { e.duration = 0xFFFF; });
    edits.of<QuietChannel>([](auto& e) {
        e.apQuietMode = 0;
        e.interval.reset();
    });
    edits.of<QuietChannel>([](auto& e) { e.interval->offset = 0x1234; });
    edits.of<TpcReport>([](auto& e) { e.linkMargin = -128; });
    edits.of<Erp>([](auto& e) { e.parameters.setBit(1, false); });
    edits.of<BssLoad>([](auto& e) { e.stationCount = 0xFFFF; });
    edits.of<ExtendedBssLoad>([](auto& e) { e.secondary80Utilization = 255; });
    edits.of<EdcaParameterSet>([](auto& e) { e.records[3] = e.records[0]; });
    edits.of<MuEdcaParameterSet>([](auto& e) { e.records[0].timer = 1; });
    edits.of<UoraParameterSet>([](auto& e) { e.range.setBits(0, 3, 7); });
    edits.of<TransmitPowerEnvelope>([](auto& e) {
        e.psdExtension.reset();
        e.rest = ByteBuffer();
    });
    edits.of<HtOperation>([](auto& e) { e.information.setBits(0, 2, 3); });
    edits.of<VhtOperation>([](auto& e) { e.information.centerSegment1 = 0; });
    edits.of<HeOperation>([](auto& e) { e.setSixGhz(std::nullopt); });
    edits.of<HeOperation>([](auto& e) { e.setVht(std::nullopt); });
    edits.of<HeOperation>([](auto& e) { e.setMaxCoHostedBssidIndicator(std::nullopt); });
    edits.of<HeOperation>([](auto& e) {
        e.setVht(std::nullopt);
        e.setVht(VhtOperationInformation{1, 42, 0});
    });
    edits.of<EhtOperation>([](auto& e) { e.setInformation(std::nullopt); });
    edits.of<EhtOperation>([](auto& e) {
        auto information = *e.information;
        information.disabledSubchannels.reset();
        e.setInformation(information);
    });
    edits.of<BandwidthIndication>([](auto& e) {
        auto channel = e.channel;
        channel.disabledSubchannels.reset();
        e.setChannel(channel);
    });
    edits.of<SpatialReuse>([](auto& e) { e.setSrg(std::nullopt); });
    edits.of<SpatialReuse>([](auto& e) { e.setNonSrgMaxOffset(std::nullopt); });
    edits.of<BssColorChange>([](auto& e) { e.newColorInformation.setBits(0, 6, 1); });
    edits.of<OperatingModeNotification>([](auto& e) { e.mode.setBits(4, 3, 7); });
    edits.of<MaxChannelSwitchTime>([](auto& e) { e.switchTime = 0xFFFFFF; });
    edits.of<OperatingChannelInformation>([](auto& e) { e.primaryChannel = 149; });
    edits.of<ChannelUsage>([](auto& e) { e.channels.push_back({115, 36}); });
    edits.of<SupportedOperatingClasses>([](auto& e) { e.currentClass = 131; });
    edits.of<ApChannelReport>([](auto& e) { e.channels.push_back(165); });
    edits.of<BssMaxIdlePeriod>([](auto& e) { e.period = 1; });
    edits.of<EstimatedServiceParameters>([](auto& e) { e.services[0].fields.setBits(8, 8, 1); });
    edits.of<TimeAdvertisement>([](auto& e) { e.utc->year = 2030; });
    edits.of<TimeAdvertisement>([](auto& e) { e.error = 0xFFFFFFFFFF; }, 1);
}

void editCapabilities(Edits& edits) {
    edits.of<HtCapabilities>([](auto& e) { e.information.fields.setBit(1, false); });
    edits.of<VhtCapabilities>([](auto& e) { e.rxMcs.fields.setBits(0, 2, 3); });
    edits.of<HeCapabilities>([](auto& e) { e.upTo80.tx.fields.setBits(14, 2, 0); });
    edits.of<HeCapabilities>([](auto& e) {
        e.ppe.reset();
        e.phy.bits.setBit(static_cast<std::size_t>(HePhyCapability::PpeThresholdsPresent), false);
    });
    edits.of<EhtCapabilities>([](auto& e) { e.sets = filled(9); });
    edits.of<He6GhzBandCapabilities>([](auto& e) { e.information.setBits(0, 3, 0); });
    edits.of<ExtendedCapabilities>([](auto& e) { e.setCapability(ExtendedCapability{95}); });
    edits.of<RmEnabledCapabilities>([](auto& e) { e.bits.setBit(39, true); });
    edits.of<MeshConfiguration>([](auto& e) { e.authentication = 2; });
    edits.of<MeshId>([](auto& e) { e.name = ByteBuffer(); });
    edits.of<Interworking>([](auto& e) { e.hessid.reset(); });
    edits.of<Interworking>([](auto& e) { e.venue.reset(); });
    edits.of<AdvertisementProtocol>([](auto& e) { e.protocols.pop_back(); });
    edits.of<AdvertisementProtocol>([](auto& e) { e.protocols.push_back({{}, 3, {}}); });
    edits.of<RoamingConsortium>([](auto& e) { e.anqpCount = 255; });
    edits.of<Twt>([](auto& e) { e.individual->channel = 3; });
    edits.of<Twt>([](auto& e) { e.broadcast[0].targetWakeTime = 0xFFFF; }, 2);
}

void editSecurity(Edits& edits) {
    edits.of<Rsn>([](auto& e) {
        while (e.akms->size() < 20) e.akms->push_back(kSuite);
    });
    edits.of<Rsn>([](auto& e) { e.groupManagement.reset(); });
    edits.of<Rsn>([](auto& e) {
        e.akms.reset();
        e.capabilities.reset();
        e.pmkids.reset();
        e.groupManagement.reset();
    });
    edits.of<Rsn>([](auto& e) { e.pmkids->push_back({1, 2, 3}); });
    edits.of<Rsnx>([](auto& e) { e.setCapability(RsnxCapability::SaePk); });
    edits.of<RsnOverride>([](auto& e) { e.rsn.akms->push_back(kSuite); });
    edits.of<RsnOverride2>([](auto& e) { e.rsn.pairwise->clear(); });
    edits.of<RsnxOverride>([](auto& e) { e.rsnx.setCapability(RsnxCapability::SaePk); });
    edits.of<Osen>([](auto& e) { e.rsn.group = kSuite; });
    edits.of<Wpa>([](auto& e) { e.capabilities.reset(); });
    edits.of<Wpa>([](auto& e) { e.version = 2; });
    edits.of<Wapi>([](auto& e) { e.akms.push_back(kSuite); });
    edits.of<Wapi>([](auto& e) { e.bkids.reset(); });
    edits.of<FilsIndication>([](auto& e) { e.hessid = kAddress; });
    edits.of<MobilityDomain>([](auto& e) { e.capability.setBit(1, true); });
    edits.of<OweTransitionMode>([](auto& e) { e.ssid = filled(32); });
    edits.of<OweTransitionMode>([](auto& e) { e.channel.reset(); });
}

void editNetworks(Edits& edits) {
    edits.of<MultipleBssid>([](auto& e) { e.maxIndicator = 8; });
    edits.of<MultipleBssid>([](auto& e) { e.subelements.push_back({0, filled(3)}); });
    edits.of<NontransmittedBssidCapability>(
        [](auto& e) { e.capabilities.fields.setBit(4, false); });
    edits.of<MultipleBssidIndex>([](auto& e) { e.dtimCount.reset(); });
    edits.of<MultipleBssidIndex>([](auto& e) { e.index = 255; });
    edits.of<MultipleBssidConfiguration>([](auto& e) { e.bssidCount = 16; });
    edits.of<NonInheritance>([](auto& e) { e.ids.push_back(127); });
    edits.of<NonInheritance>([](auto& e) { e.extensionIds.reset(); });
    edits.of<ReducedNeighborReport>([](auto& e) { e.neighbors[0].accessPoints[0].psd = -1; });
    edits.of<ReducedNeighborReport>([](auto& e) {
        auto& points = e.neighbors[0].accessPoints;
        points.push_back(points[0]);
        e.neighbors[0].header.setBits(4, 4, 1);
    });
    edits.of<NeighborReport>([](auto& e) { e.bssid = kAddress; });
    edits.of<NeighborReport>([](auto& e) { e.subelements.push_back({221, filled(255)}); });
    edits.of<ShortSsidList>([](auto& e) { e.shortSsids.push_back(0x12345678); });
    edits.of<TidToLinkMapping>([](auto& e) { e.links[0] = 0xFFFF; });
    edits.of<TidToLinkMapping>([](auto& e) {
        e.switchTime.reset();
        e.control.setBit(3, false);
    });
    edits.of<MultiLinkTraffic>([](auto& e) { e.bitmaps = filled(40); });
    edits.of<MultiLink>([](auto& e) {
        e.common.mldAddress = kAddress;
        e.common.apMldId.reset();
        e.control.setBit(9, false);
    });
    edits.of<MultiLink>([](auto& e) { e.subelements.push_back(e.subelements.front()); });
}

void editVendors(Edits& edits) {
    edits.of<Wmm>([](auto& e) { e.qosInfo->setBit(7, !e.qosInfo->bit(7)); });
    edits.of<WpsSummary>([](auto& e) { e.attributes.push_back({0x1049, filled(300)}); });
    edits.of<P2p>([](auto& e) { e.attributes.pop_back(); });
    edits.of<WifiDisplay>([](auto& e) { e.attributes.push_back({7, filled(2)}); });
    edits.of<HotspotIndication>([](auto& e) { e.ppsMoId = 0x0403; });
    edits.of<MboOce>([](auto& e) { e.attributes.front().value = filled(255); });
    edits.of<CcxDeviceName>([](auto& e) { e.clients = 255; });
    edits.of<AironetDeviceName>([](auto& e) { e.name = filled(200); });
    edits.of<ArubaDeviceName>([](auto& e) { e.name = filled(1); });
    edits.of<MistDeviceName>([](auto& e) { e.name = ByteBuffer(); });
}

TEST(AirEditedElements, DecodeToTheSameValue) {
    Edits edits;
    editOperation(edits);
    editCapabilities(edits);
    editSecurity(edits);
    editNetworks(edits);
    editVendors(edits);
    for (const ElementInfo& info : elementInfos()) {
        EXPECT_TRUE(info.decoder.describe == nullptr || edits.has(info.name)) << info.name;
    }
    for (const VendorElementInfo& info : vendorElementInfos()) {
        EXPECT_TRUE(info.decoder.describe == nullptr || edits.has(info.name)) << info.name;
    }
}

// Lists may grow past the 255 octets of an element, and the inner ones of Multi-Link past those of
// a subelement: they go on in fragments.
TEST(AirEditedElements, GoOnInFragments) {
    Edits edits;
    for (const std::size_t count : {50u, 64u, 65u, 300u}) {
        edits.of<ShortSsidList>([&](auto& e) { e.shortSsids.assign(count, 7); });
    }
    edits.of<MultipleBssid>([](auto& e) { e.subelements.assign(5, {0, filled(255)}); });
    edits.of<NeighborReport>([](auto& e) { e.subelements.assign(5, {221, filled(100)}); });
    edits.of<MultiLink>([](auto& e) { e.subelements.assign(40, e.subelements.front()); });
    for (const std::size_t size : {200u, 255u, 256u, 510u, 1000u}) {
        edits.of<MultiLink>([&](auto& e) { e.subelements.front().link->profile = filled(size); });
    }
    edits.of<ReducedNeighborReport>([](auto& e) {
        const auto neighbor = e.neighbors[0];
        e.neighbors.assign(30, neighbor);
    });
    edits.of<WpsSummary>([](auto& e) { e.attributes.assign(3, {0x1049, filled(200)}); });
}

// What no length or count can tell is not encoded at all.
template <typename T, typename Change>
void expectRefused(Change change) {
    T value = sampleValue<T>();
    change(value);
    EXPECT_TRUE(value.encode().empty()) << sampleOf<T>();
}

TEST(AirEditedElements, AreNotEncodedIfALengthCannotTellThem) {
    expectRefused<OweTransitionMode>([](auto& e) { e.ssid = filled(256); });
    expectRefused<AdvertisementProtocol>([](auto& e) { e.protocols[0].vendor = filled(256); });
    expectRefused<ChannelSwitchWrapper>([](auto& e) { e.subelements.front().body = filled(256); });
    expectRefused<FilsIndication>([](auto& e) { e.publicKeys[0].indicator = filled(256); });
    expectRefused<MboOce>([](auto& e) { e.attributes.front().value = filled(256); });
    expectRefused<MultiLink>([](auto& e) { e.common.rest = filled(255); });
    expectRefused<MultiLink>([](auto& e) { e.subelements.front().link->infoRest = filled(255); });
    expectRefused<NeighborReport>([](auto& e) { e.subelements.push_back({221, filled(256)}); });
    expectRefused<MultipleBssid>([](auto& e) { e.subelements.push_back({0, filled(256)}); });
    expectRefused<P2p>([](auto& e) { e.attributes.front().value = filled(65536); });
    expectRefused<WpsSummary>([](auto& e) { e.attributes.front().value = filled(65536); });
    expectRefused<WifiDisplay>([](auto& e) { e.attributes.front().value = filled(65536); });
}

TEST(AirEditedElements, AreNotEncodedIfANumberIsTooGreat) {
    expectRefused<MaxChannelSwitchTime>([](auto& e) { e.switchTime = 0x1000000; });
    expectRefused<TidToLinkMapping>([](auto& e) { e.expectedDuration = 0x1000000; });
    expectRefused<TimeAdvertisement>([](auto& e) { e.error = 0x10000000000; });
}

// A channel has up to 16 access points, all told with the same fields.
TEST(AirEditedElements, AreNotEncodedIfNeighborsDoNotFitTogether) {
    expectRefused<ReducedNeighborReport>([](auto& e) {
        auto& points = e.neighbors[0].accessPoints;
        const auto point = points[0];
        points.assign(17, point);
    });
    expectRefused<ReducedNeighborReport>([](auto& e) {
        auto& points = e.neighbors[0].accessPoints;
        points.push_back(points[0]);
        points[1].psd.reset();
    });
    expectRefused<ReducedNeighborReport>(
        [](auto& e) { e.neighbors[0].accessPoints[0].rest = filled(256); });
}

}  // namespace

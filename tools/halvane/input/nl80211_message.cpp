#include "tools/halvane/input/nl80211_message.h"

#include <algorithm>
#include <linux/nl80211.h>
#include <utility>

#include "tools/halvane/input/netlink_attributes.h"
#include "tools/halvane/input/told_value.h"

namespace halvane::tool {

namespace {

using Bytes = ScannedNetwork::Bytes;

using Fault = MessageFault;

// As the attributes tell it, before the elements have found their kind.
struct ToldNetwork {
    ScannedNetwork network;
    std::optional<MacAddress> bssid{};
    std::optional<MacAddress> parent{};
    std::optional<std::uint64_t> parentTSF{};
    std::optional<std::uint32_t> offset{};
    std::optional<Bytes> elements{};
    bool isProbeResponse = false;
};

// The attributes that tell of the time and the strength of frames.
Fault readReception(const NetlinkAttribute& attribute, ToldNetwork& told) {
    ScannedNetwork& network = told.network;
    switch (attribute.type) {
        case NL80211_BSS_FREQUENCY:
            return keep(network.frequency, attribute.u32(), attribute, "frequency");
        case NL80211_BSS_FREQUENCY_OFFSET:
            return keep(told.offset, attribute.u32(), attribute, "frequency's offset");
        case NL80211_BSS_SIGNAL_MBM:
            return keep(network.signal, attribute.u32(), attribute, "signal");
        case NL80211_BSS_SIGNAL_UNSPEC:
            return keep(network.unspecifiedSignal, attribute.u8(), attribute, "signal");
        case NL80211_BSS_SEEN_MS_AGO:
            return keep(network.seenAgo, attribute.u32(), attribute, "age");
        case NL80211_BSS_LAST_SEEN_BOOTTIME:
            return keep(network.lastSeen, attribute.u64(), attribute, "time");
        case NL80211_BSS_PARENT_TSF:
            return keep(told.parentTSF, attribute.u64(), attribute, "parent's TSF");
        case NL80211_BSS_PARENT_BSSID:
            return keepAddress(told.parent, attribute, "parent's BSSID");
        default:
            return std::nullopt;
    }
}

// The attributes that tell what frames said.
Fault readContent(const NetlinkAttribute& attribute, ToldNetwork& told) {
    ScannedNetwork& network = told.network;
    switch (attribute.type) {
        case NL80211_BSS_BSSID:
            return keepAddress(told.bssid, attribute, "BSSID");
        case NL80211_BSS_TSF:
            return keep(network.tsf, attribute.u64(), attribute, "TSF");
        case NL80211_BSS_BEACON_TSF:
            return keep(network.beaconTSF, attribute.u64(), attribute, "beacon's TSF");
        case NL80211_BSS_BEACON_INTERVAL:
            return keep(network.beaconInterval, attribute.u16(), attribute, "beacon interval");
        case NL80211_BSS_CAPABILITY:
            return keep(network.capability, attribute.u16(), attribute, "capability");
        case NL80211_BSS_STATUS:
            return keep(network.status, attribute.u32(), attribute, "status");
        case NL80211_BSS_INFORMATION_ELEMENTS:
            told.elements.emplace(attribute.value.begin(), attribute.value.end());
            return std::nullopt;
        case NL80211_BSS_BEACON_IES:
            network.beaconElements.emplace(attribute.value.begin(), attribute.value.end());
            return std::nullopt;
        case NL80211_BSS_PRESP_DATA:
            told.isProbeResponse = true;
            return std::nullopt;
        default:
            return readReception(attribute, told);
    }
}

// The kernel says that they are of a probe response, or they differ from those of a beacon.
void placeElements(ToldNetwork& told) {
    ScannedNetwork& network = told.network;
    if (!told.elements) return;
    const bool differ = network.beaconElements && *network.beaconElements != *told.elements;
    auto& place =
        told.isProbeResponse || differ ? network.probeResponseElements : network.beaconElements;
    place = std::move(told.elements);
}

Result<ScannedNetwork, std::string> readNetwork(std::span<const std::uint8_t> nested) {
    ToldNetwork told;
    const Fault fault = readEach(NetlinkAttributes(nested), [&told](const auto& attribute) {
        return readContent(attribute, told);
    });
    if (fault) return Unexpected(*fault);
    if (!told.bssid) return Unexpected(std::string("it tells no BSSID"));
    placeElements(told);
    told.network.bssid = *told.bssid;
    told.network.frequencyOffset = told.offset.value_or(0);
    if (told.parentTSF) told.network.parentTime = {*told.parentTSF, told.parent};
    return std::move(told.network);
}

// The attributes of the message itself.
struct Outer {
    std::optional<std::uint32_t> interface {};
    std::optional<std::uint32_t> type{};
    std::optional<std::string> name{};
    std::optional<std::span<const std::uint8_t>> network{};
};

Fault readOuter(const NetlinkAttribute& attribute, Outer& outer) {
    switch (attribute.type) {
        case NL80211_ATTR_IFINDEX:
            return keep(outer.interface, attribute.u32(), attribute, "interface");
        case NL80211_ATTR_IFTYPE:
            return keep(outer.type, attribute.u32(), attribute, "interface's type");
        case NL80211_ATTR_IFNAME:
            outer.name = toldText(attribute);
            return std::nullopt;
        case NL80211_ATTR_BSS:
            outer.network = attribute.value;
            return std::nullopt;
        default:
            return std::nullopt;
    }
}

Result<Outer, std::string> readOuter(NetlinkAttributes attributes) {
    Outer outer;
    const Fault fault = readEach(
        attributes, [&outer](const auto& attribute) { return readOuter(attribute, outer); });
    if (fault) return Unexpected(*fault);
    return outer;
}

Unexpected<std::string> withoutHeader() {
    return Unexpected(std::string(kShorterThanHeader));
}

}  // namespace

std::optional<std::chrono::milliseconds> ScannedNetwork::age(std::chrono::nanoseconds now) const {
    using std::chrono::milliseconds;
    // The time is that of the frame, and the age that of its entry.
    const auto nanoseconds = static_cast<std::uint64_t>(std::max<std::int64_t>(now.count(), 0));
    if (lastSeen && *lastSeen != 0 && *lastSeen <= nanoseconds) {
        return milliseconds((nanoseconds - *lastSeen) / 1'000'000);
    }
    if (!seenAgo) return std::nullopt;
    return milliseconds(*seenAgo);
}

ToldBy<ScannedNetwork> readScannedNetwork(std::span<const std::uint8_t> message) {
    const auto generic = readGenericMessage(message);
    if (!generic) return withoutHeader();
    if (generic->command != NL80211_CMD_NEW_SCAN_RESULTS) return std::optional<ScannedNetwork>();
    const auto outer = readOuter(generic->attributes);
    if (!outer) return Unexpected(outer.error());
    if (!outer->network) return std::optional<ScannedNetwork>();
    auto network = readNetwork(*outer->network);
    if (!network) return Unexpected(network.error());
    network->interface = outer->interface.value_or(0);
    return std::optional(std::move(*network));
}

ToldBy<WirelessInterface> readInterface(std::span<const std::uint8_t> message) {
    const auto generic = readGenericMessage(message);
    if (!generic) return withoutHeader();
    if (generic->command != NL80211_CMD_NEW_INTERFACE) return std::optional<WirelessInterface>();
    const auto outer = readOuter(generic->attributes);
    if (!outer) return Unexpected(outer.error());
    if (!outer->interface || !outer->name) return std::optional<WirelessInterface>();
    return std::optional<WirelessInterface>(
        {*outer->name, *outer->interface, static_cast<InterfaceMode>(outer->type.value_or(0))});
}

ToldBy<ScanEvent> readScanEvent(std::span<const std::uint8_t> message, unsigned interface) {
    const auto generic = readGenericMessage(message);
    if (!generic) return withoutHeader();
    const bool isDone = generic->command == NL80211_CMD_NEW_SCAN_RESULTS;
    if (!isDone && generic->command != NL80211_CMD_SCAN_ABORTED) return std::optional<ScanEvent>();
    const auto outer = readOuter(generic->attributes);
    if (!outer) return Unexpected(outer.error());
    if (outer->interface != interface) return std::optional<ScanEvent>();
    return std::optional(isDone ? ScanEvent::Done : ScanEvent::Aborted);
}

}  // namespace halvane::tool

// Four networks in one beacon: Multiple BSSID, with what the three others inherit from the sender.
#include <cstdint>
#include <initializer_list>
#include <string_view>

#include "halvane/air/channel.h"
#include "halvane/air/element_id.h"
#include "halvane/air/extended_capabilities.h"
#include "halvane/air/multiple_bssid.h"
#include "halvane/air/multiple_bssid_index.h"
#include "halvane/air/non_inheritance.h"
#include "halvane/air/nontransmitted_bssid_capability.h"
#include "halvane/air/security.h"
#include "halvane/base/byte_buffer.h"

#include "tools/make_samples/access_point.h"
#include "tools/make_samples/air_elements.h"
#include "tools/make_samples/bytes.h"
#include "tools/make_samples/capture_file.h"
#include "tools/make_samples/elements.h"
#include "tools/make_samples/frames.h"
#include "tools/make_samples/scenes.h"

namespace halvane::samples {

namespace {

using air::ElementId;

struct SharedNetwork {
    std::uint8_t index = 1;
    std::string_view name{};
    bool isPrivacy = true;
    Bytes elements{};                            // of its own
    std::initializer_list<ElementId> without{};  // elements of the sender that do not hold
};

Bytes profileOf(const SharedNetwork& network) {
    air::NontransmittedBssidCapability capability;
    const std::uint16_t field = kESS | kRadioMeasurement | (network.isPrivacy ? kPrivacy : 0);
    capability.capabilities.fields.setBits(0, 16, field);
    const air::MultipleBssidIndex index = {.index = network.index, .dtimPeriod = 2, .dtimCount = 1};
    air::NonInheritance without = {.extensionIds = air::NonInheritance::Numbers()};
    for (const ElementId id : network.without) without.ids.push_back(air::idOctetOf(id));
    return join({airElement(capability), ssid(network.name), airElement(index), network.elements,
                 network.without.size() == 0 ? Bytes{} : airElement(without)});
}

Bytes multipleBssid() {
    const SharedNetwork networks[] = {
        {1, "Cedar Staff", true, {}, {}},
        {2,
         "Cedar Guests",
         true,
         rsnOf({.akms = {kOWE}, .pmf = air::Pmf::Required, .groupManagement = kBIPCMAC128}),
         {ElementId::Rsnx}},
        {3, "Cedar Lobby", false, {}, {ElementId::Rsn, ElementId::Rsnx}},
    };
    air::MultipleBssid element;
    element.maxIndicator = 2;  // four addresses
    for (const SharedNetwork& network : networks) {
        element.subelements.push_back(
            {air::kNontransmittedProfile, ByteBuffer(profileOf(network))});
    }
    return airElement(element);
}

AccessPoint cedarOffice() {
    using Capability = air::ExtendedCapability;
    return {.number = 0x20,  // the lowest of the four
            .name = "Cedar Office",
            .radio = {{air::Band::Ghz5, 36}, air::ChannelWidth::Mhz80, 4},
            .rsn = rsnOf(wpa3Personal()),
            .rsnx = hashToElement(),
            .load = loadOf(23, 90),
            .multipleBssid = multipleBssid(),
            .extendedCapabilities = extendedCapabilities(
                {Capability::ExtendedChannelSwitching, Capability::BssTransition,
                 Capability::MultipleBssid, Capability::OperatingModeNotification,
                 Capability::CompleteNonTxBssidProfiles})};
}

}  // namespace

Bytes sharedBeaconCapture() {
    return pcapFile(LinkType::Radiotap, Order::Little,
                    {{heard(cedarOffice(), FrameKind::Beacon, -55)}});
}

}  // namespace halvane::samples

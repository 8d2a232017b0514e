#include "tools/make_samples/multi_link_elements.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <set>

#include "halvane/air/channel.h"
#include "halvane/air/element_id.h"
#include "halvane/air/non_inheritance.h"
#include "halvane/air/reduced_neighbor_report.h"
#include "halvane/air/short_ssid_list.h"
#include "halvane/base/byte_buffer.h"
#include "halvane/base/ssid.h"

#include "tools/make_samples/air_elements.h"
#include "tools/make_samples/radio_elements.h"

namespace halvane::samples {

namespace {

using air::Band;
using air::ElementId;

// The operating class of the global table (Annex E) for a width of 20 to 320 MHz.
std::uint8_t operatingClassOf(const RadioSetup& radio) {
    constexpr std::array<std::uint8_t, 6> kAt6Ghz = {131, 132, 133, 134, 137, 137};
    constexpr std::array<std::uint8_t, 4> kAt5Ghz = {115, 116, 128, 129};
    const auto width = static_cast<std::size_t>(radio.width);
    if (radio.primary.band == Band::Ghz2) return 81;
    if (radio.primary.band == Band::Ghz6) return kAt6Ghz[width];
    const bool isUpper20 = width == 0 && radio.primary.number >= 100;
    return isUpper20 ? 121 : kAt5Ghz[width];
}

air::TbttMldParameters mldParametersOf(std::uint8_t linkId) {
    air::TbttMldParameters parameters;
    parameters.fields.setBits(0, 8, 0);  // of the sender's device
    parameters.fields.setBits(8, 4, linkId);
    parameters.fields.setBits(12, 8, 1);  // change count
    return parameters;
}

air::TbttInformation tbttOf(const CoLocated& other) {
    constexpr std::size_t kSameSsid = 1, kEssHasCoLocated = 4, kCoLocated = 6;
    constexpr std::int8_t kNoLimit = 127, k10DbmPerMhz = 20;
    const bool isAt6Ghz = other.accessPoint.radio.primary.band == Band::Ghz6;
    air::TbttInformation tbtt;
    tbtt.tbttOffset = 30;  // TU
    tbtt.bssid = addressOf(other.accessPoint.number);
    tbtt.shortSsid = air::shortSsidOf(Ssid::fromText(other.accessPoint.name).value());
    tbtt.bssParameters.emplace();
    tbtt.bssParameters->fields.setBit(kSameSsid, true);
    tbtt.bssParameters->fields.setBit(kEssHasCoLocated, isAt6Ghz);
    tbtt.bssParameters->fields.setBit(kCoLocated, true);
    tbtt.psd = isAt6Ghz ? k10DbmPerMhz : kNoLimit;
    if (other.linkId) tbtt.mldParameters = mldParametersOf(*other.linkId);
    return tbtt;
}

// --- Inheritance ---

// What stands in no profile, whatever the sender says.
bool isNeverInProfile(ElementId id) {
    return id == ElementId::ReducedNeighborReport || id == ElementId::MultiLink;
}

// The elements of the link that differ from those of the sender.
Bytes ownElements(const std::vector<Bytes>& link, const std::vector<Bytes>& sender) {
    Bytes own;
    for (const Bytes& element : link) {
        if (element.empty() || isNeverInProfile(idOf(element))) continue;
        const bool isInherited = std::ranges::find(sender, element) != sender.end();
        if (!isInherited) own = join({own, element});
    }
    return own;
}

// Names the elements of the sender that the link lacks; empty if there are none.
Bytes nonInheritance(const std::vector<Bytes>& link, const std::vector<Bytes>& sender) {
    std::set<ElementId> kinds;
    for (const Bytes& element : link) {
        if (!element.empty()) kinds.insert(idOf(element));
    }
    air::NonInheritance lacking = {.extensionIds = air::NonInheritance::Numbers()};
    for (const Bytes& element : sender) {
        if (element.empty() || isNeverInProfile(idOf(element))) continue;
        const ElementId id = idOf(element);
        if (kinds.contains(id)) continue;
        if (const auto extension = air::extensionOf(id)) {
            lacking.extensionIds->push_back(*extension);
        } else {
            lacking.ids.push_back(air::idOctetOf(id));
        }
    }
    const bool isNeeded = !lacking.ids.empty() || !lacking.extensionIds->empty();
    return isNeeded ? airElement(lacking) : Bytes{};
}

}  // namespace

Bytes withHashToElementAlone(Bytes rates) {
    rates.push_back(0x80 | 123);
    return rates;
}

Bytes coLocated(const std::vector<CoLocated>& others) {
    air::ReducedNeighborReport report;
    for (const CoLocated& other : others) {
        air::NeighborApInformation channel;
        channel.operatingClass = operatingClassOf(other.accessPoint.radio);
        channel.channel = other.accessPoint.radio.primary.number;
        channel.accessPoints.push_back(tbttOf(other));
        report.neighbors.push_back(channel);
    }
    return airElement(report);
}

Bytes multiLinkOf(const MultiLinkSetup& setup) {
    constexpr std::uint32_t kSameLinks = 1;
    air::MultiLink element;
    element.common.mldAddress = addressOf(setup.mldNumber);
    element.common.linkIdInfo.emplace().setBits(0, 4, setup.linkId);
    element.common.bssParametersChangeCount = 1;
    auto& capabilities = element.common.mldCapabilities.emplace();
    capabilities.fields.setBits(0, 4, static_cast<std::uint32_t>(setup.linkCount - 1));
    capabilities.fields.setBits(5, 2, kSameLinks);  // negotiation of TID-to-link mappings
    for (const air::PerStaProfile& profile : setup.profiles) {
        air::MultiLinkSubelement subelement;
        subelement.link = profile;
        element.subelements.push_back(subelement);
    }
    return airElement(element);
}

air::PerStaProfile profileOfLink(std::uint8_t linkId, const AccessPoint& link,
                                 const AccessPoint& sender) {
    constexpr std::size_t kComplete = 4;
    const auto linkElements = elementsOf(link, FrameKind::ProbeResponse);
    const auto senderElements = elementsOf(sender, FrameKind::ProbeResponse);
    air::PerStaProfile profile;
    profile.control.setBits(0, 4, linkId);
    profile.control.setBit(kComplete, true);
    profile.address = addressOf(link.number);
    profile.beaconInterval = 100;
    profile.tsfOffset = 0;
    profile.dtim = air::DtimInfo{0, 2};
    profile.bssParametersChangeCount = 1;
    profile.profile =
        ByteBuffer(join({le16(capabilitiesOf(link)), ownElements(linkElements, senderElements),
                         nonInheritance(linkElements, senderElements)}));
    return profile;
}

}  // namespace halvane::samples

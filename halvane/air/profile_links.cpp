#include <algorithm>
#include <cstdint>
#include <utility>

#include "halvane/air/channel.h"
#include "halvane/air/element_id.h"
#include "halvane/air/element_range.h"
#include "halvane/air/multiple_bssid.h"
#include "halvane/air/neighbor.h"
#include "halvane/air/operating_class.h"
#include "halvane/air/profile_links_internal.h"
#include "halvane/air/reduced_neighbor_report.h"

namespace halvane::air {

namespace {

// --- Neighbours ---

Neighbor neighborOf(const NeighborApInformation& channel, const TbttInformation& accessPoint) {
    Neighbor neighbor;
    neighbor.bssid = accessPoint.bssid;
    neighbor.shortSsid = accessPoint.shortSsid;
    neighbor.operatingClass = channel.operatingClass;
    neighbor.channel = channel.channel;
    if (const auto* const row = operatingClass(channel.operatingClass)) {
        neighbor.band = row->band;
        neighbor.frequency = centerFrequencyOf(row->band, channel.channel);
    }
    if (const auto& parameters = accessPoint.bssParameters) {
        neighbor.isSameSsid = parameters->hasSameSsid();
        neighbor.isCoLocated = parameters->isCoLocated();
    }
    neighbor.psd = accessPoint.maxPsd();
    if (const auto& parameters = accessPoint.mldParameters) {
        neighbor.mldId = parameters->apMldId();
        neighbor.linkId = parameters->linkId();
    }
    return neighbor;
}

bool isTold(const TbttInformation& accessPoint) {
    return accessPoint.bssid || accessPoint.shortSsid || accessPoint.mldParameters;
}

// --- Multi-link ---

bool isBasic(const MultiLink& element) {
    return element.type() == MultiLinkType::Basic && element.common.mldAddress;
}

// The links that Reduced Neighbor Report names as those of the sender's own device.
void addNeighborLinks(std::vector<MldLink>& links, const ElementIndex& index) {
    for (const Neighbor& neighbor : neighborsIn(index)) {
        if (neighbor.mldId != 0 || !neighbor.linkId) continue;
        const auto isSame = [&](const MldLink& link) { return link.id == *neighbor.linkId; };
        const auto found = std::ranges::find_if(links, isSame);
        if (found == links.end()) {
            links.push_back({*neighbor.linkId, neighbor.bssid, false});
        } else if (!found->address) {
            found->address = neighbor.bssid;
        }
    }
}

}  // namespace

std::vector<Neighbor> neighborsIn(const ElementIndex& index) {
    std::vector<Neighbor> neighbors;
    if (!index.has(ElementId::ReducedNeighborReport)) return neighbors;
    for (const Element& element : index.elements()) {
        if (element.id != ElementId::ReducedNeighborReport) continue;
        const auto report = ReducedNeighborReport::decode(element.body);
        if (!report) continue;
        for (const NeighborApInformation& channel : report->neighbors) {
            for (const TbttInformation& accessPoint : channel.accessPoints) {
                if (isTold(accessPoint)) neighbors.push_back(neighborOf(channel, accessPoint));
            }
        }
    }
    return neighbors;
}

std::optional<BasicMultiLink> basicMultiLinkOf(const ElementIndex& index) {
    if (!index.has(ElementId::MultiLink)) return std::nullopt;
    for (const Element& element : index.elements()) {
        if (element.id != ElementId::MultiLink) continue;
        auto multiLink = MultiLink::decode(element.body);
        if (!multiLink || !isBasic(*multiLink)) continue;
        return BasicMultiLink{
            *std::move(multiLink),
            {Origin::Element, ElementId::MultiLink, static_cast<std::uint16_t>(element.offset)}};
    }
    return std::nullopt;
}

MldProfile mldOf(const BasicMultiLink& multiLink, const ElementIndex& index,
                 const MacAddress& bssid) {
    const MultiLink& element = multiLink.element;
    MldProfile mld;
    mld.address = element.common.mldAddress.value_or(MacAddress());
    if (const auto id = element.common.linkId()) mld.links.push_back({*id, bssid, true});
    for (const MultiLinkSubelement& subelement : element.subelements) {
        if (!subelement.link) continue;
        mld.links.push_back({subelement.link->linkId(), subelement.link->address, false});
    }
    addNeighborLinks(mld.links, index);
    mld.sources.push_back(multiLink.source);
    return mld;
}

std::optional<int> maxBssidIndicatorOf(const ElementIndex& index) {
    const auto element = index.decode<MultipleBssid>();
    return element ? std::optional<int>(element->maxIndicator) : std::nullopt;
}

}  // namespace halvane::air

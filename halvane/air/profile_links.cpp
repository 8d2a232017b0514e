#include <array>
#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

#include "halvane/air/channel.h"
#include "halvane/air/element_id.h"
#include "halvane/air/element_range.h"
#include "halvane/air/multiple_bssid.h"
#include "halvane/air/neighbor.h"
#include "halvane/air/operating_class.h"
#include "halvane/air/profile_links_internal.h"
#include "halvane/air/reduced_neighbor_report_internal.h"
#include "halvane/air/stack_list_internal.h"

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

// The links of an element of the type Basic, each once where it is named first.
class LinkList {
  public:
    explicit LinkList(std::vector<MldLink>& links) : links_(links) {}

    void add(const MldLink& link) {
        std::size_t& place = places_[static_cast<std::size_t>(link.id)];
        links_.push_back(link);
        if (place == 0) place = links_.size();
    }
    // A link that is known gets its address, if that is missing.
    void addNeighbor(int id, const std::optional<MacAddress>& address) {
        const std::size_t place = places_[static_cast<std::size_t>(id)];
        if (place == 0) return add({id, address, false});
        auto& known = links_[place - 1].address;
        if (!known) known = address;
    }

  private:
    static constexpr std::size_t kLinkIds = 16;  // a link ID has four bits

    std::vector<MldLink>& links_;
    std::array<std::size_t, kLinkIds> places_{};  // of the first link of an ID, plus 1; 0: none
};

std::vector<MldLink> linksOf(const MultiLink& element, const MacAddress& bssid,
                             const Neighbors& neighbors) {
    constexpr std::size_t kUsualCount = 4;
    std::vector<MldLink> links;
    links.reserve(kUsualCount);
    LinkList list(links);
    if (const auto id = element.common.linkId()) list.add({*id, bssid, true});
    for (const MultiLinkSubelement& subelement : element.subelements) {
        if (!subelement.link) continue;
        list.add({subelement.link->linkId(), subelement.link->address, false});
    }
    for (const Neighbor& neighbor : neighbors) {
        const bool isOfSender = neighbor.mldId == 0 && neighbor.linkId;
        if (isOfSender) list.addNeighbor(*neighbor.linkId, neighbor.bssid);
    }
    return links;
}

}  // namespace

Neighbors neighborsIn(const ElementIndex& index) {
    if (!index.has(ElementId::ReducedNeighborReport)) return {};
    constexpr std::size_t kUsualCount = 8;
    StackList<Neighbor, kUsualCount> neighbors;
    for (const Element& element : index.elements()) {
        if (element.id != ElementId::ReducedNeighborReport) continue;
        forEachNeighbor(element.body, [&](const auto& channel, const auto& accessPoint) {
            if (isTold(accessPoint)) neighbors->push_back(neighborOf(channel, accessPoint));
        });
        index.rememberWhole(element);
    }
    return Neighbors(*neighbors);
}

std::optional<BasicMultiLink> basicMultiLinkOf(const ElementIndex& index) {
    if (!index.has(ElementId::MultiLink)) return std::nullopt;
    for (const Element& element : index.elements()) {
        if (element.id != ElementId::MultiLink) continue;
        auto multiLink = index.decode<MultiLink>(element);
        if (!multiLink || !isBasic(*multiLink)) continue;
        return BasicMultiLink{
            *std::move(multiLink),
            {Origin::Element, ElementId::MultiLink, static_cast<std::uint32_t>(element.offset)}};
    }
    return std::nullopt;
}

MldProfile mldOf(const BasicMultiLink& multiLink, const MacAddress& bssid,
                 const Neighbors& neighbors) {
    const MultiLink& element = multiLink.element;
    return {element.common.mldAddress.value_or(MacAddress()),
            linksOf(element, bssid, neighbors),
            {multiLink.source}};
}

std::optional<int> maxBssidIndicatorOf(const ElementIndex& index) {
    const auto element = index.decode<MultipleBssid>();
    return element ? std::optional<int>(element->maxIndicator) : std::nullopt;
}

}  // namespace halvane::air

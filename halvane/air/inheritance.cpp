#include "halvane/air/inheritance.h"

#include <algorithm>
#include <bitset>
#include <cstdint>
#include <optional>
#include <utility>

#include "halvane/air/non_inheritance.h"
#include "halvane/base/byte_cursor.h"

namespace halvane::air {

namespace {

constexpr std::size_t kNumbers = 512;
using ElementSet = std::bitset<kNumbers>;

constexpr std::size_t numberOf(ElementId id) {
    return static_cast<std::size_t>(id) % kNumbers;
}

template <std::size_t Count>
ElementSet setOf(const ElementId (&ids)[Count]) {
    ElementSet set;
    for (const ElementId id : ids) set.set(numberOf(id));
    return set;
}

// A Fragment element that is an element of its own goes on with nothing.
constexpr ElementId kNeverInherited[] = {
    ElementId::Tim,
    ElementId::MultipleBssid,
    ElementId::NontransmittedBssidCapability,
    ElementId::MultipleBssidIndex,
    ElementId::Fragment,
    ElementId::ExtensionMissing,
    ElementId::NonInheritance,
    ElementId::MultiLink,
};

// What the profile of a nontransmitted BSSID shall not hold, since it is the transmitted BSSID's
// (11.1.3.8.1).
constexpr ElementId kAlwaysTransmitted[] = {
    ElementId::DsParameterSet,
    ElementId{6},  // IBSS Parameter Set
    ElementId::Country,
    ElementId::ChannelSwitch,
    ElementId{41},  // IBSS DFS
    ElementId::Erp,
    ElementId::HtCapabilities,
    ElementId::SupportedOperatingClasses,
    ElementId::ExtendedChannelSwitch,
    ElementId::HtOperation,
    ElementId::VhtCapabilities,
    ElementId::VhtOperation,
    ElementId::WideBandwidthChannelSwitch,
    ElementId::TransmitPowerEnvelope,
    ElementId{213},  // S1G Beacon Compatibility
    ElementId{214},  // Short Beacon Interval
    ElementId{217},  // S1G Capabilities
    ElementId{232},  // S1G Operation
    ElementId::HeCapabilities,
    ElementId::HeOperation,
    ElementId::SpatialReuse,
    ElementId::BssColorChange,
    ElementId::He6GhzBandCapabilities,
    ElementId::EhtOperation,
    ElementId::EhtCapabilities,
};

// OUI and type of a vendor element, as far as it has them, as one number.
std::uint64_t vendorKind(const Element& element) {
    ByteCursor cursor(element.body);
    std::uint64_t kind = 1;
    for (int i = 0; i < 4; ++i) {
        if (const auto octet = cursor.u8()) kind = kind << 8 | *octet;
    }
    return kind;
}

// What a profile's elements say on the sender's.
class Inheritance {
  public:
    Inheritance(std::span<const Element> profile, ProfileKind kind) : excluded_(neverOf(kind)) {
        if (kind == ProfileKind::NontransmittedBssid) sendersOnly_ = setOf(kAlwaysTransmitted);
        for (const Element& element : profile) see(element);
        std::ranges::sort(vendorKinds_);
    }

    // Of the profile.
    bool holds(const Element& element) const { return !sendersOnly_[numberOf(element.id)]; }
    // Of the sender.
    bool isInherited(const Element& element) const {
        if (excluded_[numberOf(element.id)]) return false;
        return element.id != ElementId::Vendor ||
               !std::ranges::binary_search(vendorKinds_, vendorKind(element));
    }

  private:
    static ElementSet neverOf(ProfileKind kind) {
        ElementSet never = setOf(kNeverInherited);
        never.set(numberOf(kind == ProfileKind::Link ? ElementId::ReducedNeighborReport
                                                     : ElementId::Ssid));
        return never;
    }

    void see(const Element& element) {
        if (element.id == ElementId::Vendor) {
            vendorKinds_.push_back(vendorKind(element));
        } else if (holds(element)) {
            excluded_.set(numberOf(element.id));
        }
        if (element.id == ElementId::NonInheritance) exclude(NonInheritance::decode(element.body));
    }

    void exclude(const std::optional<NonInheritance>& list) {
        if (!list) return;
        for (const std::uint8_t id : list->ids) excluded_.set(id);
        if (!list->extensionIds) return;
        for (const std::uint8_t id : *list->extensionIds) {
            excluded_.set(numberOf(extensionElement(id)));
        }
    }

    ElementSet excluded_;
    ElementSet sendersOnly_;
    std::vector<std::uint64_t> vendorKinds_;
};

}  // namespace

const Element* BssElements::find(ElementId id) const {
    const auto found = std::ranges::find(elements, id, &Element::id);
    return found == elements.end() ? nullptr : &*found;
}

std::vector<Element> elementsIn(Octets octets) {
    std::vector<Element> elements;
    for (const Element& element : ElementRange(octets)) elements.push_back(element);
    return elements;
}

BssElements withInheritance(std::span<const Element> sender, std::span<const Element> profile,
                            ProfileKind kind) {
    const Inheritance inheritance(profile, kind);
    BssElements bss;
    const std::size_t count = std::min(sender.size(), kMaxInheritedElements);
    bss.elements.reserve(profile.size() + count);
    for (const Element& element : profile) {
        if (inheritance.holds(element)) bss.elements.push_back(element);
    }
    bss.ownCount = bss.elements.size();
    for (std::size_t i = 0; i < count; ++i) {
        if (inheritance.isInherited(sender[i])) bss.elements.push_back(sender[i]);
    }
    return bss;
}

BssElements elementsOfLink(std::span<const Element> sender, const PerStaProfile& link,
                           std::size_t fixedOctets) {
    std::vector<Element> own = elementsIn(link.elements(fixedOctets));
    for (Element& element : own) element.offset += fixedOctets;
    if (link.isComplete()) return withInheritance(sender, own, ProfileKind::Link);
    const std::size_t count = own.size();
    return {std::move(own), count};
}

}  // namespace halvane::air

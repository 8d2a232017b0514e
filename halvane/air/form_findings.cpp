#include <algorithm>
#include <array>
#include <bitset>
#include <cstddef>
#include <cstdint>
#include <iterator>

#include "halvane/air/element_id.h"
#include "halvane/air/element_range.h"
#include "halvane/air/profile_findings_internal.h"
#include "halvane/air/source.h"
#include "halvane/air/whole_element_internal.h"

namespace halvane::air {

namespace {

using Kind = FindingKind;

// The elements that a beacon or probe response may hold more than once (tables 9-32 and 9-39).
constexpr ElementId kRepeated[] = {
    ElementId::Quiet,
    ElementId::ApChannelReport,
    ElementId::NeighborReport,
    ElementId::MultipleBssid,
    ElementId::ChannelUsage,
    ElementId::QuietChannel,
    ElementId::TransmitPowerEnvelope,
    ElementId::ReducedNeighborReport,
    ElementId::Vendor,
    ElementId::Fragment,
    ElementId::ExtensionMissing,
    ElementId::MultiLink,
    ElementId::TidToLinkMapping,
};

constexpr std::size_t kNumbers = 512;

// Whether an element may be repeated, by its number.
constexpr auto kMayRepeat = [] {
    std::array<bool, kNumbers> mayRepeat{};
    for (const ElementId id : kRepeated) mayRepeat[static_cast<std::size_t>(id)] = true;
    return mayRepeat;
}();

// The order of the elements that most beacons have (table 9-32). Those that are not here stand
// between any of them.
constexpr std::array kOrder = {
    ElementId::Ssid,
    ElementId::SupportedRates,
    ElementId::DsParameterSet,
    ElementId::Tim,
    ElementId::Country,
    ElementId::PowerConstraint,
    ElementId::ChannelSwitch,
    ElementId::Quiet,
    ElementId::TpcReport,
    ElementId::Erp,
    ElementId::ExtendedSupportedRates,
    ElementId::Rsn,
    ElementId::BssLoad,
    ElementId::EdcaParameterSet,
    ElementId::RmEnabledCapabilities,
    ElementId::MobilityDomain,
    ElementId::HtCapabilities,
    ElementId::HtOperation,
    ElementId::ExtendedCapabilities,
    ElementId::VhtCapabilities,
    ElementId::VhtOperation,
    ElementId::HeCapabilities,
    ElementId::HeOperation,
};

// These follow the last of kOrder, in any order among themselves.
constexpr std::array kAfterOrder = {
    ElementId::EhtOperation,
    ElementId::MultiLink,
    ElementId::EhtCapabilities,
};

// The place in that order plus 1, by the element's number.
constexpr auto kPlaces = [] {
    std::array<std::uint8_t, kNumbers> places{};
    std::uint8_t place = 0;
    for (const ElementId id : kOrder) places[static_cast<std::size_t>(id)] = ++place;
    ++place;
    for (const ElementId id : kAfterOrder) places[static_cast<std::size_t>(id)] = place;
    places[static_cast<std::size_t>(ElementId::Vendor)] = ++place;
    return places;
}();

// One finding of a kind, however many elements have the fault; the first of them counts.
class FormWalk {
  public:
    FormWalk(const ElementIndex& index, FindingCollector& findings)
        : index_(index), findings_(findings) {}

    void look(const Element& element) {
        const Source source = {Origin::Element, element.id,
                               static_cast<std::uint32_t>(element.offset)};
        if (element.id == ElementId::ExtensionMissing) tellOnce(Kind::ExtensionMissing, source);
        if (element.id == ElementId::Fragment) tellOnce(Kind::FragmentAlone, source);
        if (!isTold(Kind::ElementTooShort) && !index_.isKnownWhole(element) && !isWhole(element)) {
            tellOnce(Kind::ElementTooShort, source);
        }
        lookAtRepetition(element.id, source);
        if (index_.isOwn(element)) lookAtOrder(element.id, source);
    }

  private:
    void lookAtRepetition(ElementId id, const Source& source) {
        const auto number = static_cast<std::size_t>(id);
        if (seen_[number] && !kMayRepeat[number]) tellOnce(Kind::ElementDuplicated, source);
        seen_.set(number);
    }

    void lookAtOrder(ElementId id, const Source& source) {
        const std::uint8_t place = kPlaces[static_cast<std::size_t>(id)];
        if (place == 0) return;
        if (place < lastPlace_) tellOnce(Kind::ElementOrder, source);
        lastPlace_ = std::max(lastPlace_, place);
    }

    bool isTold(Kind kind) const { return told_[static_cast<std::size_t>(kind)]; }

    void tellOnce(Kind kind, const Source& source) {
        if (!isTold(kind)) findings_.add(kind, {source});
        told_.set(static_cast<std::size_t>(kind));
    }

    const ElementIndex& index_;
    FindingCollector& findings_;
    std::bitset<kNumbers> seen_{};
    std::bitset<256> told_{};
    std::uint8_t lastPlace_ = 0;
};

}  // namespace

void findInForm(const ProfileParts& parts, FindingCollector& findings) {
    FormWalk walk(parts.index, findings);
    for (const Element& element : parts.index.elements()) walk.look(element);
    const auto damaged = parts.trailing.id();
    if (!damaged) return findings.addIf(parts.radio.isCut, Kind::FrameCut, {{Origin::Radio}});
    findings.add(Kind::FrameCut,
                 {{Origin::Element, *damaged, static_cast<std::uint32_t>(parts.trailing.offset)}});
}

}  // namespace halvane::air

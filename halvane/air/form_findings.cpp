#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <optional>

#include "halvane/air/element_id.h"
#include "halvane/air/element_info.h"
#include "halvane/air/element_range.h"
#include "halvane/air/profile_findings_internal.h"
#include "halvane/air/source.h"
#include "halvane/base/byte_cursor.h"

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

bool mayRepeat(ElementId id) {
    return std::ranges::find(kRepeated, id) != std::end(kRepeated);
}

// The order of the elements that every beacon has (table 9-32). Those that are not here stand
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
    ElementId::HtCapabilities,
    ElementId::HtOperation,
    ElementId::VhtCapabilities,
    ElementId::VhtOperation,
    ElementId::HeCapabilities,
    ElementId::HeOperation,
};

std::optional<std::size_t> placeInOrder(ElementId id) {
    const auto found = std::ranges::find(kOrder, id);
    if (found == kOrder.end()) return std::nullopt;
    return static_cast<std::size_t>(found - kOrder.begin());
}

// Whether all fields of an element lie within it. An SSID has one field, which may be too long.
bool isWhole(const Element& element) {
    if (element.id == ElementId::Ssid) return true;
    if (element.id == ElementId::Vendor) {
        const auto* const info = vendorElementInfo(element.body);
        if (info == nullptr || info->decoder.isWhole == nullptr) return true;
        return info->decoder.isWhole(ElementIndex::vendorBody(element));
    }
    const auto* const info = elementInfo(element.id);
    return info == nullptr || info->decoder.isWhole == nullptr ||
           info->decoder.isWhole(element.body);
}

// The number of an element that is cut. REQUIRES: there is one.
ElementId idOf(const TrailingOctets& trailing) {
    ByteCursor cursor(trailing.octets);
    const std::uint8_t id = cursor.u8().value_or(0);
    if (id != kExtendedElementId) return static_cast<ElementId>(id);
    cursor.skip(1);  // the length
    const auto extension = cursor.u8();
    return extension ? extensionElement(*extension) : ElementId::ExtensionMissing;
}

// One finding of a kind, however many elements have the fault; the first of them counts.
class FormWalk {
  public:
    explicit FormWalk(FindingCollector& findings) : findings_(findings) {}

    void look(const Element& element) {
        const Source source = {Origin::Element, element.id,
                               static_cast<std::uint16_t>(element.offset)};
        if (element.id == ElementId::ExtensionMissing) tellOnce(Kind::ExtensionMissing, source);
        if (element.id == ElementId::Fragment) tellOnce(Kind::FragmentAlone, source);
        if (!isWhole(element)) tellOnce(Kind::ElementTooShort, source);
        lookAtRepetition(element.id, source);
        lookAtOrder(element.id, source);
    }

  private:
    void lookAtRepetition(ElementId id, const Source& source) {
        bool& isSeen = seen_[static_cast<std::size_t>(id)];
        if (isSeen && !mayRepeat(id)) tellOnce(Kind::ElementDuplicated, source);
        isSeen = true;
    }

    void lookAtOrder(ElementId id, const Source& source) {
        const auto place = placeInOrder(id);
        if (!place) return;
        if (*place < lastPlace_) tellOnce(Kind::ElementOrder, source);
        lastPlace_ = std::max(lastPlace_, *place);
    }

    void tellOnce(Kind kind, const Source& source) {
        bool& isTold = told_[static_cast<std::size_t>(kind)];
        if (!isTold) findings_.add(kind, {source});
        isTold = true;
    }

    FindingCollector& findings_;
    std::array<bool, 512> seen_{};
    std::array<bool, 256> told_{};
    std::size_t lastPlace_ = 0;
};

}  // namespace

void findInForm(const ProfileParts& parts, FindingCollector& findings) {
    FormWalk walk(findings);
    for (const Element& element : parts.index.elements()) walk.look(element);
    if (parts.trailing.empty()) return;
    findings.add(Kind::FrameCut, {{Origin::Element, idOf(parts.trailing),
                                   static_cast<std::uint16_t>(parts.trailing.offset)}});
}

}  // namespace halvane::air

#include <algorithm>
#include <tuple>

#include "halvane/air/element_index_internal.h"
#include "halvane/base/byte_cursor.h"
#include "halvane/base/oui.h"

namespace halvane::air {

namespace {

// OUI and type as one number.
constexpr std::uint32_t vendorNumber(const OUI& oui, std::uint8_t type) {
    return ouiNumber(oui) << 8 | type;
}

// In the order of VendorKind.
constexpr std::array<std::uint32_t, kVendorKindCount> kVendors = {
    vendorNumber(kWPAOUI, 1),  vendorNumber(kWPAOUI, 2),  vendorNumber(kWPAOUI, 4),
    vendorNumber(kWfaOUI, 9),  vendorNumber(kWfaOUI, 16), vendorNumber(kWfaOUI, 18),
    vendorNumber(kWfaOUI, 22), vendorNumber(kWfaOUI, 28), vendorNumber(kWfaOUI, 41),
    vendorNumber(kWfaOUI, 42), vendorNumber(kWfaOUI, 43)};

std::optional<std::size_t> vendorKindOf(Octets body) {
    const auto number = ByteCursor(body).u32be();
    if (!number) return std::nullopt;
    const auto found = std::ranges::find(kVendors, *number);
    if (found == kVendors.end()) return std::nullopt;
    return static_cast<std::size_t>(found - kVendors.begin());
}

}  // namespace

ElementIndex::ElementIndex(std::span<const Element> elements, std::size_t ownCount,
                           std::span<const std::size_t> damagedOffsets)
    : elements_(elements), ownCount_(ownCount), damagedOffsets_(damagedOffsets) {
    Place place = 0;
    for (const Element& element : elements) add(element, ++place);
}

void ElementIndex::add(const Element& element, Place place) {
    Place& first = places_[static_cast<std::size_t>(element.id)];
    if (first == 0) first = place;
    if (element.id != ElementId::Vendor) return;
    const auto kind = vendorKindOf(element.body);
    if (kind && vendors_[*kind] == 0) vendors_[*kind] = place;
}

Octets ElementIndex::vendorBody(const Element& element) {
    ByteCursor cursor(element.body);
    cursor.skip(std::tuple_size_v<OUI> + 1);
    return cursor.rest();
}

}  // namespace halvane::air

#include <algorithm>
#include <tuple>

#include "halvane/air/element_index_internal.h"
#include "halvane/base/byte_cursor.h"
#include "halvane/base/oui.h"

namespace halvane::air {

namespace {

constexpr OUI kWfa = {0x50, 0x6F, 0x9A};

struct VendorRow {
    OUI oui;
    std::uint8_t type;
};

// In the order of VendorKind.
constexpr std::array<VendorRow, kVendorKindCount> kVendors = {{{kWPAOUI, 1},
                                                               {kWPAOUI, 2},
                                                               {kWPAOUI, 4},
                                                               {kWfa, 9},
                                                               {kWfa, 16},
                                                               {kWfa, 18},
                                                               {kWfa, 22},
                                                               {kWfa, 28},
                                                               {kWfa, 41},
                                                               {kWfa, 42},
                                                               {kWfa, 43}}};

std::optional<std::size_t> vendorKindOf(Octets body) {
    ByteCursor cursor(body);
    const auto oui = cursor.take(std::tuple_size_v<OUI>);
    const auto type = cursor.u8();
    if (!type) return std::nullopt;
    for (std::size_t i = 0; i < kVendors.size(); ++i) {
        if (kVendors[i].type == *type && std::ranges::equal(kVendors[i].oui, *oui)) return i;
    }
    return std::nullopt;
}

}  // namespace

ElementIndex::ElementIndex(std::span<const Element> elements) : elements_(elements) {
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

// What the library knows of each element: its name, its clause, and its decoder.
//
// Constant tables; any thread may read them.
#ifndef HALVANE_AIR_ELEMENT_INFO_H
#define HALVANE_AIR_ELEMENT_INFO_H

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "halvane/air/bit_octets.h"
#include "halvane/air/element_decoder.h"
#include "halvane/air/element_id.h"
#include "halvane/air/element_range.h"
#include "halvane/base/export.h"
#include "halvane/base/oui.h"

namespace halvane::air {

struct ElementInfo {
    ElementId id;              // of the element
    std::string_view name;     // as in table 9-92
    std::string_view clause;   // of IEEE 802.11-2020, or with its amendment: "802.11be 9.4.2.311"
    ElementDecoder decoder{};  // its functions are null for an element that is not decoded
};

// An element of the ID 221 by its OUI and the octet after it.
struct VendorElementInfo {
    OUI oui;                           // of the vendor
    std::optional<std::uint8_t> type;  // absent: every type of the vendor
    std::string_view name;             // as the source has it
    std::string_view source;           // the document that defines it, or how it is known
    ElementDecoder decoder{};          // takes the body after OUI and type
};

// All rows, in the order of their numbers.
HALVANE_EXPORT std::span<const ElementInfo> elementInfos();
// The same for vendor elements, by OUI and type.
HALVANE_EXPORT std::span<const VendorElementInfo> vendorElementInfos();

// Null for a number that the standard reserves.
HALVANE_EXPORT const ElementInfo* elementInfo(ElementId id);

// The row of the type, otherwise the vendor's own; null for an unknown vendor. `body` is that of a
// vendor element.
HALVANE_EXPORT const VendorElementInfo* vendorElementInfo(Octets body);

// "RSN" or "Wi-Fi Protected Setup"; empty for an element that is not known.
HALVANE_EXPORT std::string_view knownElementName(const Element& element);
// The same, or "Reserved (255/200)".
HALVANE_EXPORT std::string elementName(const Element& element);

}  // namespace halvane::air

#endif

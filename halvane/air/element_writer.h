// Writes whole elements: the header, the extension and the fragments (IEEE 802.11-2020, 9.4.2.1 and
// 10.28.11).
//
//     std::vector<std::uint8_t> octets;
//     appendElement(octets, Rsn::kId, rsn.encode());
//
// ElementRange gives the same body back. Free functions without state; any thread may call them.
#ifndef HALVANE_AIR_ELEMENT_WRITER_H
#define HALVANE_AIR_ELEMENT_WRITER_H

#include <cstdint>
#include <vector>

#include "halvane/air/bit_octets.h"
#include "halvane/air/element_id.h"
#include "halvane/base/export.h"
#include "halvane/base/oui.h"

namespace halvane::air {

// Appends the element `id` with `body`, which follows the extension if `id` has one. What exceeds
// 255 octets goes on in Fragment elements. Whether a receiver expects the element to be fragmented
// is up to the caller: few elements may be (table 9-92).
// REQUIRES: `body` is no part of `octets`, and is empty for ElementId::ExtensionMissing.
HALVANE_EXPORT void appendElement(std::vector<std::uint8_t>& octets, ElementId id, Octets body);

// The same for a vendor element, whose body begins with OUI and type.
HALVANE_EXPORT void appendVendorElement(std::vector<std::uint8_t>& octets, const OUI& oui,
                                        std::uint8_t type, Octets body);

}  // namespace halvane::air

#endif

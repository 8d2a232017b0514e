// Elements as JSON.
#ifndef TOOLS_HALVANE_OUTPUT_ELEMENT_JSON_H
#define TOOLS_HALVANE_OUTPUT_ELEMENT_JSON_H

#include <cstddef>
#include <optional>

#include "halvane/air/element_range.h"

#include "tools/halvane/output/damage_report.h"
#include "tools/halvane/output/element_list.h"
#include "tools/halvane/output/element_properties.h"
#include "tools/halvane/output/json_writer.h"

namespace halvane::tool {

// Writes an array of all elements: "id", "extension", "name", "offset" and "bytes", the octets of
// the body. Octets that make no element end it as an item that has "offset" and "bytes" alone.
//
// Returns where the digits of the body of the element at the offset `sought` start in the writer's
// text. Absent if no element starts there.
std::optional<std::size_t> writeElements(JSONWriter& writer, air::ElementRange elements,
                                         std::optional<std::size_t> sought = std::nullopt);

// The same as a value of a table.
void writeValue(JSONWriter& writer, const ListedElements& elements);

// Writes one object of octets of a list that make no element: "offset" and "bytes".
void writeTrailing(JSONWriter& writer, const ElementList& list,
                   const air::TrailingOctets& trailing);

// Writes one object: "bssid" if the list has one, the same members, "clause" where it is known,
// "fields", an array of objects that have "name", "offset" in the body, "size" in octets, "bit" and
// "bits" of a part of them, and "value", or "fields" of their own; and "damage", the octet of the
// body at which a field does not fit. A field that holds elements has "elements" too, an array of
// such objects, whose offsets are those in the buffer. `report` notes damage.
void writeElement(JSONWriter& writer, const ElementList& list, const air::Element& element,
                  DamageReport& report);

}  // namespace halvane::tool

#endif

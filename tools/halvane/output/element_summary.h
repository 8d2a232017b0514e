// What an element says, in a line, where its fields one by one would be too many.
//
// Plain values and free functions without state; any thread may call them.
#ifndef TOOLS_HALVANE_OUTPUT_ELEMENT_SUMMARY_H
#define TOOLS_HALVANE_OUTPUT_ELEMENT_SUMMARY_H

#include <optional>
#include <string>
#include <vector>

#include "halvane/air/element_range.h"

#include "tools/halvane/output/element_list.h"
#include "tools/halvane/output/shown_text.h"

namespace halvane::tool {

struct ElementSummary {
    std::string text{};                // safe to show; empty: the lines say all
    std::vector<std::string> lines{};  // that follow, each a field
};

// Absent for an element that has none, that is damaged, and that holds more than its fields.
std::optional<ElementSummary> elementSummary(const ElementList& list, const air::Element& element,
                                             const TextRules& rules);

// What people call the element: "Supported Rates", "Vendor 00-50-F2:1, WPA".
std::string elementHeading(const air::Element& element);

}  // namespace halvane::tool

#endif

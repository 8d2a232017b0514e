// Elements for people: a line with octet, number, length and name, and what the fields say.
#ifndef TOOLS_HALVANE_OUTPUT_ELEMENT_TEXT_H
#define TOOLS_HALVANE_OUTPUT_ELEMENT_TEXT_H

#include <cstddef>
#include <string>

#include "halvane/air/element_range.h"

#include "tools/halvane/output/damage_report.h"
#include "tools/halvane/output/element_list.h"
#include "tools/halvane/output/shown_text.h"
#include "tools/halvane/output/text_style.h"

namespace halvane::tool {

// "1 octet" or "2 octets".
std::string octetCount(std::size_t count);

// What the lines of an element depend on.
struct ElementWish {
    bool hasOctets =
        false;  // the octets of elements whose fields are known; others always show them
    bool hasFields = false;  // all fields and the clause, in place of what they say together
    std::size_t width = TextStyle::kUsualWidth;  // of a line, where a word has room
    TextRules rules{};
};

// The line of titles.
std::string elementTitles();

// The lines of an element of a list: octet, number, length, name, and what it says. The elements
// that its fields hold stand below it, indented, each with its octet in the buffer. Damage is a
// line that begins with 'x' and names the octet, with the element's octets and a caret below it;
// `report` notes it.
std::string elementText(const ElementList& list, const air::Element& element,
                        const ElementWish& wish, DamageReport& report);

// A line for each element: octet, name and the body's octets.
std::string elementNames(air::ElementRange elements);

// The lines of the octets of a list that make no element. REQUIRES: there are some.
std::string trailingText(const ElementList& list, const air::TrailingOctets& trailing,
                         const ElementWish& wish);

// What is wrong there, as a message.
std::string trailingProblem(const ElementList& list, const air::TrailingOctets& trailing);

// What is wrong with an element whose damage begins at this octet of the buffer, as a message.
std::string elementProblem(std::size_t octet, const air::Element& element);

}  // namespace halvane::tool

#endif

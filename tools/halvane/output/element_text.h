// Elements for people: a line with octet, number, length and name, and what the fields say.
#ifndef TOOLS_HALVANE_OUTPUT_ELEMENT_TEXT_H
#define TOOLS_HALVANE_OUTPUT_ELEMENT_TEXT_H

#include <cstddef>
#include <string>

#include "halvane/air/element_range.h"

namespace halvane::tool {

// "1 octet" or "2 octets".
std::string octetCount(std::size_t count);

// The line of titles.
std::string elementTitles();

// The lines of an element. A damaged one ends with a line that begins with 'x' and names the octet.
// `hasOctets` adds the octets of an element whose fields are known; others always show them.
std::string elementText(const air::Element& element, bool hasOctets);

// A line for each element: octet, name and the body's octets.
std::string elementNames(air::ElementRange elements);

// The lines of the octets that make no element. REQUIRES: there are some.
std::string trailingText(const air::TrailingOctets& trailing);

// What is wrong there, as a message.
std::string trailingProblem(const air::TrailingOctets& trailing);

}  // namespace halvane::tool

#endif

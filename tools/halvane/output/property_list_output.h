// Property lists as commands print them.
#ifndef TOOLS_HALVANE_OUTPUT_PROPERTY_LIST_OUTPUT_H
#define TOOLS_HALVANE_OUTPUT_PROPERTY_LIST_OUTPUT_H

#include <cstdio>
#include <optional>
#include <string>

#include "halvane/base/property_list_value.h"

namespace halvane::tool {

// Returns the value as XML. A value without an XML form counts as lost output, and its reason is
// noted.
std::optional<std::string> propertyListText(const PropertyListValue& value);

// Prints propertyListText().
void putPropertyList(const PropertyListValue& value, std::FILE* stream = stdout);

// "U+0001"
std::string codePointName(char32_t character);

}  // namespace halvane::tool

#endif

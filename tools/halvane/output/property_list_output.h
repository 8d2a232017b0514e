// Property lists as commands print them.
#ifndef TOOLS_HALVANE_OUTPUT_PROPERTY_LIST_OUTPUT_H
#define TOOLS_HALVANE_OUTPUT_PROPERTY_LIST_OUTPUT_H

#include <cstdio>
#include <optional>
#include <string>

#include "halvane/base/property_list_value.h"

namespace halvane::tool {

// The value as XML. One that has no XML form is lost output, whose reason is noted.
std::optional<std::string> propertyListText(const PropertyListValue& value);

// Puts propertyListText().
void putPropertyList(const PropertyListValue& value, std::FILE* stream = stdout);

// "U+0001"
std::string codePointName(char32_t character);

}  // namespace halvane::tool

#endif

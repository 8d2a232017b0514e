// What the properties mean, in one sentence each, for schemas and documents.
//
// A constant table; any thread may read it.
#ifndef TOOLS_HALVANE_OUTPUT_PROPERTY_MEANINGS_H
#define TOOLS_HALVANE_OUTPUT_PROPERTY_MEANINGS_H

#include <span>
#include <string_view>

namespace halvane::tool {

struct PropertyMeaning {
    std::string_view table;  // the name of the property's table; empty: any
    std::string_view key;
    std::string_view sentence;
    std::string_view unit{};  // "MHz"; empty for a value without one
};

// All of them. A row of any table is for keys that mean the same everywhere.
std::span<const PropertyMeaning> propertyMeanings();

// The row of the table itself, else that of any table; null if there is neither.
const PropertyMeaning* meaningOf(std::string_view table, std::string_view key);

}  // namespace halvane::tool

#endif

// The regulatory records as JSON.
//
// Keys are the records' property names, and stay as they are: programs read them. Absent names are
// left out, lists and flags never.
#ifndef TOOLS_HALVANE_OUTPUT_REGULATORY_JSON_H
#define TOOLS_HALVANE_OUTPUT_REGULATORY_JSON_H

#include "halvane/regulatory/channel.h"
#include "halvane/regulatory/country.h"
#include "halvane/regulatory/sku.h"

#include "tools/halvane/output/json_value.h"

namespace halvane::tool {

JSON jsonOf(const HalvaneChannel& channel);

// With its channels.
JSON jsonOf(const HalvaneCountry& country);

// With its countries and their channels.
JSON jsonOf(const HalvaneSKU& sku);

}  // namespace halvane::tool

#endif

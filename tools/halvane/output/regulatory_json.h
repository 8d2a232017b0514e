// The regulatory records as JSON. Absent names are left out, but lists and flags never are.
#ifndef TOOLS_HALVANE_OUTPUT_REGULATORY_JSON_H
#define TOOLS_HALVANE_OUTPUT_REGULATORY_JSON_H

#include "halvane/regulatory/channel.h"
#include "halvane/regulatory/country.h"
#include "halvane/regulatory/sku.h"

#include "tools/halvane/output/json_writer.h"

namespace halvane::tool {

void writeJSON(JSONWriter& writer, const HalvaneChannel& channel);

// Includes the channels of the country.
void writeJSON(JSONWriter& writer, const HalvaneCountry& country);

// Includes the countries of the SKU and their channels.
void writeJSON(JSONWriter& writer, const HalvaneSKU& sku);

}  // namespace halvane::tool

#endif

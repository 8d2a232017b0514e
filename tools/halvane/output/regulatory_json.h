// The regulatory records as JSON. Absent names are left out, lists and flags never.
#ifndef TOOLS_HALVANE_OUTPUT_REGULATORY_JSON_H
#define TOOLS_HALVANE_OUTPUT_REGULATORY_JSON_H

#include "halvane/regulatory/channel.h"
#include "halvane/regulatory/country.h"
#include "halvane/regulatory/sku.h"

#include "tools/halvane/output/json_writer.h"

namespace halvane::tool {

void writeJSON(JSONWriter& writer, const HalvaneChannel& channel);

// With its channels.
void writeJSON(JSONWriter& writer, const HalvaneCountry& country);

// With its countries and their channels.
void writeJSON(JSONWriter& writer, const HalvaneSKU& sku);

}  // namespace halvane::tool

#endif

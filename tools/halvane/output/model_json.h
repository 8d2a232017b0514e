// What the Wi-Fi daemon reports, as JSON. Absent values are left out, and so is an empty address.
#ifndef TOOLS_HALVANE_OUTPUT_MODEL_JSON_H
#define TOOLS_HALVANE_OUTPUT_MODEL_JSON_H

#include "halvane/model/client.h"
#include "halvane/model/device.h"
#include "halvane/model/interface.h"

#include "tools/halvane/output/json_writer.h"

namespace halvane::tool {

void writeJSON(JSONWriter& writer, const HalvaneDevice& device);

// With its device and its channels.
void writeJSON(JSONWriter& writer, const HalvaneInterface& interface);

// The members of its BSS record, then those that a client adds.
void writeJSON(JSONWriter& writer, const HalvaneClient& client);

}  // namespace halvane::tool

#endif

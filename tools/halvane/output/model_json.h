// Records of the Wi-Fi daemon as JSON. Absent values and empty addresses are left out.
#ifndef TOOLS_HALVANE_OUTPUT_MODEL_JSON_H
#define TOOLS_HALVANE_OUTPUT_MODEL_JSON_H

#include "halvane/model/client.h"
#include "halvane/model/device.h"
#include "halvane/model/interface.h"

#include "tools/halvane/output/json_writer.h"

namespace halvane::tool {

void writeJSON(JSONWriter& writer, const HalvaneDevice& device);

// Includes the device and the channels of the interface.
void writeJSON(JSONWriter& writer, const HalvaneInterface& interface);

// Writes the members of the BSS record, then those that a client adds.
void writeJSON(JSONWriter& writer, const HalvaneClient& client);

}  // namespace halvane::tool

#endif

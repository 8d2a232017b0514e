// What the Wi-Fi daemon reports, as JSON.
//
// Keys are the records' property names, and stay as they are: programs read them. Absent values are
// left out, and so is an empty address.
#ifndef TOOLS_HALVANE_OUTPUT_MODEL_JSON_H
#define TOOLS_HALVANE_OUTPUT_MODEL_JSON_H

#include "halvane/model/client.h"
#include "halvane/model/device.h"
#include "halvane/model/interface.h"

#include "tools/halvane/output/json_value.h"

namespace halvane::tool {

JSON jsonOf(const HalvaneDevice& device);

// With its device and its channels.
JSON jsonOf(const HalvaneInterface& interface);

// The members of a BSS record (appendRecord()), then those that a client adds.
JSON jsonOf(const HalvaneClient& client);

}  // namespace halvane::tool

#endif

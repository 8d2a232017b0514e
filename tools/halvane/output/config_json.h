// BSS configurations as JSON.
#ifndef TOOLS_HALVANE_OUTPUT_CONFIG_JSON_H
#define TOOLS_HALVANE_OUTPUT_CONFIG_JSON_H

#include "halvane/model/bss_config.h"

#include "tools/halvane/output/json_writer.h"

namespace halvane::tool {

// Keys are the names of the properties. Absent properties are left out.
void writeJSON(JSONWriter& writer, const HalvaneBSSConfig& configuration);

}  // namespace halvane::tool

#endif

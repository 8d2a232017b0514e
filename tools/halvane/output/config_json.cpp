#include "tools/halvane/output/config_json.h"

#include "tools/halvane/output/config_properties.h"
#include "tools/halvane/output/json_record.h"

namespace halvane::tool {

void writeJSON(JSONWriter& writer, const HalvaneBSSConfig& configuration) {
    writeObject(writer, configuration);
}

}  // namespace halvane::tool

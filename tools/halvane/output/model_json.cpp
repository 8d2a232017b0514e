#include "tools/halvane/output/model_json.h"

#include "tools/halvane/output/json_record.h"
#include "tools/halvane/output/model_properties.h"

namespace halvane::tool {

void writeJSON(JSONWriter& writer, const HalvaneDevice& device) {
    writeObject(writer, device);
}

void writeJSON(JSONWriter& writer, const HalvaneInterface& interface) {
    writeObject(writer, interface);
}

void writeJSON(JSONWriter& writer, const HalvaneClient& client) {
    writeObject(writer, client);
}

}  // namespace halvane::tool

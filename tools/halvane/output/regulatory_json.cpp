#include "tools/halvane/output/regulatory_json.h"

#include "tools/halvane/output/json_record.h"
#include "tools/halvane/output/regulatory_properties.h"

namespace halvane::tool {

void writeJSON(JSONWriter& writer, const HalvaneChannel& channel) {
    writeObject(writer, channel);
}

void writeJSON(JSONWriter& writer, const HalvaneCountry& country) {
    writeObject(writer, country);
}

void writeJSON(JSONWriter& writer, const HalvaneSKU& sku) {
    writeObject(writer, sku);
}

}  // namespace halvane::tool

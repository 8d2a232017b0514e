#include "tools/halvane/output/record_json.h"

#include "halvane/air/bss_profile.h"
#include "halvane/air/element_range.h"

#include "tools/halvane/output/air_properties.h"
#include "tools/halvane/output/element_json.h"
#include "tools/halvane/output/frame_properties.h"
#include "tools/halvane/output/json_record.h"
#include "tools/halvane/output/record_properties.h"
#include "tools/halvane/survey/air_profile.h"

namespace halvane::tool {

namespace {

// Writes "air", "elements" and "findings"; nothing for a record without elements.
void writeAir(JSONWriter& writer, const capture::Sighting& sighting) {
    const auto& elements = sighting.record.ieBuffer();
    if (!elements) return;
    const air::BssProfile profile = airProfileOf(sighting);
    writer.key("air");
    writeObject(writer, profile);
    writer.key("elements");
    writeElements(writer, air::ElementRange(elements->bytes()));
    writer.key("findings");
    writeValue(writer, profile.findings);
}

}  // namespace

void writeJSON(JSONWriter& writer, const capture::Sighting& sighting,
               const std::optional<FrameOrigin>& origin, const NetworkStatistics* heard) {
    writer.beginObject();
    if (origin) writeMembers(writer, *origin);
    writeMembers(writer, sighting);
    writeMembers(writer, sighting.record);
    writeAir(writer, sighting);
    if (origin) writeMembers(writer, FrameTime{*origin});
    if (heard != nullptr) writeMembers(writer, *heard);
    writer.endObject();
}

}  // namespace halvane::tool

#include "tools/halvane/output/record_json.h"

#include "tools/halvane/output/frame_properties.h"
#include "tools/halvane/output/json_record.h"
#include "tools/halvane/output/record_properties.h"

namespace halvane::tool {

void writeJSON(JSONWriter& writer, const capture::Sighting& sighting,
               const std::optional<FrameOrigin>& origin) {
    writer.beginObject();
    if (origin) writeMembers(writer, *origin);
    writeMembers(writer, sighting);
    writeMembers(writer, sighting.record);
    writer.endObject();
}

}  // namespace halvane::tool

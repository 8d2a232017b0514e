// Sightings of BSSs as JSON.
#ifndef TOOLS_HALVANE_OUTPUT_RECORD_JSON_H
#define TOOLS_HALVANE_OUTPUT_RECORD_JSON_H

#include <optional>

#include "halvane/capture/frame_record.h"

#include "tools/halvane/output/frame_origin.h"
#include "tools/halvane/output/json_writer.h"

namespace halvane::tool {

// Writes one object: "frame" and "subtype" if the origin is known, "radioChannel" if it differs
// from the record's channel, and the record's members.
void writeJSON(JSONWriter& writer, const capture::Sighting& sighting,
               const std::optional<FrameOrigin>& origin);

}  // namespace halvane::tool

#endif

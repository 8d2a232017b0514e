// Sightings of BSSs as JSON.
#ifndef TOOLS_HALVANE_OUTPUT_RECORD_JSON_H
#define TOOLS_HALVANE_OUTPUT_RECORD_JSON_H

#include <optional>

#include "halvane/capture/frame_record.h"

#include "tools/halvane/output/frame_origin.h"
#include "tools/halvane/output/json_writer.h"
#include "tools/halvane/survey/network_statistics.h"

namespace halvane::tool {

// Writes one object: "frame" and "subtype" if the origin is known, "radioChannel" if it differs
// from the record's channel, the record's members, and at the end the frame's time or how the
// network was heard; null if that is not known.
void writeJSON(JSONWriter& writer, const capture::Sighting& sighting,
               const std::optional<FrameOrigin>& origin, const NetworkStatistics* heard = nullptr);

}  // namespace halvane::tool

#endif

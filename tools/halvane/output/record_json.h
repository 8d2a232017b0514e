// Sightings of BSSs as JSON.
#ifndef TOOLS_HALVANE_OUTPUT_RECORD_JSON_H
#define TOOLS_HALVANE_OUTPUT_RECORD_JSON_H

#include <optional>

#include "halvane/capture/frame_record.h"
#include "halvane/ie/mac.h"

#include "tools/halvane/output/frame_origin.h"
#include "tools/halvane/output/json_writer.h"
#include "tools/halvane/output/maker_lookup.h"
#include "tools/halvane/survey/network_moment.h"
#include "tools/halvane/survey/network_statistics.h"

namespace halvane::tool {

// Writes one object: "frame" and "subtype" if the origin is known, "radioChannel" if it differs
// from the record's channel, the record's members, the frame's time or how the network was heard
// (null if that is not known), and at the end the texts of octets and the maker of the address.
void writeJSON(JSONWriter& writer, const capture::Sighting& sighting,
               const std::optional<FrameOrigin>& origin, const NetworkStatistics* heard = nullptr,
               const MakerOf& makerOf = {});

// The same for a network of the kernel's list: its age and whether it is in use in the place of how
// it was heard.
void writeJSON(JSONWriter& writer, const capture::Sighting& sighting, const NetworkMoment& moment,
               const MakerOf& makerOf = {});

// Writes the last members of both into an open object: the texts of octets and the maker.
void writeTexts(JSONWriter& writer, const HalvaneMAC& record, const MakerOf& makerOf);

}  // namespace halvane::tool

#endif

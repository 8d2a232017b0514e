// A record as a line of JSON, as `decode --per-frame --format=jsonl` begins it.
#ifndef BENCH_BEACON_LINE_H
#define BENCH_BEACON_LINE_H

#include "halvane/capture/frame_record.h"

#include "tools/halvane/output/frame_origin.h"
#include "tools/halvane/output/frame_properties.h"
#include "tools/halvane/output/json_record.h"
#include "tools/halvane/output/json_writer.h"
#include "tools/halvane/output/record_properties.h"

namespace bench {

inline constexpr halvane::tool::FrameOrigin kBeaconOrigin{1};

// Writes the object alone, into a writer that it clears.
inline void writeBeaconLine(halvane::tool::JSONWriter& writer,
                            const halvane::capture::Sighting& sighting) {
    writer.clear();
    writer.beginObject();
    writeMembers(writer, kBeaconOrigin);
    writeMembers(writer, sighting);
    writeMembers(writer, sighting.record);
    writer.endObject();
}

}  // namespace bench

#endif

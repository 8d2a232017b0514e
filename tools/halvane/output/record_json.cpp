#include "tools/halvane/output/record_json.h"

#include "halvane/air/bss_profile.h"
#include "halvane/air/element_range.h"
#include "halvane/base/byte_buffer.h"
#include "halvane/base/mac_address.h"
#include "halvane/ie/mac.h"

#include "tools/halvane/output/element_json.h"
#include "tools/halvane/output/element_properties.h"
#include "tools/halvane/output/frame_properties.h"
#include "tools/halvane/output/json_record.h"
#include "tools/halvane/output/record_properties.h"
#include "tools/halvane/survey/air_profile.h"

namespace halvane::tool {

namespace {

// Writes the sections of what the elements say; nothing for a record without elements.
void writeAir(JSONWriter& writer, const capture::Sighting& sighting) {
    const auto& elements = sighting.record.ieBuffer();
    if (!elements) return;
    const air::BssProfile profile = airProfileOf(sighting);
    writeMembers(writer, RecordAir{profile, air::ElementRange(elements->bytes())});
}

RecordMaker makerIn(const HalvaneMAC& record, const MakerOf& makerOf) {
    const auto address = MacAddress::fromBytes(record.mac().bytes());
    if (!makerOf || !address) return {};
    return {makerOf(*address)};
}

void writeSighting(JSONWriter& writer, const capture::Sighting& sighting) {
    writeMembers(writer, sighting);
    writeMembers(writer, sighting.record);
    writeAir(writer, sighting);
}

}  // namespace

void writeJSON(JSONWriter& writer, const capture::Sighting& sighting,
               const std::optional<FrameOrigin>& origin, const NetworkStatistics* heard,
               const MakerOf& makerOf) {
    writer.beginObject();
    if (origin) writeMembers(writer, *origin);
    writeSighting(writer, sighting);
    if (origin) writeMembers(writer, FrameTime{*origin});
    if (heard != nullptr) writeMembers(writer, *heard);
    writeTexts(writer, sighting.record, makerOf);
    writer.endObject();
}

void writeJSON(JSONWriter& writer, const capture::Sighting& sighting, const NetworkMoment& moment,
               const MakerOf& makerOf) {
    writer.beginObject();
    writeSighting(writer, sighting);
    writeMembers(writer, moment);
    writeTexts(writer, sighting.record, makerOf);
    writer.endObject();
}

void writeTexts(JSONWriter& writer, const HalvaneMAC& record, const MakerOf& makerOf) {
    writeMembers(writer, RecordTexts{record});
    writeMembers(writer, makerIn(record, makerOf));
}

}  // namespace halvane::tool

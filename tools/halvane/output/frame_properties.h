// The properties of single frames. They precede the properties of the record.
//
// Keys are stable, because programs read them.
#ifndef TOOLS_HALVANE_OUTPUT_FRAME_PROPERTIES_H
#define TOOLS_HALVANE_OUTPUT_FRAME_PROPERTIES_H

#include <tuple>

#include "halvane/capture/frame_record.h"

#include "tools/halvane/output/frame_origin.h"
#include "tools/halvane/output/property_table.h"

namespace halvane::tool {

template <>
inline constexpr auto kProperties<FrameOrigin> = std::tuple{
    Property{"frame", [](const FrameOrigin& origin) { return origin.number; }},
    Property{"subtype", [](const FrameOrigin& origin) { return subtypeName(origin.subtype); }},
};

// The properties of the sighting alone. Its record has its own table.
template <>
inline constexpr auto kProperties<capture::Sighting> = std::tuple{
    Property{"radioChannel",
             [](const capture::Sighting& sighting) { return sighting.otherRadioChannel(); }},
};

}  // namespace halvane::tool

#endif

// The profile of a sighted BSS.
#ifndef TOOLS_HALVANE_SURVEY_AIR_PROFILE_H
#define TOOLS_HALVANE_SURVEY_AIR_PROFILE_H

#include "halvane/air/bss_profile.h"
#include "halvane/air/profile.h"
#include "halvane/capture/frame_record.h"

namespace halvane::tool {

// Of the record's elements; of none if the record has none.
air::BssProfile airProfileOf(const capture::Sighting& sighting);

}  // namespace halvane::tool

#endif

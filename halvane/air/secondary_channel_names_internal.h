// The words for the place of the secondary channel.
#ifndef HALVANE_AIR_SECONDARY_CHANNEL_NAMES_INTERNAL_H
#define HALVANE_AIR_SECONDARY_CHANNEL_NAMES_INTERNAL_H

#include "halvane/air/field_sink.h"

namespace halvane::air {

inline constexpr ValueName kSecondaryChannelNames[] = {
    {0, "no secondary channel"}, {1, "above the primary"}, {3, "below the primary"}};

}  // namespace halvane::air

#endif

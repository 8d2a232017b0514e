// The layout of Wide Bandwidth Channel Switch, which Channel Switch Wrapper holds too.
#ifndef HALVANE_AIR_WIDE_BANDWIDTH_CHANNEL_SWITCH_LAYOUT_INTERNAL_H
#define HALVANE_AIR_WIDE_BANDWIDTH_CHANNEL_SWITCH_LAYOUT_INTERNAL_H

#include "halvane/air/vht_operation_layout_internal.h"

namespace halvane::air {

inline constexpr auto kWideBandwidthChannelSwitchLayout = [](auto& codec, auto& element) {
    kVhtOperationInformationLayout(codec, element.channel);
    codec.rest(element.rest);
};

}  // namespace halvane::air

#endif

#include "halvane/air/wide_bandwidth_channel_switch.h"

#include "halvane/air/element_codec_internal.h"
#include "halvane/air/wide_bandwidth_channel_switch_layout_internal.h"

namespace halvane::air {

namespace {}  // namespace

HALVANE_AIR_DEFINE_ELEMENT(WideBandwidthChannelSwitch, kWideBandwidthChannelSwitchLayout)

}  // namespace halvane::air

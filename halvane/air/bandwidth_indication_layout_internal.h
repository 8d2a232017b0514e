// The layout of Bandwidth Indication, which Channel Switch Wrapper holds too.
#ifndef HALVANE_AIR_BANDWIDTH_INDICATION_LAYOUT_INTERNAL_H
#define HALVANE_AIR_BANDWIDTH_INDICATION_LAYOUT_INTERNAL_H

#include "halvane/air/eht_channel_layout_internal.h"
#include "halvane/air/element_codec_internal.h"

namespace halvane::air {

inline constexpr BitField kBandwidthIndicationParameters[] = {
    {0, 1, "Reserved"},
    {1, 1, "Disabled Subchannel Bitmap Present"},
    {2, 6, "Reserved"},
};

inline constexpr auto kBandwidthIndicationLayout = [](auto& codec, auto& element) {
    codec.group("Bandwidth Indication Parameters",
                [&] { codec.bits(element.parameters, kBandwidthIndicationParameters); });
    codec.group("Bandwidth Indication Information",
                [&] { kEhtChannelLayout(codec, element.channel, element.parameters.bit(1)); });
    codec.rest(element.rest);
};

}  // namespace halvane::air

#endif

// The channel of a BSS of Wi-Fi 7: the octets that EHT Operation and Bandwidth Indication share.
#ifndef HALVANE_AIR_EHT_CHANNEL_LAYOUT_INTERNAL_H
#define HALVANE_AIR_EHT_CHANNEL_LAYOUT_INTERNAL_H

#include "halvane/air/element_codec_internal.h"
#include "halvane/air/field_sink.h"

namespace halvane::air {

inline constexpr ValueName kEhtWidthNames[] = {
    {0, "20 MHz"}, {1, "40 MHz"}, {2, "80 MHz"}, {3, "160 MHz"}, {4, "320 MHz"}};

inline constexpr BitField kEhtControl[] = {
    {0, 3, "Channel Width", {.names = kEhtWidthNames}},
    {3, 5, "Reserved"},
};

// Bit 0 is the lowest 20 MHz.
inline constexpr BitField kDisabledSubchannels[] = {{0, 16, "Disabled Subchannel Bitmap"}};

inline constexpr auto kEhtChannelLayout = [](auto& codec, auto& channel, bool hasBitmap) {
    codec.bits(channel.control, kEhtControl);
    codec.number("CCFS0", channel.centerSegment0);
    codec.number("CCFS1", channel.centerSegment1);
    codec.when(hasBitmap, channel.disabledSubchannels,
               [&](auto& bitmap) { codec.bits(bitmap, kDisabledSubchannels); });
};

}  // namespace halvane::air

#endif

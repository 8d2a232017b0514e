// The three octets that VHT Operation and HE Operation share.
#ifndef HALVANE_AIR_VHT_OPERATION_LAYOUT_INTERNAL_H
#define HALVANE_AIR_VHT_OPERATION_LAYOUT_INTERNAL_H

#include "halvane/air/element_codec_internal.h"
#include "halvane/air/field_sink.h"

namespace halvane::air {

inline constexpr ValueName kVhtWidthNames[] = {{0, "20 or 40 MHz"},
                                               {1, "80, 160 or 80+80 MHz"},
                                               {2, "160 MHz (deprecated)"},
                                               {3, "80+80 MHz (deprecated)"}};

inline constexpr auto kVhtOperationInformationLayout = [](auto& codec, auto& information) {
    codec.number("Channel Width", information.channelWidth, {.names = kVhtWidthNames});
    codec.number("Channel Center Frequency Segment 0", information.centerSegment0);
    codec.number("Channel Center Frequency Segment 1", information.centerSegment1);
};

}  // namespace halvane::air

#endif

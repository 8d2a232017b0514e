// The names of the fields of an HT MCS set (IEEE 802.11-2020, 9.4.2.55.4).
#ifndef HALVANE_AIR_HT_MCS_SET_INTERNAL_H
#define HALVANE_AIR_HT_MCS_SET_INTERNAL_H

#include "halvane/air/element_codec_internal.h"
#include "halvane/air/field_sink.h"

namespace halvane::air {

inline constexpr ValueName kHtStreamCounts[] = {{0, "1"}, {1, "2"}, {2, "3"}, {3, "4"}};

inline constexpr BitField kHtMcsFields[] = {
    {0, 8, "Rx MCS 0-7 (1 stream)"},
    {8, 8, "Rx MCS 8-15 (2 streams)"},
    {16, 8, "Rx MCS 16-23 (3 streams)"},
    {24, 8, "Rx MCS 24-31 (4 streams)"},
    {32, 1, "Rx MCS 32 (40 MHz duplicate)"},
    {33, 6, "Rx MCS 33-38 (2 streams, unequal modulation)"},
    {39, 14, "Rx MCS 39-52 (3 streams, unequal modulation)"},
    {53, 24, "Rx MCS 53-76 (4 streams, unequal modulation)"},
    {77, 3, "Reserved"},
    {80, 10, "Rx Highest Supported Data Rate", {.unit = "Mb/s"}},
    {90, 6, "Reserved"},
    {96, 1, "Tx MCS Set Defined"},
    {97, 1, "Tx Rx MCS Set Not Equal"},
    {98, 2, "Tx Maximum Number Spatial Streams Supported", {.names = kHtStreamCounts}},
    {100, 1, "Tx Unequal Modulation Supported"},
    {101, 27, "Reserved"},
};

}  // namespace halvane::air

#endif

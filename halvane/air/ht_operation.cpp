#include "halvane/air/ht_operation.h"

#include "halvane/air/element_codec_internal.h"
#include "halvane/air/ht_mcs_set_internal.h"
#include "halvane/air/secondary_channel_names_internal.h"

namespace halvane::air {

namespace {

constexpr ValueName kWidths[] = {{0, "20 MHz"}, {1, "any width that stations support"}};
constexpr ValueName kProtections[] = {
    {0, "no protection"}, {1, "nonmember"}, {2, "20 MHz"}, {3, "non-HT mixed"}};

// 9.4.2.56. The obsolete bits have a meaning in older editions.
constexpr BitField kInformation[] = {
    {0, 2, "Secondary Channel Offset", {.names = kSecondaryChannelNames}},
    {2, 1, "STA Channel Width", {.names = kWidths}},
    {3, 1, "RIFS Mode"},
    {4, 4, "Reserved"},
    {8, 2, "HT Protection", {.names = kProtections}},
    {10, 1, "Nongreenfield HT STAs Present"},
    {11, 1, "Reserved"},
    {12, 1, "OBSS Non-HT STAs Present"},
    {13, 8, "Channel Center Frequency Segment 2"},
    {21, 9, "Reserved"},
    {30, 1, "Dual Beacon"},
    {31, 1, "Dual CTS Protection"},
    {32, 1, "STBC Beacon"},
    {33, 1, "L-SIG TXOP Protection Full Support (obsolete)"},
    {34, 1, "PCO Active (obsolete)"},
    {35, 1, "PCO Phase (obsolete)"},
    {36, 4, "Reserved"},
};

constexpr auto kLayout = [](auto& codec, auto& element) {
    codec.number("Primary Channel", element.primaryChannel);
    codec.group("HT Operation Information", [&] { codec.bits(element.information, kInformation); });
    codec.group("Basic HT-MCS Set", [&] { codec.bits(element.basicMcs.fields, kHtMcsFields); });
    codec.rest(element.rest);
};

}  // namespace

HALVANE_AIR_DEFINE_ELEMENT(HtOperation, kLayout)

}  // namespace halvane::air

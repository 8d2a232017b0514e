#include "halvane/air/eht_operation.h"

#include "halvane/air/eht_channel_layout_internal.h"
#include "halvane/air/eht_mcs_sets_internal.h"
#include "halvane/air/element_codec_internal.h"

namespace halvane::air {

namespace {

constexpr BitField kParameters[] = {
    {0, 1, "EHT Operation Information Present"},
    {1, 1, "Disabled Subchannel Bitmap Present"},
    {2, 1, "EHT Default PE Duration"},
    {3, 1, "Group Addressed BU Indication Limit"},
    {4, 2, "Group Addressed BU Indication Exponent"},
    {6, 1, "MCS 15 Disable"},
    {7, 1, "Reserved"},
};

constexpr auto kLayout = [](auto& codec, auto& element) {
    codec.group("EHT Operation Parameters", [&] { codec.bits(element.parameters, kParameters); });
    codec.group("Basic EHT-MCS and Nss Set",
                [&] { codec.bits(element.basicMcs.fields, kEhtMcs20Fields); });
    codec.when(element.parameters.bit(0), element.information, [&](auto& information) {
        codec.group("EHT Operation Information",
                    [&] { kEhtChannelLayout(codec, information, element.parameters.bit(1)); });
    });
    codec.rest(element.rest);
};

}  // namespace

HALVANE_AIR_DEFINE_ELEMENT(EhtOperation, kLayout)

}  // namespace halvane::air

#include "halvane/air/spatial_reuse.h"

#include "halvane/air/element_codec_internal.h"

namespace halvane::air {

namespace {

constexpr BitField kControl[] = {
    {0, 1, "PSR Disallowed"},
    {1, 1, "Non-SRG OBSS PD SR Disallowed"},
    {2, 1, "Non-SRG Offset Present"},
    {3, 1, "SRG Information Present"},
    {4, 1, "HESIGA_Spatial_reuse_value15_allowed"},
    {5, 3, "Reserved"},
};

constexpr NumberForm kOffset = {.unit = "dB above -82 dBm"};

constexpr auto kGroupLayout = [](auto& codec, auto& group) {
    codec.number("SRG OBSS PD Min Offset", group.minOffset, kOffset);
    codec.number("SRG OBSS PD Max Offset", group.maxOffset, kOffset);
    codec.octets("SRG BSS Color Bitmap", group.bssColors.octets);
    codec.octets("SRG Partial BSSID Bitmap", group.partialBssids.octets);
};

constexpr auto kLayout = [](auto& codec, auto& element) {
    codec.group("SR Control", [&] { codec.bits(element.control, kControl); });
    codec.when(element.control.bit(2), element.nonSrgMaxOffset,
               [&](auto& offset) { codec.number("Non-SRG OBSS PD Max Offset", offset, kOffset); });
    codec.when(element.control.bit(3), element.srg, [&](auto& group) {
        codec.group("SRG Information", [&] { kGroupLayout(codec, group); });
    });
    codec.rest(element.rest);
};

}  // namespace

HALVANE_AIR_DEFINE_ELEMENT(SpatialReuse, kLayout)

}  // namespace halvane::air

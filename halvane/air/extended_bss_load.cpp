#include "halvane/air/extended_bss_load.h"

#include "halvane/air/element_codec_internal.h"

namespace halvane::air {

namespace {

constexpr NumberForm kShare = {.unit = "/255"};

constexpr auto kLayout = [](auto& codec, auto& element) {
    codec.number("MU-MIMO Capable STA Count", element.muMimoStationCount);
    codec.number("Spatial Stream Underutilization", element.spatialStreamUnderutilization, kShare);
    codec.number("Observable Secondary 20 MHz Utilization", element.secondary20Utilization, kShare);
    codec.number("Observable Secondary 40 MHz Utilization", element.secondary40Utilization, kShare);
    codec.number("Observable Secondary 80 MHz Utilization", element.secondary80Utilization, kShare);
    codec.rest(element.rest);
};

}  // namespace

HALVANE_AIR_DEFINE_ELEMENT(ExtendedBssLoad, kLayout)

}  // namespace halvane::air

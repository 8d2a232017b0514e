#include "halvane/air/bss_load.h"

#include "halvane/air/element_codec_internal.h"

namespace halvane::air {

namespace {

constexpr auto kLayout = [](auto& codec, auto& element) {
    codec.number("Station Count", element.stationCount);
    codec.number("Channel Utilization", element.channelUtilization, {.unit = "/255"});
    codec.number("Available Admission Capacity", element.availableAdmissionCapacity,
                 {.unit = "32 us/s"});
    codec.rest(element.rest);
};

}  // namespace

HALVANE_AIR_DEFINE_ELEMENT(BssLoad, kLayout)

}  // namespace halvane::air

#include "halvane/air/multiple_bssid_configuration.h"

#include "halvane/air/element_codec_internal.h"

namespace halvane::air {

namespace {

constexpr auto kLayout = [](auto& codec, auto& element) {
    codec.number("BSSID Count", element.bssidCount);
    codec.number("Full Set Rx Periodicity", element.fullSetRxPeriodicity);
    codec.rest(element.rest);
};

}  // namespace

HALVANE_AIR_DEFINE_ELEMENT(MultipleBssidConfiguration, kLayout)

}  // namespace halvane::air

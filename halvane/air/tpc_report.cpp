#include "halvane/air/tpc_report.h"

#include "halvane/air/element_codec_internal.h"

namespace halvane::air {

namespace {

constexpr auto kLayout = [](auto& codec, auto& element) {
    codec.number("Transmit Power", element.transmitPower, {.unit = "dBm"});
    codec.number("Link Margin", element.linkMargin, {.unit = "dB"});
    codec.rest(element.rest);
};

}  // namespace

HALVANE_AIR_DEFINE_ELEMENT(TpcReport, kLayout)

}  // namespace halvane::air

#include "halvane/air/bss_ac_access_delay.h"

#include "halvane/air/element_codec_internal.h"

namespace halvane::air {

namespace {

constexpr auto kLayout = [](auto& codec, auto& element) {
    codec.number("Average Access Delay For Best Effort", element.bestEffort);
    codec.number("Average Access Delay For Background", element.background);
    codec.number("Average Access Delay For Video", element.video);
    codec.number("Average Access Delay For Voice", element.voice);
    codec.rest(element.rest);
};

}  // namespace

HALVANE_AIR_DEFINE_ELEMENT(BssAcAccessDelay, kLayout)

}  // namespace halvane::air

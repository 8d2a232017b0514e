#include "halvane/air/max_channel_switch_time.h"

#include "halvane/air/element_codec_internal.h"

namespace halvane::air {

namespace {

constexpr auto kLayout = [](auto& codec, auto& element) {
    codec.template numberOf<3>("Switch Time", element.switchTime, {.unit = "TU"});
    codec.rest(element.rest);
};

}  // namespace

HALVANE_AIR_DEFINE_ELEMENT(MaxChannelSwitchTime, kLayout)

}  // namespace halvane::air

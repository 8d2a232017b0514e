#include "halvane/air/channel_switch.h"

#include "halvane/air/element_codec_internal.h"

namespace halvane::air {

namespace {

constexpr ValueName kModes[] = {{0, "no restriction"}, {1, "no transmission until the switch"}};

constexpr auto kLayout = [](auto& codec, auto& element) {
    codec.number("Channel Switch Mode", element.mode, {.names = kModes});
    codec.number("New Channel Number", element.newChannel);
    codec.number("Channel Switch Count", element.count);
    codec.rest(element.rest);
};

}  // namespace

HALVANE_AIR_DEFINE_ELEMENT(ChannelSwitch, kLayout)

}  // namespace halvane::air

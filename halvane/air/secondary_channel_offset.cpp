#include "halvane/air/secondary_channel_offset.h"

#include "halvane/air/element_codec_internal.h"
#include "halvane/air/secondary_channel_names_internal.h"

namespace halvane::air {

namespace {

constexpr auto kLayout = [](auto& codec, auto& element) {
    codec.number("Secondary Channel Offset", element.offset, {.names = kSecondaryChannelNames});
    codec.rest(element.rest);
};

}  // namespace

HALVANE_AIR_DEFINE_ELEMENT(SecondaryChannelOffset, kLayout)

}  // namespace halvane::air

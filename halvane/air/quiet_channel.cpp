#include "halvane/air/quiet_channel.h"

#include "halvane/air/element_codec_internal.h"

namespace halvane::air {

namespace {

constexpr auto kLayout = [](auto& codec, auto& element) {
    codec.number("AP Quiet Mode", element.apQuietMode);
    codec.when(element.apQuietMode == 1, element.interval, [&](auto& interval) {
        codec.number("Quiet Count", interval.count);
        codec.number("Quiet Period", interval.period);
        codec.number("Quiet Duration", interval.duration, {.unit = "TU"});
        codec.number("Quiet Offset", interval.offset, {.unit = "TU"});
    });
    codec.rest(element.rest);
};

}  // namespace

HALVANE_AIR_DEFINE_ELEMENT(QuietChannel, kLayout)

}  // namespace halvane::air

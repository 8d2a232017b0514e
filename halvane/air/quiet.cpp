#include "halvane/air/quiet.h"

#include "halvane/air/element_codec_internal.h"

namespace halvane::air {

namespace {

constexpr auto kLayout = [](auto& codec, auto& element) {
    codec.number("Quiet Count", element.count);
    codec.number("Quiet Period", element.period);
    codec.number("Quiet Duration", element.duration, {.unit = "TU"});
    codec.number("Quiet Offset", element.offset, {.unit = "TU"});
    codec.rest(element.rest);
};

}  // namespace

HALVANE_AIR_DEFINE_ELEMENT(Quiet, kLayout)

}  // namespace halvane::air

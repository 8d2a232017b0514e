#include "halvane/air/ds_parameter_set.h"

#include "halvane/air/element_codec_internal.h"

namespace halvane::air {

namespace {

constexpr auto kLayout = [](auto& codec, auto& element) {
    codec.number("Current Channel", element.currentChannel);
    codec.rest(element.rest);
};

}  // namespace

HALVANE_AIR_DEFINE_ELEMENT(DsParameterSet, kLayout)

}  // namespace halvane::air

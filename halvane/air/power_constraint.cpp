#include "halvane/air/power_constraint.h"

#include "halvane/air/element_codec_internal.h"

namespace halvane::air {

namespace {

constexpr auto kLayout = [](auto& codec, auto& element) {
    codec.number("Local Power Constraint", element.localConstraint, {.unit = "dB"});
    codec.rest(element.rest);
};

}  // namespace

HALVANE_AIR_DEFINE_ELEMENT(PowerConstraint, kLayout)

}  // namespace halvane::air

#include "halvane/air/uora_parameter_set.h"

#include "halvane/air/element_codec_internal.h"

namespace halvane::air {

namespace {

constexpr BitField kRange[] = {{0, 3, "EOCWmin"}, {3, 3, "EOCWmax"}, {6, 2, "Reserved"}};

constexpr auto kLayout = [](auto& codec, auto& element) {
    codec.group("OCW Range", [&] { codec.bits(element.range, kRange); });
    codec.rest(element.rest);
};

}  // namespace

HALVANE_AIR_DEFINE_ELEMENT(UoraParameterSet, kLayout)

}  // namespace halvane::air

#include "halvane/air/rsn_override.h"

#include "halvane/air/element_codec_internal.h"
#include "halvane/air/rsn_layout_internal.h"

namespace halvane::air {

namespace {

constexpr auto kLayout = [](auto& codec, auto& element) { kRsnLayout(codec, element.rsn); };

}  // namespace

HALVANE_AIR_DEFINE_ELEMENT(RsnOverride, kLayout)
HALVANE_AIR_DEFINE_ELEMENT(RsnOverride2, kLayout)

}  // namespace halvane::air

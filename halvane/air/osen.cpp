#include "halvane/air/osen.h"

#include "halvane/air/element_codec_internal.h"
#include "halvane/air/rsn_layout_internal.h"

namespace halvane::air {

namespace {

constexpr auto kLayout = [](auto& codec, auto& element) { kRsnFieldsLayout(codec, element.rsn); };

}  // namespace

HALVANE_AIR_DEFINE_ELEMENT(Osen, kLayout)

}  // namespace halvane::air

#include "halvane/air/rsn.h"

#include "halvane/air/element_codec_internal.h"
#include "halvane/air/rsn_layout_internal.h"

namespace halvane::air {

HALVANE_AIR_DEFINE_ELEMENT(Rsn, kRsnLayout)

}  // namespace halvane::air

#include "halvane/air/bandwidth_indication.h"

#include "halvane/air/bandwidth_indication_layout_internal.h"
#include "halvane/air/element_codec_internal.h"

namespace halvane::air {

HALVANE_AIR_DEFINE_ELEMENT(BandwidthIndication, kBandwidthIndicationLayout)

}  // namespace halvane::air

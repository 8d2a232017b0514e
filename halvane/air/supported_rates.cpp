#include "halvane/air/supported_rates.h"

#include "halvane/air/element_codec_internal.h"
#include "halvane/air/rate_layout_internal.h"

namespace halvane::air {

HALVANE_AIR_DEFINE_ELEMENT(SupportedRates, kRatesLayout)

}  // namespace halvane::air

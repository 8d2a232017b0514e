#include "halvane/air/extended_supported_rates.h"

#include "halvane/air/element_codec_internal.h"
#include "halvane/air/rate_layout_internal.h"

namespace halvane::air {

HALVANE_AIR_DEFINE_ELEMENT(ExtendedSupportedRates, kRatesLayout)

}  // namespace halvane::air

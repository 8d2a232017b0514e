#include "halvane/air/transmit_power_envelope.h"

#include "halvane/air/element_codec_internal.h"
#include "halvane/air/transmit_power_envelope_layout_internal.h"

namespace halvane::air {

namespace {}  // namespace

HALVANE_AIR_DEFINE_ELEMENT(TransmitPowerEnvelope, kTransmitPowerEnvelopeLayout)

}  // namespace halvane::air

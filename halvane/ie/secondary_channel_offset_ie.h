// The Secondary Channel Offset element (IEEE 802.11-2020, 9.4.2.19): a placeholder without fields.
// Nothing builds it.
#ifndef HALVANE_IE_SECONDARY_CHANNEL_OFFSET_IE_H
#define HALVANE_IE_SECONDARY_CHANNEL_OFFSET_IE_H

#include "halvane/base/cxx20.h"
#include "halvane/base/export.h"

namespace halvane {

class HALVANE_EXPORT HalvaneSecondaryChannelOffsetIE {
  public:
    HalvaneSecondaryChannelOffsetIE() = default;
};

}  // namespace halvane

#endif

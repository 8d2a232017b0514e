// The Overlapping BSS Scan Parameters element (IEEE 802.11-2020, 9.4.2.58): a placeholder without
// fields. Nothing builds it.
#ifndef HALVANE_IE_OVERLAPPING_BSS_IE_H
#define HALVANE_IE_OVERLAPPING_BSS_IE_H

#include "halvane/base/cxx20.h"
#include "halvane/base/export.h"

namespace halvane {

class HALVANE_EXPORT HalvaneOverlappingBSSIE {
  public:
    HalvaneOverlappingBSSIE() = default;
};

}  // namespace halvane

#endif

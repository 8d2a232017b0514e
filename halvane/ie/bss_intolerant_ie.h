// The 20/40 BSS Intolerant Channel Report element (IEEE 802.11-2020, 9.4.2.57): a placeholder
// without fields. Nothing builds it.
#ifndef HALVANE_IE_BSS_INTOLERANT_IE_H
#define HALVANE_IE_BSS_INTOLERANT_IE_H

#include "halvane/base/cxx20.h"
#include "halvane/base/export.h"

namespace halvane {

class HALVANE_EXPORT HalvaneBSSIntolerantIE {
  public:
    HalvaneBSSIntolerantIE() = default;
};

}  // namespace halvane

#endif

// The 20/40 BSS Coexistence element (IEEE 802.11-2020, 9.4.2.59): a placeholder without fields.
// Nothing builds it.
#ifndef HALVANE_IE_BSS_COEXISTENCE_IE_H
#define HALVANE_IE_BSS_COEXISTENCE_IE_H

#include "halvane/base/cxx20.h"
#include "halvane/base/export.h"

namespace halvane {

class HALVANE_EXPORT HalvaneBSSCoexistenceIE {
  public:
    HalvaneBSSCoexistenceIE() = default;
};

}  // namespace halvane

#endif

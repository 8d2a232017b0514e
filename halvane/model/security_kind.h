// The kinds of network that a BSS configuration describes.
#ifndef HALVANE_MODEL_SECURITY_KIND_H
#define HALVANE_MODEL_SECURITY_KIND_H

#include "halvane/base/cxx20.h"

namespace halvane {

// The results of HalvaneBSSConfig::wifiSecurity().
enum HalvaneSecurityKind : unsigned {
    kHalvaneSecurityNone = 0,
    kHalvaneSecurityOpen = 1,
    kHalvaneSecurityWEP = 2,
    kHalvaneSecurityWEP8021X = 3,
    kHalvaneSecurityWPAPSK = 4,  // WPA, WPA2 or both
    kHalvaneSecurityWPA8021X = 5,
    kHalvaneSecurityWPS = 6,
};

}  // namespace halvane

#endif

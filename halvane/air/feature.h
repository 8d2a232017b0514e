// What a BSS offers beyond carrying frames.
#ifndef HALVANE_AIR_FEATURE_H
#define HALVANE_AIR_FEATURE_H

#include <cstdint>
#include <string_view>

#include "halvane/base/export.h"
#include "halvane/base/inline_list.h"

namespace halvane::air {

// In the order of the table of names.
enum class Feature : std::uint8_t {
    RadioMeasurement,  // 802.11k
    BssTransition,     // 802.11v
    FastTransition,    // 802.11r: Mobility Domain and an FT key management suite
    Fils,
    SaeHashToElement,
    SaePk,
    Mbo,
    Wmm,
    UapsdAvailable,
    WiFiDirect,
    Wps,
    WpsConfigured,
    Mesh,
    Hotspot,
    Interworking,
    Twt,
    MuBeamformer,
    MultipleBssid,
    MultiLink,
    FtmResponder,
    ProxyArp,
};
// The number of enumerators of Feature.
inline constexpr int kFeatureCount = 21;

// "802.11k", "802.11v", "802.11r", "FILS", "SAE-H2E", ...
HALVANE_EXPORT std::string_view featureName(Feature feature);

// In the order of the enumerators.
using Features = InlineList<Feature, kFeatureCount>;

}  // namespace halvane::air

#endif

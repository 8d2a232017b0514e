#include "halvane/air/feature.h"

#include <array>
#include <cstddef>

namespace halvane::air {

namespace {

constexpr std::array<std::string_view, kFeatureCount> kNames = {
    "802.11k", "802.11v",       "802.11r",      "FILS",         "SAE-H2E", "SAE-PK",
    "MBO",     "WMM",           "U-APSD",       "Wi-Fi Direct", "WPS",     "WPS configured",
    "mesh",    "Hotspot 2.0",   "Interworking", "TWT",          "MU-MIMO", "Multiple BSSID",
    "MLO",     "FTM responder", "proxy ARP",
};

}  // namespace

std::string_view featureName(Feature feature) {
    return kNames[static_cast<std::size_t>(feature)];
}

}  // namespace halvane::air

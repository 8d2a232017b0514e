// Whether a network protects its management frames.
#ifndef HALVANE_MODEL_MANAGEMENT_FRAME_PROTECTION_H
#define HALVANE_MODEL_MANAGEMENT_FRAME_PROTECTION_H

#include <cstdint>

#include "halvane/base/cxx20.h"

namespace halvane {

// The bits MFPC and MFPR of the RSN Capabilities (IEEE 802.11-2020, 9.4.2.24.4). A skeleton may
// hold another number, which means nothing.
enum HalvaneManagementFrameProtection : std::int64_t {
    kHalvaneManagementFrameProtectionNone = 0,      // neither bit
    kHalvaneManagementFrameProtectionCapable = 1,   // MFPC: of stations that can
    kHalvaneManagementFrameProtectionRequired = 2,  // both bits: other stations cannot join
};

}  // namespace halvane

#endif

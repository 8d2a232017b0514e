// The names of the bits of Capability Information.
#ifndef HALVANE_AIR_CAPABILITY_INFORMATION_INTERNAL_H
#define HALVANE_AIR_CAPABILITY_INFORMATION_INTERNAL_H

#include "halvane/air/element_codec_internal.h"

namespace halvane::air {

// Figure 9-110. 802.11be gave the bits 6 and 7 a meaning.
inline constexpr BitField kCapabilityInformation[] = {
    {0, 1, "ESS"},
    {1, 1, "IBSS"},
    {2, 2, "Reserved"},
    {4, 1, "Privacy"},
    {5, 1, "Short Preamble"},
    {6, 1, "Critical Update Flag"},
    {7, 1, "Nontransmitted BSSIDs Critical Update Flag"},
    {8, 1, "Spectrum Management"},
    {9, 1, "QoS"},
    {10, 1, "Short Slot Time"},
    {11, 1, "APSD"},
    {12, 1, "Radio Measurement"},
    {13, 1, "EPD"},
    {14, 2, "Reserved"},
};

}  // namespace halvane::air

#endif

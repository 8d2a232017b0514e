// The bits of a BSS record's capability information field, each with its property. Bit 12 has none.
#ifndef TESTS_SUPPORT_CAPABILITY_BITS_H
#define TESTS_SUPPORT_CAPABILITY_BITS_H

#include "halvane/ie/mac.h"

namespace halvane::testing {

struct CapabilityBit {
    unsigned bit;
    bool (HalvaneMAC::*isSet)() const;
};
inline constexpr CapabilityBit kCapabilityBits[] = {
    {0, &HalvaneMAC::isESS},
    {1, &HalvaneMAC::isIBSS},
    {2, &HalvaneMAC::isCFPollable},
    {3, &HalvaneMAC::isCFPollRequest},
    {4, &HalvaneMAC::isPrivacy},
    {5, &HalvaneMAC::isShortPreamble},
    {6, &HalvaneMAC::isPBCC},
    {7, &HalvaneMAC::isChannelAgility},
    {8, &HalvaneMAC::isSpectrumManagement},
    {9, &HalvaneMAC::isQoS},
    {10, &HalvaneMAC::isShortSlotTime},
    {11, &HalvaneMAC::isAPSD},
    {13, &HalvaneMAC::isDSSSOFDM},
    {14, &HalvaneMAC::isDelayedBlockAck},
    {15, &HalvaneMAC::isImmediateBlockAck},
};

}  // namespace halvane::testing

#endif

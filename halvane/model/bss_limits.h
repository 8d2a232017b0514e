// The sizes of an SSID, of a passphrase, and of the pre-shared key derived from a passphrase.
#ifndef HALVANE_MODEL_BSS_LIMITS_H
#define HALVANE_MODEL_BSS_LIMITS_H

#include <cstddef>

#include "halvane/base/cxx20.h"

namespace halvane {

// IEEE 802.11-2020, 9.4.2.2 and J.4.1, in octets.
inline constexpr std::size_t kBSSMaxSSIDSize = 32;
inline constexpr std::size_t kBSSMinPassphraseSize = 8;
inline constexpr std::size_t kBSSMaxPassphraseSize = 63;
inline constexpr std::size_t kBSSKeySize = 32;

}  // namespace halvane

#endif

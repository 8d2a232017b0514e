// Derives pre-shared keys from passphrases: PBKDF2 (RFC 8018, 5.2) with HMAC-SHA1.
#ifndef HALVANE_MODEL_PASSPHRASE_HASH_INTERNAL_H
#define HALVANE_MODEL_PASSPHRASE_HASH_INTERNAL_H

#include <array>
#include <cstdint>
#include <span>

#include "halvane/model/bss_limits.h"
#include "halvane/platform/os/hmac_sha1_internal.h"

namespace halvane {

// IEEE 802.11-2020, J.4.1.
inline constexpr std::uint32_t kWPAIterations = 4096;

using WPAKey = std::array<std::uint8_t, kBSSKeySize>;

// PBKDF2's function F: block `index` of the key. 0 iterations count as 1. Passphrase and SSID may
// have any length.
void derivePassphraseBlock(std::span<const std::uint8_t> passphrase,
                           std::span<const std::uint8_t> ssid, std::uint32_t iterations,
                           std::uint32_t index, SHA1Digest& block);

// Derives blocks 1 and 2, cut to the size of a key.
void deriveWPAKey(std::span<const std::uint8_t> passphrase, std::span<const std::uint8_t> ssid,
                  WPAKey& key);

}  // namespace halvane

#endif

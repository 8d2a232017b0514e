#include <algorithm>
#include <array>
#include <climits>

#include "halvane/model/passphrase_hash_internal.h"
#include "halvane/platform/os/secret_internal.h"

namespace halvane {

namespace {

// Returns a block's index as it follows the SSID in the input of F: most significant byte first.
std::array<std::uint8_t, sizeof(std::uint32_t)> bytesOf(std::uint32_t index) {
    std::array<std::uint8_t, sizeof(index)> bytes{};
    for (auto byte = bytes.rbegin(); byte != bytes.rend(); ++byte, index >>= CHAR_BIT) {
        *byte = static_cast<std::uint8_t>(index);
    }
    return bytes;
}

}  // namespace

void derivePassphraseBlock(std::span<const std::uint8_t> passphrase,
                           std::span<const std::uint8_t> ssid, std::uint32_t iterations,
                           std::uint32_t index, SHA1Digest& block) {
    const HMACSHA1 hmac(passphrase);
    HMACSHA1Chain chain(hmac, ssid, bytesOf(index));
    for (std::uint32_t i = 1; i < iterations; ++i) {
        chain.stepInner();
        chain.stepOuter();
    }
    chain.takeSum(block);
}

void deriveWPAKey(std::span<const std::uint8_t> passphrase, std::span<const std::uint8_t> ssid,
                  WPAKey& key) {
    const HMACSHA1 hmac(passphrase);
    HMACSHA1Chain first(hmac, ssid, bytesOf(1));
    HMACSHA1Chain second(hmac, ssid, bytesOf(2));
    for (std::uint32_t i = 1; i < kWPAIterations; ++i) {
        first.stepInner();
        second.stepInner();
        first.stepOuter();
        second.stepOuter();
    }
    Secret<std::array<SHA1Digest, 2>> blocks;
    first.takeSum((*blocks)[0]);
    second.takeSum((*blocks)[1]);
    const auto rest = std::ranges::copy((*blocks)[0], key.begin()).out;
    std::copy_n((*blocks)[1].begin(), key.end() - rest, rest);
}

}  // namespace halvane

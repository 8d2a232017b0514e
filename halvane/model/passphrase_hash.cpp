#include <algorithm>
#include <climits>
#include <vector>

#include "halvane/model/passphrase_hash_internal.h"

namespace halvane {

namespace {

// What F starts with: the SSID and the block's index, most significant byte first. The SSID is no
// secret, so this needs no wiping.
std::vector<std::uint8_t> messageOf(std::span<const std::uint8_t> ssid, std::uint32_t index) {
    std::vector<std::uint8_t> message(ssid.begin(), ssid.end());
    for (int shift = 24; shift >= 0; shift -= CHAR_BIT) {
        message.push_back(static_cast<std::uint8_t>(index >> shift));
    }
    return message;
}

}  // namespace

void derivePassphraseBlock(std::span<const std::uint8_t> passphrase,
                           std::span<const std::uint8_t> ssid, std::uint32_t iterations,
                           std::uint32_t index, SHA1Digest& block) {
    const HMACSHA1 hmac(passphrase);
    HMACSHA1Chain chain(hmac, messageOf(ssid, index));
    for (std::uint32_t i = 1; i < iterations; ++i) {
        chain.stepInner();
        chain.stepOuter();
    }
    chain.takeSum(block);
}

void deriveWPAKey(std::span<const std::uint8_t> passphrase, std::span<const std::uint8_t> ssid,
                  WPAKey& key) {
    const HMACSHA1 hmac(passphrase);
    HMACSHA1Chain first(hmac, messageOf(ssid, 1));
    HMACSHA1Chain second(hmac, messageOf(ssid, 2));
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

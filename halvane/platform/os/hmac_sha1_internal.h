// HMAC-SHA1 (RFC 2104, FIPS 180-4) for many messages under one key. The key's blocks are compressed
// once, so a short message costs only two compressions.
//
// The objects wipe their contents when destroyed. Threads: several threads may use one const
// object.
#ifndef HALVANE_PLATFORM_OS_HMAC_SHA1_INTERNAL_H
#define HALVANE_PLATFORM_OS_HMAC_SHA1_INTERNAL_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

#include "halvane/platform/os/secret_internal.h"

namespace halvane {

inline constexpr std::size_t kSHA1DigestSize = 20;
inline constexpr std::size_t kSHA1BlockSize = 64;

using SHA1Digest = std::array<std::uint8_t, kSHA1DigestSize>;
// The digest in the compression function's form: five integers.
using SHA1State = std::array<std::uint32_t, kSHA1DigestSize / sizeof(std::uint32_t)>;

class HMACSHA1 {
  public:
    // The key may have any length.
    explicit HMACSHA1(std::span<const std::uint8_t> key);

    // Writes the code of a message of any length. Its two parts are joined.
    void authenticate(std::span<const std::uint8_t> message, std::span<const std::uint8_t> rest,
                      SHA1Digest& code) const;
    void authenticate(std::span<const std::uint8_t> message, SHA1Digest& code) const {
        authenticate(message, {}, code);
    }

  private:
    friend class HMACSHA1Chain;

    Secret<SHA1State> inner_;  // the state after the block of the inner pad
    Secret<SHA1State> outer_;  // the state after the block of the outer pad
};

// U1 = HMAC(message), U2 = HMAC(U1) and so on, and their exclusive or, which PBKDF2 iterates.
//
// Each step is two compressions, and the second needs the first one's result. Steps of two chains
// that alternate overlap in the processor, so two chains together take little more time than one.
class HMACSHA1Chain {
  public:
    // Starts at U1, the code of a message of any length in up to two parts.
    // REQUIRES: `hmac` outlives the chain.
    HMACSHA1Chain(const HMACSHA1& hmac, std::span<const std::uint8_t> message,
                  std::span<const std::uint8_t> rest = {});

    // One step is stepInner() and then stepOuter().
    void stepInner();
    void stepOuter();

    // Writes the exclusive or of all U so far.
    void takeSum(SHA1Digest& sum) const;

  private:
    // A digest as a padded message that follows a block of 64 bytes. The block is the same in both
    // halves of a step except for the digest.
    struct Work {
        alignas(16) std::array<std::uint8_t, kSHA1BlockSize> block;
        SHA1State state;
        SHA1State sum;
    };

    void compressFrom(const SHA1State& start);

    const HMACSHA1& hmac_;
    Secret<Work> work_;
};

}  // namespace halvane

#endif

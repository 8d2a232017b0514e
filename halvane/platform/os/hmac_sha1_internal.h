// HMAC-SHA1 (RFC 2104, FIPS 180-4) for many messages under one key: what the key contributes is
// compressed once, so that a short message costs two compressions and no more.
//
// Whatever the objects hold is wiped when they go. Threads: a const object may be used by several.
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
// The digest as the compression function has it: five integers.
using SHA1State = std::array<std::uint32_t, kSHA1DigestSize / sizeof(std::uint32_t)>;

class HMACSHA1 {
  public:
    // A key of any length.
    explicit HMACSHA1(std::span<const std::uint8_t> key);

    // Writes the code of a message of any length, the two parts one behind the other.
    void authenticate(std::span<const std::uint8_t> message, std::span<const std::uint8_t> rest,
                      SHA1Digest& code) const;
    void authenticate(std::span<const std::uint8_t> message, SHA1Digest& code) const {
        authenticate(message, {}, code);
    }

  private:
    friend class HMACSHA1Chain;

    Secret<SHA1State> inner_;  // after the block of the inner pad
    Secret<SHA1State> outer_;  // likewise
};

// U1 = HMAC(message), U2 = HMAC(U1), and so on, with their exclusive or: what PBKDF2 iterates.
//
// Each step is two compressions, of which the second waits for the first. Taken in turns with those
// of another chain they overlap, for processors do not wait: two chains together take little more
// time than one.
class HMACSHA1Chain {
  public:
    // Starts at U1, the code of a message of any length in up to two parts. `hmac` must outlive the
    // chain.
    HMACSHA1Chain(const HMACSHA1& hmac, std::span<const std::uint8_t> message,
                  std::span<const std::uint8_t> rest = {});

    // One step is the first half and then the second.
    void stepInner();
    void stepOuter();

    // Writes the exclusive or of all U so far.
    void takeSum(SHA1Digest& sum) const;

  private:
    // A digest as a message of its own that follows a block of 64 bytes, padded: it is the same
    // block in either half of a step but for the digest.
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

#include <algorithm>
#include <array>
#include <climits>
#include <cstddef>
#include <cstdint>
#include <nettle/sha1.h>
#include <span>

#include "halvane/platform/os/hmac_sha1_internal.h"
#include "halvane/platform/os/secret_internal.h"

namespace halvane {

namespace {

constexpr std::uint8_t kInnerPad = 0x36;
constexpr std::uint8_t kOuterPad = 0x5C;

static_assert(kSHA1DigestSize == SHA1_DIGEST_SIZE && kSHA1BlockSize == SHA1_BLOCK_SIZE);

// Most significant byte first. Compilers turn each word into one instruction.
void store(const SHA1State& state, std::uint8_t* to) {
    for (const std::uint32_t word : state) {
        for (int shift = 24; shift >= 0; shift -= CHAR_BIT) {
            *to++ = static_cast<std::uint8_t>(word >> shift);
        }
    }
}

void load(SHA1State& state, const std::uint8_t* from) {
    for (std::uint32_t& word : state) {
        for (std::size_t i = 0; i < sizeof(word); ++i) word = word << CHAR_BIT | *from++;
    }
}

void update(Secret<sha1_ctx>& hash, std::span<const std::uint8_t> bytes) {
    nettle_sha1_update(&*hash, bytes.size(), bytes.data());
}

// Sets the state after one block: the key, padded with zeros, each byte exclusive or `pad`.
void startWith(std::uint8_t pad, const std::array<std::uint8_t, kSHA1BlockSize>& key,
               SHA1State& state) {
    Secret<std::array<std::uint8_t, kSHA1BlockSize>> block;
    std::ranges::transform(key, block->begin(),
                           [pad](std::uint8_t byte) { return std::uint8_t(byte ^ pad); });
    Secret<sha1_ctx> hash;
    nettle_sha1_init(&*hash);
    std::ranges::copy(hash->state, state.begin());
    nettle_sha1_compress(state.data(), block->data());
}

// Continues from the state after one block.
void finish(const SHA1State& start, std::span<const std::uint8_t> message,
            std::span<const std::uint8_t> rest, SHA1Digest& digest) {
    Secret<sha1_ctx> hash;
    nettle_sha1_init(&*hash);
    std::ranges::copy(start, hash->state);
    hash->count = 1;
    update(hash, message);
    update(hash, rest);
    nettle_sha1_digest(&*hash, digest.size(), digest.data());
}

}  // namespace

HMACSHA1::HMACSHA1(std::span<const std::uint8_t> key) {
    Secret<std::array<std::uint8_t, kSHA1BlockSize>> block;
    if (key.size() <= kSHA1BlockSize) {
        std::ranges::copy(key, block->begin());
    } else {  // a long key is replaced by its digest
        Secret<sha1_ctx> hash;
        nettle_sha1_init(&*hash);
        update(hash, key);
        nettle_sha1_digest(&*hash, kSHA1DigestSize, block->data());
    }
    startWith(kInnerPad, *block, *inner_);
    startWith(kOuterPad, *block, *outer_);
}

void HMACSHA1::authenticate(std::span<const std::uint8_t> message,
                            std::span<const std::uint8_t> rest, SHA1Digest& code) const {
    Secret<SHA1Digest> inner;
    finish(*inner_, message, rest, *inner);
    finish(*outer_, *inner, {}, code);
}

HMACSHA1Chain::HMACSHA1Chain(const HMACSHA1& hmac, std::span<const std::uint8_t> message,
                             std::span<const std::uint8_t> rest)
    : hmac_(hmac) {
    Secret<SHA1Digest> first;
    hmac.authenticate(message, rest, *first);
    std::ranges::copy(*first, work_->block.begin());
    load(work_->sum, first->data());
    // The padding of a message of one pad block and a digest: a bit, zeros, and the length in bits.
    constexpr std::size_t kBits = CHAR_BIT * (kSHA1BlockSize + kSHA1DigestSize);
    work_->block[kSHA1DigestSize] = 0x80;
    work_->block[kSHA1BlockSize - 2] = kBits >> CHAR_BIT;
    work_->block[kSHA1BlockSize - 1] = kBits & UINT8_MAX;
}

void HMACSHA1Chain::compressFrom(const SHA1State& start) {
    work_->state = start;
    nettle_sha1_compress(work_->state.data(), work_->block.data());
    store(work_->state, work_->block.data());
}

void HMACSHA1Chain::stepInner() {
    compressFrom(*hmac_.inner_);
}

void HMACSHA1Chain::stepOuter() {
    compressFrom(*hmac_.outer_);
    for (std::size_t i = 0; i < work_->sum.size(); ++i) work_->sum[i] ^= work_->state[i];
}

void HMACSHA1Chain::takeSum(SHA1Digest& sum) const {
    store(work_->sum, sum.data());
}

}  // namespace halvane

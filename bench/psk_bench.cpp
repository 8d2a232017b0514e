// Pre-shared keys, beside PKCS5_PBKDF2_HMAC of OpenSSL, and beside only the SHA-1 compressions that
// a key needs.
#include <array>
#include <benchmark/benchmark.h>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <nettle/sha1.h>
#include <openssl/evp.h>

#include "halvane/base/byte_buffer.h"
#include "halvane/model/bss_config.h"

namespace {

using Key = std::array<std::uint8_t, 32>;

constexpr char kPassphrase[] = "password";
constexpr char kSSID[] = "IEEE";
// IEEE 802.11-2020, J.4.2.
constexpr Key kExpected = {0xF4, 0x2C, 0x6F, 0xC5, 0x2D, 0xF0, 0xEB, 0xEF, 0x9E, 0xBB, 0x4B,
                           0x90, 0xB3, 0x8A, 0x5F, 0x90, 0x2E, 0x83, 0xFE, 0x1B, 0x13, 0x5A,
                           0x70, 0xE2, 0x3A, 0xED, 0x76, 0x2E, 0x97, 0x10, 0xA1, 0x2E};

constexpr int kIterations = 4096;
// Two blocks, and in each iteration of a block the inner and the outer hash.
constexpr int kCompressions = 2 * kIterations * 2;

template <typename Derive>
void measure(benchmark::State& state, Derive derive) {
    if (derive() != kExpected) std::abort();
    for (auto _ : state) benchmark::DoNotOptimize(derive());
    state.SetItemsProcessed(state.iterations());
}

void keyHalvane(benchmark::State& state) {
    const auto passphrase = halvane::ByteBuffer::fromText(kPassphrase);
    const auto ssid = halvane::ByteBuffer::fromText(kSSID);
    measure(state, [&] {
        const auto made =
            halvane::HalvaneBSSConfig::wpaPasswordHash_withSSID_error(passphrase, ssid);
        Key key{};
        if (made) std::memcpy(key.data(), made->bytes().data(), key.size());
        return key;
    });
}

void keyOpenSSL(benchmark::State& state) {
    measure(state, [] {
        Key key{};
        PKCS5_PBKDF2_HMAC(kPassphrase, std::strlen(kPassphrase),
                          reinterpret_cast<const unsigned char*>(kSSID), std::strlen(kSSID),
                          kIterations, EVP_sha1(), static_cast<int>(key.size()), key.data());
        return key;
    });
}

void keyFloor(benchmark::State& state) {
    std::array<std::uint32_t, 5> hash{};
    std::array<std::uint8_t, 64> block{};
    for (auto _ : state) {
        for (int i = 0; i < kCompressions; ++i) nettle_sha1_compress(hash.data(), block.data());
        benchmark::DoNotOptimize(hash);
    }
    state.SetItemsProcessed(state.iterations());
}

BENCHMARK(keyHalvane);
BENCHMARK(keyOpenSSL);
BENCHMARK(keyFloor);

}  // namespace

BENCHMARK_MAIN();

// Pre-shared keys: the standard's vectors, another implementation's keys, and refused input.
#include <array>
#include <clocale>
#include <cstddef>
#include <cstdint>
#include <gtest/gtest.h>
#include <openssl/evp.h>
#include <openssl/hmac.h>
#include <optional>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/error.h"
#include "halvane/base/status.h"
#include "halvane/model/bss_config.h"
#include "halvane/model/daemon_service.h"

using namespace halvane;

namespace {

ByteBuffer text(std::string_view characters) {
    return ByteBuffer::fromText(characters);
}

std::optional<ByteBuffer> keyOf(const std::optional<ByteBuffer>& passphrase,
                                const std::optional<ByteBuffer>& ssid) {
    return HalvaneBSSConfig::wpaPasswordHash_withSSID_error(passphrase, ssid);
}

// The first `size` bytes of PBKDF2, in hexadecimal.
std::string derived(std::string_view passphrase, std::string_view salt, std::uint32_t iterations,
                    std::size_t size) {
    std::string hex;
    for (std::uint32_t block = 1; hex.size() < 2 * size; ++block) {
        hex += HalvaneBSSConfig::F_withSSID_withIterations_withCount(text(passphrase), text(salt),
                                                                     iterations, block)
                   .hex();
    }
    return hex.substr(0, 2 * size);
}

std::string derivedByPeer(std::string_view passphrase, std::string_view salt, int iterations,
                          std::size_t size) {
    std::vector<unsigned char> key(size);
    EXPECT_EQ(PKCS5_PBKDF2_HMAC(passphrase.data(), static_cast<int>(passphrase.size()),
                                reinterpret_cast<const unsigned char*>(salt.data()),
                                static_cast<int>(salt.size()), iterations, EVP_sha1(),
                                static_cast<int>(size), key.data()),
              1);
    return ByteBuffer(key).hex();
}

void expectRefused(const std::optional<ByteBuffer>& passphrase,
                   const std::optional<ByteBuffer>& ssid) {
    std::optional<Error> error;
    EXPECT_FALSE(HalvaneBSSConfig::wpaPasswordHash_withSSID_error(passphrase, ssid, &error));
    EXPECT_EQ(error, daemonError(kStatusUnsupported));
    EXPECT_FALSE(keyOf(passphrase, ssid));
}

// IEEE 802.11-2020, J.4.2.
TEST(PassphraseHash, GivesTheKeysOfTheStandard) {
    EXPECT_EQ(keyOf(text("password"), text("IEEE"))->hex(),
              "f42c6fc52df0ebef9ebb4b90b38a5f902e83fe1b135a70e23aed762e9710a12e");
    EXPECT_EQ(keyOf(text("ThisIsAPassword"), text("ThisIsASSID"))->hex(),
              "0dc0d6eb90555ed6419756b9a15ec3e3209b63df707dd508d14581f8982721af");
    // The clause's third passphrase has 32 bytes. The library makes no key of that length, but it
    // makes the blocks.
    EXPECT_EQ(derived(std::string(32, 'a'), std::string(32, 'Z'), 4096, 32),
              "becb93866bb8c3832cb777c2f559807c8c59afcb6eae734885001300a981cc62");
}

TEST(PassphraseHash, IsMadeOfTheFirstTwoBlocks) {
    const auto key = keyOf(text("password"), text("IEEE"));
    ASSERT_TRUE(key);
    EXPECT_EQ(key->size(), 32u);
    EXPECT_EQ(key->hex(), derived("password", "IEEE", 4096, 32));
}

// RFC 6070, without the row of 16777216 iterations, which takes seconds.
TEST(PassphraseBlock, GivesTheKeysOfPBKDF2) {
    EXPECT_EQ(derived("password", "salt", 1, 20), "0c60c80f961f0e71f3a9b524af6012062fe037a6");
    EXPECT_EQ(derived("password", "salt", 2, 20), "ea6c014dc72d6f8ccd1ed92ace1d41f0d8de8957");
    EXPECT_EQ(derived("password", "salt", 4096, 20), "4b007901b765489abead49d926f721d065a429c1");
    EXPECT_EQ(derived("passwordPASSWORDpassword", "saltSALTsaltSALTsaltSALTsaltSALTsalt", 4096, 25),
              "3d2eec4fe41c849b80c8d83662c0e44a8b291a964cf2f07038");
    EXPECT_EQ(derived(std::string_view("pass\0word", 9), std::string_view("sa\0lt", 5), 4096, 16),
              "56fa6aa75548099dcc37d7f03425e0c3");
}

TEST(PassphraseBlock, TakesNoIterationsForOne) {
    EXPECT_EQ(derived("password", "salt", 0, 20), derived("password", "salt", 1, 20));
}

TEST(PassphraseBlock, HasAnIndexOfFourBytes) {
    // HMAC-SHA1 of the key "key" and the message "ssid" with the index behind it.
    for (const std::uint32_t index : {0u, 1u, 0x01020304u, UINT32_MAX}) {
        const unsigned char tail[] = {
            static_cast<unsigned char>(index >> 24), static_cast<unsigned char>(index >> 16),
            static_cast<unsigned char>(index >> 8), static_cast<unsigned char>(index)};
        std::string message = "ssid";
        message.append(tail, tail + sizeof(tail));
        std::array<unsigned char, 20> expected{};
        ASSERT_NE(HMAC(EVP_sha1(), "key", 3, reinterpret_cast<const unsigned char*>(message.data()),
                       message.size(), expected.data(), nullptr),
                  nullptr);
        EXPECT_EQ(HalvaneBSSConfig::F_withSSID_withIterations_withCount(text("key"), text("ssid"),
                                                                        1, index),
                  ByteBuffer(expected));
    }
}

TEST(PassphraseBlock, TakesPassphraseAndSSIDOfAnyLength) {
    for (const std::size_t size : {0u, 1u, 32u, 33u, 64u, 65u, 300u}) {
        const std::string bytes(size, '\xC3');
        EXPECT_EQ(derived(bytes, bytes, 3, 40), derivedByPeer(bytes, bytes, 3, 40)) << size;
    }
}

// Pairs of every allowed length, made of all printable characters and all octets.
TEST(PassphraseHash, AgreesWithAnotherImplementation) {
    std::mt19937 generator(20261121);
    const auto below = [&](std::uint32_t limit) { return generator() % limit; };
    for (std::size_t pair = 0; pair < 200; ++pair) {
        std::string passphrase(8 + pair % 56, ' ');
        if (passphrase.size() == 32) passphrase += ' ';
        for (char& character : passphrase) character = static_cast<char>(0x20 + below(0x5F));
        std::string ssid(1 + pair % 32, ' ');
        for (char& octet : ssid) octet = static_cast<char>(below(0x100));
        const auto key = keyOf(text(passphrase), text(ssid));
        ASSERT_TRUE(key) << passphrase;
        EXPECT_EQ(key->hex(), derivedByPeer(passphrase, ssid, 4096, 32)) << passphrase;
    }
}

TEST(PassphraseHash, NeedsAnSSIDOf1To32Bytes) {
    expectRefused(text("password"), std::nullopt);
    expectRefused(text("password"), text(""));
    expectRefused(text("password"), text(std::string(33, 's')));
    EXPECT_TRUE(keyOf(text("password"), text("s")));
    EXPECT_TRUE(keyOf(text("password"), text(std::string(32, '\0'))));
}

TEST(PassphraseHash, NeedsAPassphraseOf8To63Bytes) {
    expectRefused(std::nullopt, text("IEEE"));
    for (const std::size_t size : {0u, 1u, 7u, 64u, 65u, 1000u}) {
        expectRefused(text(std::string(size, 'p')), text("IEEE"));
    }
    for (const std::size_t size : {8u, 9u, 31u, 33u, 62u, 63u}) {
        EXPECT_TRUE(keyOf(text(std::string(size, 'p')), text("IEEE"))) << size;
    }
}

TEST(PassphraseHash, GivesNothingAndNoErrorFor32Bytes) {
    const Error earlier = {"earlier", 1};
    for (const char character : {'p', '\0', '\xFF'}) {
        std::optional<Error> error = earlier;
        EXPECT_FALSE(HalvaneBSSConfig::wpaPasswordHash_withSSID_error(
            text(std::string(32, character)), text("IEEE"), &error));
        EXPECT_EQ(error, earlier);
    }
    expectRefused(text(std::string(32, 'p')), text(""));  // the SSID is looked at first
}

TEST(PassphraseHash, LeavesTheErrorAloneOnSuccess) {
    const Error earlier = {"earlier", 1};
    std::optional<Error> error = earlier;
    EXPECT_TRUE(
        HalvaneBSSConfig::wpaPasswordHash_withSSID_error(text("password"), text("IEEE"), &error));
    EXPECT_EQ(error, earlier);
}

TEST(PassphraseHash, TakesPrintableCharactersOnly) {
    ASSERT_STREQ(std::setlocale(LC_CTYPE, nullptr), "C");
    for (int byte = 0; byte < 0x100; ++byte) {
        for (const std::size_t place : {0u, 7u}) {
            std::string passphrase = "password";
            passphrase[place] = static_cast<char>(byte);
            if (byte >= 0x20 && byte <= 0x7E) {
                EXPECT_TRUE(keyOf(text(passphrase), text("IEEE"))) << byte;
            } else {
                expectRefused(text(passphrase), text("IEEE"));
            }
        }
    }
}

}  // namespace

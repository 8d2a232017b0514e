#include <gtest/gtest.h>
#include <span>
#include <string>
#include <vector>

#include "halvane/base/byte_buffer.h"
#include "halvane/platform/os/hmac_sha1_internal.h"

#include "tests/support/guarded_bytes.h"

using namespace halvane;
using halvane::testing::GuardedBytes;

namespace {

using Bytes = std::vector<std::uint8_t>;

Bytes bytesOf(const std::string& text) {
    return {text.begin(), text.end()};
}

SHA1Digest codeOf(const Bytes& key, std::span<const std::uint8_t> message) {
    SHA1Digest code;
    HMACSHA1(key).authenticate(message, code);
    return code;
}

std::string hexOf(const SHA1Digest& digest) {
    return ByteBuffer(digest).hex();
}

struct Row {
    Bytes key;
    Bytes message;
    const char* code;
};

// RFC 2202, 3.
const Row kRows[] = {
    {Bytes(20, 0x0B), bytesOf("Hi There"), "b617318655057264e28bc0b6fb378c8ef146be00"},
    {bytesOf("Jefe"), bytesOf("what do ya want for nothing?"),
     "effcdf6ae5eb2fa2d27416d5f184df9c259a7c79"},
    {Bytes(20, 0xAA), Bytes(50, 0xDD), "125d7342b9ac11cd91a39af48aa17b4f63f175d3"},
    {{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18, 19, 20, 21, 22, 23, 24, 25},
     Bytes(50, 0xCD),
     "4c9007f4026250c6bc8414f9bf50c86c2d7235da"},
    {Bytes(20, 0x0C), bytesOf("Test With Truncation"), "4c1a03424b55e07fe7f27be1d58bb9324a9a5a04"},
    {Bytes(80, 0xAA), bytesOf("Test Using Larger Than Block-Size Key - Hash Key First"),
     "aa4ae5e15272d00e95705637ce8a3b55ed402112"},
    {Bytes(80, 0xAA),
     bytesOf("Test Using Larger Than Block-Size Key and Larger Than One Block-Size Data"),
     "e8e99d0f45237d786d6bbaa7965c7808bbff1a91"},
};

TEST(HMACSHA1, GivesTheCodesOfTheStandard) {
    for (const Row& row : kRows) EXPECT_EQ(hexOf(codeOf(row.key, row.message)), row.code);
}

TEST(HMACSHA1, ServesManyMessages) {
    const HMACSHA1 hmac(bytesOf("Jefe"));
    SHA1Digest code;
    hmac.authenticate(bytesOf("something else"), code);
    hmac.authenticate(bytesOf("what do ya want for nothing?"), code);
    EXPECT_EQ(hexOf(code), kRows[1].code);
}

TEST(HMACSHA1, TakesNoKeyAndNoMessage) {
    EXPECT_EQ(hexOf(codeOf({}, {})), "fbdb1d1b18aa6c08324b7d64b71fb76370690e1d");
}

TEST(HMACSHA1, FillsAKeyUpToOneBlockWithZeros) {
    for (const std::size_t size : {1u, 63u, 64u}) {
        Bytes padded(size, 'k');
        const auto code = codeOf(padded, bytesOf("message"));
        padded.resize(64);
        EXPECT_EQ(codeOf(padded, bytesOf("message")), code) << size;
    }
    Bytes longer(64, 'k');
    const auto code = codeOf(longer, bytesOf("message"));
    longer.push_back(0);
    EXPECT_NE(codeOf(longer, bytesOf("message")), code) << "a longer key is hashed";
}

TEST(HMACSHA1, ReadsNothingBehindKeyAndMessage) {
    for (const std::size_t size : {0u, 1u, 19u, 20u, 55u, 56u, 63u, 64u, 65u, 127u, 128u, 129u}) {
        GuardedBytes bytes(size, 0x5A);
        SHA1Digest code;
        HMACSHA1(bytes.bytes()).authenticate(bytes.bytes(), code);
        EXPECT_EQ(code, codeOf(Bytes(size, 0x5A), Bytes(size, 0x5A))) << size;
    }
}

TEST(HMACSHA1Chain, IsTheSumOfCodesOfCodes) {
    const Bytes key = bytesOf("a key");
    const Bytes message = bytesOf("a message");
    const HMACSHA1 hmac(key);
    HMACSHA1Chain chain(hmac, message);
    SHA1Digest code = codeOf(key, message);
    SHA1Digest expected = code;
    for (int step = 0; step < 5; ++step) {
        SHA1Digest sum;
        chain.takeSum(sum);
        EXPECT_EQ(sum, expected) << step;
        chain.stepInner();
        chain.stepOuter();
        code = codeOf(key, code);
        for (std::size_t i = 0; i < expected.size(); ++i) expected[i] ^= code[i];
    }
}

TEST(HMACSHA1Chain, MayTakeTurnsWithAnother) {
    const HMACSHA1 hmac(bytesOf("a key"));
    HMACSHA1Chain first(hmac, bytesOf("1")), second(hmac, bytesOf("2"));
    HMACSHA1Chain alone(hmac, bytesOf("2"));
    for (int step = 0; step < 3; ++step) {
        first.stepInner();
        second.stepInner();
        first.stepOuter();
        second.stepOuter();
        alone.stepInner();
        alone.stepOuter();
    }
    SHA1Digest sum, expected;
    second.takeSum(sum);
    alone.takeSum(expected);
    EXPECT_EQ(sum, expected);
    first.takeSum(sum);
    EXPECT_NE(sum, expected);
}

}  // namespace

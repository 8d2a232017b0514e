#include "halvane/ie/wps.h"

#include <cstddef>
#include <gtest/gtest.h>
#include <set>
#include <span>

#include "tests/support/replaced_system.h"

using halvane::HalvaneWPS;
using halvane::Number;

namespace {

// Wi-Fi Simple Configuration 2.0, clause 7.4.1, on the seven digits, from the last one on.
unsigned checkDigitByTheStandard(unsigned long sevenDigits) {
    unsigned long accum = 0;
    while (sevenDigits > 0) {
        accum += 3 * (sevenDigits % 10);
        sevenDigits /= 10;
        accum += sevenDigits % 10;
        sevenDigits /= 10;
    }
    return static_cast<unsigned>((10 - accum % 10) % 10);
}

TEST(WPSPin, ComputesTheStandardsCheckDigit) {
    for (unsigned long pin = 0; pin < 10000000; pin += 997) {
        const unsigned expected = checkDigitByTheStandard(pin);
        EXPECT_EQ(HalvaneWPS::computeChecksum(Number(pin * 10)), expected) << pin;
        EXPECT_EQ(HalvaneWPS::computeChecksum(Number(pin * 10 + 9)), expected) << pin;
        for (unsigned digit = 0; digit < 10; ++digit) {
            EXPECT_EQ(HalvaneWPS::validateChecksum(Number(pin * 10 + digit)), digit == expected);
        }
    }
}

TEST(WPSPin, ComputesTheCheckDigitOfAnyNumber) {
    EXPECT_EQ(HalvaneWPS::computeChecksum(Number(12345670)), 0u);
    EXPECT_EQ(HalvaneWPS::computeChecksum(Number(100000)), 7u);
    EXPECT_EQ(HalvaneWPS::computeChecksum(Number(99999990)), 5u);
    EXPECT_EQ(HalvaneWPS::computeChecksum(Number(0)), 0u);
    EXPECT_EQ(HalvaneWPS::computeChecksum(std::nullopt), 0u);
    EXPECT_EQ(HalvaneWPS::computeChecksum(Number(4294967296 + 100000)), 7u);
    EXPECT_EQ(HalvaneWPS::computeChecksum(Number(4294967296u + 100000)), 7u);
    EXPECT_EQ(HalvaneWPS::computeChecksum(Number(100000.9)), 7u);
    EXPECT_EQ(HalvaneWPS::computeChecksum(Number(123456780)),
              HalvaneWPS::computeChecksum(Number(23456780)));
    // A negative number counts as the low 32 bits of its two's complement: here 4294867296.
    EXPECT_EQ(HalvaneWPS::computeChecksum(Number(-100000)), 9u);
    EXPECT_EQ(HalvaneWPS::computeChecksum(Number(-1)), 6u);  // of 94967295
    EXPECT_EQ(HalvaneWPS::computeChecksum(Number(INT64_MIN)), 0u);
    EXPECT_EQ(HalvaneWPS::computeChecksum(Number(-100000.0)), 0u) << "a real one is held at 0";
    EXPECT_EQ(HalvaneWPS::computeChecksum(Number(UINT64_MAX)), 6u);  // of 94967295
}

TEST(WPSPin, JudgesAnyNumber) {
    for (const std::int64_t valid : {0L, 12345670L, 100007L, 99999995L, 300012345670L, -12345670L,
                                     -100007L, 123456780L - 123456780L % 100000000L}) {
        EXPECT_TRUE(HalvaneWPS::validateChecksum(Number(valid))) << valid;
    }
    for (const std::int64_t wrong : {12345671L, 100008L, 1L, -1L, -12345671L, 99999999L}) {
        EXPECT_FALSE(HalvaneWPS::validateChecksum(Number(wrong))) << wrong;
    }
    EXPECT_FALSE(HalvaneWPS::validateChecksum(std::nullopt));
    EXPECT_EQ(HalvaneWPS::validateChecksum(Number(123456780)),
              HalvaneWPS::validateChecksum(Number(23456780)));
    EXPECT_FALSE(HalvaneWPS::validateChecksum(Number(INT64_MAX)));  // 54775807: sum 77
    EXPECT_FALSE(HalvaneWPS::validateChecksum(Number(INT64_MIN)));  // 54775808: sum 78
}

TEST(WPSPin, JudgesAnUnsignedNumberAsTheSignedOneOfItsBits) {
    EXPECT_TRUE(HalvaneWPS::validateChecksum(Number(-std::uint64_t{12345670})));
    EXPECT_FALSE(HalvaneWPS::validateChecksum(Number(-std::uint64_t{12345671})));
    EXPECT_FALSE(HalvaneWPS::validateChecksum(Number(UINT64_MAX)));  // -1
    // A real number is limited to INT64_MAX. The bits of this value would be valid.
    EXPECT_TRUE(HalvaneWPS::validateChecksum(Number((std::uint64_t{1} << 63) + 22528)));
    EXPECT_FALSE(HalvaneWPS::validateChecksum(Number(9223372036854775808.0 + 22528)));
}

// While it lives, random bytes are 251, 2, 13, 24, then 35, 46, 58 and one that nobody reads.
class KnownBytes {
  public:
    KnownBytes() {
        halvane::replaceRandomSource([](std::span<std::uint32_t> values) {
            ASSERT_EQ(values.size(), 2u);
            values[0] = 0xFB020D18;
            values[1] = 0x232E3AFF;
        });
    }
    KnownBytes(const KnownBytes&) = delete;
    KnownBytes& operator=(const KnownBytes&) = delete;
    ~KnownBytes() { halvane::replaceRandomSource(nullptr); }
};

TEST(WPSPin, GeneratesItsDigitsFromTheRandomBytesTensFirst) {
    const KnownBytes source;
    EXPECT_EQ(HalvaneWPS::generatePIN(), Number(86543217));
}

TEST(WPSPin, GeneratesFreshValidPINs) {
    constexpr std::size_t kCount = 500;
    std::set<std::int64_t> pins;
    std::set<std::int64_t> topDigits;
    for (std::size_t i = 0; i < kCount; ++i) {
        const Number pin = HalvaneWPS::generatePIN();
        EXPECT_TRUE(pin.isSigned());
        EXPECT_GE(pin.int64(), 0);
        EXPECT_LE(pin.int64(), 99999999);
        EXPECT_TRUE(HalvaneWPS::validateChecksum(pin));
        pins.insert(pin.int64());
        topDigits.insert(pin.int64() / 10000000);
    }
    // The chance of seventeen twins among 500 of 10^7 is below 10^-20, and so is that of a missing
    // top digit.
    EXPECT_GT(pins.size(), kCount - 17);
    EXPECT_EQ(topDigits.size(), 10u);
}

TEST(WPSPin, StoresAPIN) {
    HalvaneWPS wps;
    EXPECT_EQ(wps.pin(), 0u);
    wps.setPin(UINT64_MAX);
    wps.generateDHKeyPair();
    EXPECT_EQ(wps.pin(), UINT64_MAX);
}

}  // namespace

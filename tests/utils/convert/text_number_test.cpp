#include "halvane/utils/convert/text_number.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <gtest/gtest.h>
#include <iterator>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "tests/support/guarded_bytes.h"

using halvane::testing::GuardedBytes;

namespace {

std::int32_t number(std::string_view text, int base) {
    GuardedBytes guarded(text);
    return TextToInt32(guarded.chars(), text.size(), base);
}

TEST(TextToInt32, ReadsANumberOfTheDefaultBase) {
    struct Row {
        const char* text;
        int base;
        std::int32_t value;
    };
    const std::vector<Row> rows = {
        {"123", 10, 123},
        {"-123", 10, -123},
        {"+123", 10, 123},
        {" \t\n\v\f\r-7", 10, -7},
        {"12x", 10, 12},
        {"017", 10, 17},
        {"017", 0, 15},
        {"08", 0, 0},
        {"17", 8, 15},
        {"ff", 16, 255},
        {"FF", 16, 255},
        {"101", 2, 5},
        {"zz", 36, 35 * 36 + 35},
        {"0", 0, 0},
        {"0x1F", 10, 31},  // a prefix goes before the default base
        {"0x1f", 0, 31},
        {"0X1F", 16, 31},
        {"-0x1F", 10, -31},
        {"0x1F", 2, 31},
        {"0b101", 10, 5},
        {"0B101", 0, 5},
        {"0b101", 16, 0xB101},  // to which 'b' is a digit
        {"0x1", 36, 33 * 36 + 1},
        {"0x", 10, 0},
        {"0xg", 16, 0},
        {"0b2", 10, 0},
        {"", 10, 0},
        {"-", 10, 0},
        {"--1", 10, 0},
        {"- 1", 10, 0},
        {"x", 10, 0},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(number(row.text, row.base), row.value) << row.text << " " << row.base;
    }
    EXPECT_EQ(TextToInt32("1234", SIZE_MAX, 10), 1234);
    EXPECT_EQ(TextToInt32("1234", 2, 10), 12);
    EXPECT_EQ(TextToInt32(nullptr, SIZE_MAX, 10), 0);
    EXPECT_EQ(TextToInt32(nullptr, 3, 10), 0);
}

TEST(TextToInt32, StopsAtTheLimits) {
    EXPECT_EQ(number("2147483647", 10), INT32_MAX);
    EXPECT_EQ(number("2147483648", 10), INT32_MAX);
    EXPECT_EQ(number("-2147483648", 10), INT32_MIN);
    EXPECT_EQ(number("-2147483649", 10), INT32_MIN);
    EXPECT_EQ(number("0xFFFFFFFF", 10), INT32_MAX);
    EXPECT_EQ(number(std::string(1000, '9'), 10), INT32_MAX);
    EXPECT_EQ(number("-" + std::string(1000, 'z'), 36), INT32_MIN);
}

TEST(TextToInt32, KnowsNoOtherBases) {
    for (const int base : {-10, -1, 1, 37, INT32_MAX, INT32_MIN}) EXPECT_EQ(number("11", base), 0);
}

// The departures from strtoll: "0x" and "0b" tell the base whatever the default is, and the limits
// are those of 32 bits.
TEST(TextToInt32, AgreesWithTheSystemButForPrefixes) {
    constexpr std::string_view kCharacters = "0011223456789abcdefxzABFXZ-+ \t.";
    constexpr int kBases[] = {0, 2, 3, 8, 10, 16, 35, 36};
    std::mt19937 random(1);
    int compared = 0;
    for (int i = 0; i < 200000; ++i) {
        std::string text(random() % 14, '0');
        const std::size_t alphabet = random() % 2 == 0 ? 11 : kCharacters.size();
        for (char& character : text) character = kCharacters[random() % alphabet];
        if (random() % 2 == 0) text.insert(0, random() % 2 == 0 ? "-" : " +");
        const int base = kBases[random() % std::size(kBases)];
        const bool hasPrefix = text.find_first_of("xXbB") != std::string::npos;
        if (hasPrefix && base < 34 && base != 16) continue;
        const long long expected =
            std::clamp<long long>(std::strtoll(text.c_str(), nullptr, base), INT32_MIN, INT32_MAX);
        ASSERT_EQ(number(text, base), expected) << "'" << text << "' " << base;
        ++compared;
    }
    EXPECT_GT(compared, 100000);
}

}  // namespace

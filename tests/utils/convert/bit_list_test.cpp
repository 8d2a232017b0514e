#include "halvane/utils/convert/bit_list.h"

#include <cstddef>
#include <cstdint>
#include <gtest/gtest.h>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "tests/support/guarded_bytes.h"

using halvane::testing::GuardedBytes;

namespace {

std::string textOf(std::uint32_t bits) {
    GuardedBytes buffer(kBitListTextSize);
    std::size_t length = SIZE_MAX;
    EXPECT_EQ(BitListString_Make(bits, buffer.chars(), &length), buffer.chars());
    EXPECT_EQ(length, std::string(buffer.chars()).size());
    return buffer.chars();
}

HalvaneStatus parse(std::string_view text, std::uint32_t& bits) {
    GuardedBytes guarded(text);
    return BitListString_Parse(guarded.chars(), text.size(), &bits);
}

TEST(BitListString_Make, ListsBitsAscending) {
    EXPECT_EQ(textOf(0x15), "0,2,4");
    EXPECT_EQ(textOf(0), "");
    EXPECT_EQ(textOf(1), "0");
    EXPECT_EQ(textOf(0x80000000), "31");
    EXPECT_EQ(textOf(0x80000401), "0,10,31");
    EXPECT_EQ(textOf(UINT32_MAX).size() + 1, std::size_t{kBitListTextSize});
    char buffer[kBitListTextSize];
    EXPECT_STREQ(BitListString_Make(3, buffer, nullptr), "0,1");
}

TEST(BitListString_Parse, ReadsBitsInAnyOrder) {
    struct Row {
        const char* text;
        std::uint32_t bits;
    };
    const std::vector<Row> rows = {
        {"", 0},          {"0,2,4", 0x15},     {"4,2,0", 0x15}, {"2,2", 4}, {"31", 0x80000000},
        {"007,00", 0x81}, {"0,31", 0x80000001}};
    for (const Row& row : rows) {
        std::uint32_t bits = 0xEEEEEEEE;
        EXPECT_EQ(parse(row.text, bits), kStatusOK) << row.text;
        EXPECT_EQ(bits, row.bits) << row.text;
    }
    std::uint32_t bits = 0;
    EXPECT_EQ(BitListString_Parse("1,30", SIZE_MAX, &bits), kStatusOK);
    EXPECT_EQ(bits, 0x40000002u);
    EXPECT_EQ(BitListString_Parse("1,30", 3, &bits), kStatusOK);
    EXPECT_EQ(bits, 0x0000000Au);
    EXPECT_EQ(BitListString_Parse("1,30", SIZE_MAX, nullptr), kStatusOK);
}

TEST(BitListString_Parse, RefusesWithoutTouchingTheBits) {
    struct Row {
        std::string_view text;
        HalvaneStatus status;
    };
    const std::vector<Row> rows = {
        {",", kStatusMalformed},
        {"1,", kStatusMalformed},
        {",1", kStatusMalformed},
        {"1,,2", kStatusMalformed},
        {" 1", kStatusMalformed},
        {"1 ", kStatusMalformed},
        {"1, 2", kStatusMalformed},
        {"1;2", kStatusMalformed},
        {"-1", kStatusMalformed},
        {"x", kStatusMalformed},
        {std::string_view("1\0", 2), kStatusMalformed},
        {"32", kStatusOutOfRange},
        {"1,32", kStatusOutOfRange},
        {"4294967296", kStatusOutOfRange},
        {"99999999999999999999999999", kStatusOutOfRange},
    };
    for (const Row& row : rows) {
        std::uint32_t bits = 0xEEEEEEEE;
        EXPECT_EQ(parse(row.text, bits), row.status) << row.text;
        EXPECT_EQ(bits, 0xEEEEEEEE);
    }
    EXPECT_EQ(BitListString_Parse(nullptr, SIZE_MAX, nullptr), kStatusUnsupported);
}

TEST(BitListString, SurvivesTheWayToTextAndBack) {
    std::mt19937 random(1);
    for (int i = 0; i < 5000; ++i) {
        const auto bits = static_cast<std::uint32_t>(random() & random());
        std::uint32_t back = ~bits;
        ASSERT_EQ(parse(textOf(bits), back), kStatusOK);
        ASSERT_EQ(back, bits);
    }
}

}  // namespace

#include "halvane/utils/convert/bcd.h"

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

std::string textOf(std::uint64_t value) {
    GuardedBytes buffer(kBCDTextSize);
    EXPECT_EQ(BCDTextFromInt(value, buffer.chars(), buffer.size()), kStatusOK);
    return buffer.chars();
}

struct Read {
    std::uint64_t value;
    std::size_t end;

    bool operator==(const Read&) const = default;
};

Read read(std::string_view text) {
    GuardedBytes guarded(text);
    const char* end = nullptr;
    const std::uint64_t value = BCDTextToInt(guarded.chars(), text.size(), &end);
    return {value, static_cast<std::size_t>(end - guarded.chars())};
}

TEST(BCDText, IsWrittenAndReadBack) {
    struct Row {
        std::uint64_t value;
        const char* text;
    };
    const std::vector<Row> rows = {
        {0, "0"},
        {9, "9"},
        {10, "16"},
        {99, "153"},
        {100, "256"},
        {1234, "4660"},
        {kBCDMax, "11068046444225730969"},  // 0x9999999999999999
    };
    for (const Row& row : rows) {
        EXPECT_EQ(textOf(row.value), row.text);
        EXPECT_EQ(read(row.text), (Read{row.value, std::string_view(row.text).size()}));
    }
    std::mt19937_64 random(1);
    for (int i = 0; i < 5000; ++i) {
        const std::uint64_t value = (random() >> random() % 64) % (kBCDMax + 1);
        ASSERT_EQ(read(textOf(value)).value, value);
    }
}

TEST(BCDTextToInt, EndsBehindTheDigits) {
    EXPECT_EQ(read("153x"), (Read{99, 3}));
    EXPECT_EQ(read("0153"), (Read{99, 4}));
    EXPECT_EQ(read("153 7"), (Read{99, 3}));
    EXPECT_EQ(read(""), (Read{0, 0}));
    EXPECT_EQ(read(" 153"), (Read{0, 0}));
    EXPECT_EQ(read("-1"), (Read{0, 0}));
    EXPECT_EQ(read("+1"), (Read{0, 0}));
    EXPECT_EQ(BCDTextToInt("1539", 3, nullptr), 99u);
    EXPECT_EQ(BCDTextToInt("153", SIZE_MAX, nullptr), 99u);
    const char* end = "";
    EXPECT_EQ(BCDTextToInt(nullptr, SIZE_MAX, &end), 0u);
    EXPECT_EQ(end, nullptr);
}

TEST(BCDTextToInt, CountsHexadecimalDigitsAboveNine) {
    EXPECT_EQ(read("10"), (Read{10, 2}));    // 0xA
    EXPECT_EQ(read("31"), (Read{25, 2}));    // 0x1F
    EXPECT_EQ(read("255"), (Read{165, 3}));  // 0xFF
    EXPECT_EQ(read("18446744073709551615"), (Read{16666666666666665, 20}));
}

TEST(BCDTextToInt, RefusesANumberBeyond64Bits) {
    EXPECT_EQ(read("18446744073709551616"), (Read{0, 0}));
    EXPECT_EQ(read(std::string(1000, '9')), (Read{0, 0}));
}

TEST(BCDTextFromInt, RefusesWithoutTouchingTheBuffer) {
    GuardedBytes buffer(3, 'x');
    EXPECT_EQ(BCDTextFromInt(99, buffer.chars(), 3), kStatusNoRoom);
    EXPECT_EQ(BCDTextFromInt(99, nullptr, 0), kStatusNoRoom);
    EXPECT_EQ(BCDTextFromInt(kBCDMax + 1, buffer.chars(), 3), kStatusOutOfRange);
    EXPECT_EQ(BCDTextFromInt(UINT64_MAX, buffer.chars(), 3), kStatusOutOfRange);
    EXPECT_EQ(buffer.text(), "xxx");
    EXPECT_EQ(BCDTextFromInt(64, buffer.chars(), 3), kStatusNoRoom);  // "100"
    EXPECT_EQ(BCDTextFromInt(12, buffer.chars(), 3), kStatusOK);
    EXPECT_STREQ(buffer.chars(), "18");
}

}  // namespace

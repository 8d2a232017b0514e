#include "halvane/utils/numeric_suffix.h"

#include <cstdint>
#include <gtest/gtest.h>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "halvane/utils/numeric_suffix_internal.h"

#include "tests/support/guarded_bytes.h"

namespace {

using halvane::nextSuffixNumber;
using halvane::testing::GuardedBytes;

constexpr bool kParenthesised = true;
constexpr bool kDashed = false;

struct ReadRow {
    std::string text;
    bool isSuffixed;
    std::uint64_t number;
    std::string name;
};

void expectRead(bool parenthesised, const std::vector<ReadRow>& rows) {
    for (const ReadRow& row : rows) {
        GuardedBytes text{std::string_view(row.text)};
        std::size_t length = 99;
        EXPECT_EQ(ContainsNumericSuffix(text.chars(), text.size(), parenthesised), row.isSuffixed)
            << row.text;
        EXPECT_EQ(RemoveNumericSuffix(text.chars(), text.size(), parenthesised, &length),
                  row.number)
            << row.text;
        EXPECT_EQ(text.text().substr(0, length), row.name) << row.text;
        EXPECT_EQ(RemoveNumericSuffix(row.text.c_str(), SIZE_MAX, parenthesised, &length),
                  row.number);
        EXPECT_EQ(length, row.name.size());
    }
}

TEST(NumericSuffix, IsReadInParentheses) {
    expectRead(kParenthesised, {
                                   {"Name (2)", true, 2, "Name"},
                                   {"Name(2)", true, 2, "Name"},
                                   {"Name  (12)", true, 12, "Name "},  // one space goes
                                   {"a(2)", true, 2, "a"},
                                   {" (2)", true, 2, ""},
                                   {"(12)", true, 12, ""},
                                   {"(2)", false, 0, "(2)"},  // too short
                                   {"Name (007)", true, 7, "Name"},
                                   {"Name ()", false, 0, "Name ()"},
                                   {"Name (2", false, 0, "Name (2"},
                                   {"Name 2)", false, 0, "Name 2)"},
                                   {"Name (a2)", false, 0, "Name (a2)"},
                                   {"Name (2a)", false, 0, "Name (2a)"},
                                   {"Name (2) ", false, 0, "Name (2) "},
                                   {"Name [2)", false, 0, "Name [2)"},
                                   {"Name-2", false, 0, "Name-2"},
                                   {"", false, 0, ""},
                                   {"1234", false, 0, "1234"},
                                   {"123)", false, 0, "123)"},
                                   {"A (2) (3)", true, 3, "A (2)"},
                               });
}

TEST(NumericSuffix, IsReadBehindADash) {
    expectRead(kDashed, {
                            {"name-2", true, 2, "name"},
                            {"name--12", true, 12, "name-"},
                            {"name2", true, 2, "name"},  // the dash may be missing
                            {"name-02", true, 2, "name"},
                            {"name-", false, 0, "name-"},
                            {"name", false, 0, "name"},
                            {"name-2a", false, 0, "name-2a"},
                            {"name (2)", false, 0, "name (2)"},
                            {"", false, 0, ""},
                            {"-7", true, 7, ""},
                            {"7", true, 7, ""},
                        });
}

TEST(NumericSuffix, SaturatesBeyond64Bits) {
    expectRead(kDashed, {
                            {"a-18446744073709551615", true, UINT64_MAX, "a"},
                            {"a-18446744073709551616", true, UINT64_MAX, "a"},
                            {"a-" + std::string(100, '9'), true, UINT64_MAX, "a"},
                            {"a-" + std::string(100, '0') + "5", true, 5, "a"},
                        });
}

// The text within `capacity` bytes of memory, with the number appended.
std::string appended(const std::string& text, std::size_t capacity, std::uint64_t number,
                     bool parenthesised) {
    GuardedBytes buffer(std::max(capacity, text.size()), 'x');
    text.copy(buffer.chars(), text.size());
    std::size_t length = 99;
    EXPECT_EQ(
        AppendNumericSuffix(buffer.chars(), text.size(), capacity, number, parenthesised, &length),
        kStatusOK);
    EXPECT_LE(length, capacity);
    if (length < capacity) {
        EXPECT_EQ(buffer.chars()[length], '\0');
    }
    return std::string(buffer.text().substr(0, length));
}

TEST(NumericSuffix, IsAppended) {
    EXPECT_EQ(appended("Name ", 63, 2, kParenthesised), "Name (2)");
    EXPECT_EQ(appended("Name", 63, 2, kParenthesised), "Name (2)");
    EXPECT_EQ(appended("Name   ", 63, 10, kParenthesised), "Name (10)");
    EXPECT_EQ(appended("   ", 63, 2, kParenthesised), " (2)");
    EXPECT_EQ(appended("", 63, 0, kParenthesised), " (0)");
    EXPECT_EQ(appended("name", 63, 2, kDashed), "name-2");
    EXPECT_EQ(appended("name ", 63, 2, kDashed), "name -2");
    EXPECT_EQ(appended("n", 63, UINT64_MAX, kParenthesised), "n (18446744073709551615)");
    EXPECT_EQ(appended("n", 63, UINT64_MAX, kDashed), "n-18446744073709551615");
}

TEST(NumericSuffix, CutsTheTextToMakeRoom) {
    EXPECT_EQ(appended("abcdefgh", 8, 2, kParenthesised), "abcd (2)");
    EXPECT_EQ(appended("abcdefgh", 8, 10, kParenthesised), "abc (10)");
    EXPECT_EQ(appended("abcdefgh", 8, 2, kDashed), "abcdef-2");
    EXPECT_EQ(appended("abc\xC3\xA9"
                       "fg",
                       8, 2, kParenthesised),
              "abc (2)");  // not half of it
    EXPECT_EQ(appended("ab\xC3\xA9"
                       "fg",
                       8, 2, kParenthesised),
              "ab\xC3\xA9 (2)");
    EXPECT_EQ(appended("abcd", 4, 2, kParenthesised), " (2)");
    EXPECT_EQ(appended("abcd", 2, 2, kDashed), "-2");
    EXPECT_EQ(appended("abcdefgh    ", 8, 2, kParenthesised), "abcd (2)");
}

TEST(NumericSuffix, IsRefusedWhereItDoesNotFitAlone) {
    char text[] = "abcd";
    std::size_t length = 99;
    EXPECT_EQ(AppendNumericSuffix(text, 4, 3, 2, kParenthesised, &length), -6763);
    EXPECT_EQ(AppendNumericSuffix(text, 4, 1, 2, kDashed, &length), -6763);
    EXPECT_EQ(AppendNumericSuffix(text, 4, 0, 2, kDashed, &length), -6763);
    EXPECT_EQ(IncrementNumericSuffix(text, 4, 3, kParenthesised, &length), -6763);
    EXPECT_STREQ(text, "abcd");
    EXPECT_EQ(length, 99u);
}

std::string incremented(const std::string& text, bool parenthesised, std::uint64_t threshold) {
    GuardedBytes buffer(text.size() + 24);
    text.copy(buffer.chars(), text.size());
    std::size_t length = 99;
    EXPECT_EQ(IncrementNumericSuffixEx(buffer.chars(), text.size(), buffer.size(), parenthesised,
                                       &length, threshold),
              kStatusOK);
    return std::string(buffer.text().substr(0, length));
}

TEST(NumericSuffix, IsIncremented) {
    EXPECT_EQ(incremented("Name", kParenthesised, 10), "Name (2)");
    EXPECT_EQ(incremented("Name (2)", kParenthesised, 10), "Name (3)");
    EXPECT_EQ(incremented("Name(9)", kParenthesised, 10), "Name (10)");
    EXPECT_EQ(incremented("Name (0)", kParenthesised, 10), "Name (1)");
    EXPECT_EQ(incremented("Name (99)", kParenthesised, 100), "Name (100)");
    EXPECT_EQ(incremented("name", kDashed, 10), "name-2");
    EXPECT_EQ(incremented("name-2", kDashed, 10), "name-3");
    EXPECT_EQ(incremented("name2", kDashed, 10), "name-3");
    EXPECT_EQ(incremented("Name (2)", kDashed, 10), "Name (2)-2");
    EXPECT_EQ(incremented("", kDashed, 10), "-2");
}

TEST(NumericSuffix, BeginsAgainBehindTheLastNumber) {
    EXPECT_EQ(incremented("a-18446744073709551614", kDashed, UINT64_MAX), "a-18446744073709551615");
    EXPECT_EQ(incremented("a-18446744073709551615", kDashed, UINT64_MAX), "a-2");
    EXPECT_EQ(incremented("a-99999999999999999999", kDashed, 10), "a-2");
}

TEST(NumericSuffix, GrowsByChanceFromTheThresholdOn) {
    const auto none = [] { return std::uint32_t{0}; };
    const auto all = [] { return UINT32_MAX; };
    const auto some = [] { return std::uint32_t{0xFFFFFF85}; };
    EXPECT_EQ(nextSuffixNumber(9, 10, all), 10u);
    EXPECT_EQ(nextSuffixNumber(10, 10, none), 11u);
    EXPECT_EQ(nextSuffixNumber(10, 10, all), 10u + 1 + 127);
    EXPECT_EQ(nextSuffixNumber(1000, 10, some), 1000u + 1 + 5);
    EXPECT_EQ(nextSuffixNumber(0, 0, all), 128u);
    EXPECT_EQ(nextSuffixNumber(UINT64_MAX - 128, 10, all), UINT64_MAX);
    EXPECT_EQ(nextSuffixNumber(UINT64_MAX - 127, 10, all), 2u);
}

// 200 equal numbers in a row come up once in 2^1400.
TEST(NumericSuffix, SpreadsOutWithinTheRange) {
    std::set<std::uint64_t> numbers;
    for (int i = 0; i < 200; ++i) {
        char text[32] = "Name (10)";
        std::size_t length = 0;
        ASSERT_EQ(IncrementNumericSuffix(text, SIZE_MAX, sizeof(text), kParenthesised, &length),
                  kStatusOK);
        ASSERT_EQ(text[length], '\0');
        const auto number = RemoveNumericSuffix(text, length, kParenthesised, &length);
        EXPECT_GE(number, 11u);
        EXPECT_LE(number, 138u);
        numbers.insert(number);
    }
    EXPECT_GT(numbers.size(), 1u);
}

TEST(NumericSuffix, CountsOnBelowTheThresholdOfTheShortForm) {
    char text[32] = "Name";
    std::size_t length = 4;
    for (int number = 2; number <= kNumericSuffixThreshold; ++number) {
        ASSERT_EQ(IncrementNumericSuffix(text, length, sizeof(text), kParenthesised, &length),
                  kStatusOK);
        EXPECT_EQ(text, "Name (" + std::to_string(number) + ")");
    }
}

}  // namespace

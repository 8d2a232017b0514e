#include "halvane/utils/text/numeric_suffix.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <gtest/gtest.h>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "tests/support/guarded_bytes.h"
#include "tests/support/replaced_system.h"

namespace {

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

// Returns the text with the number appended. The text has a stated length, within `capacity` bytes
// of memory.
std::string appended(const std::string& text, std::size_t capacity, std::uint64_t number,
                     bool parenthesised) {
    GuardedBytes buffer(std::max(capacity, text.size()), 'x');
    text.copy(buffer.chars(), text.size());
    std::size_t length = 99;
    EXPECT_EQ(
        AppendNumericSuffix(buffer.chars(), text.size(), capacity, number, parenthesised, &length),
        kStatusOK);
    EXPECT_LE(length, capacity);
    if (length < capacity && length >= text.size()) {
        EXPECT_EQ(buffer.chars()[length], 'x');  // no terminator
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

// Changes the suffix of a terminated text in `capacity` bytes of memory. Returns the text and its
// terminator, or a status if the call fails.
std::string ofTerminated(const std::string& text, std::size_t capacity, auto&& change) {
    GuardedBytes buffer(std::max(capacity, text.size() + 1), 'x');
    text.copy(buffer.chars(), text.size());
    buffer.chars()[text.size()] = '\0';
    std::size_t length = 99;
    const HalvaneStatus status = change(buffer.chars(), SIZE_MAX, capacity, &length);
    if (status != kStatusOK) {
        EXPECT_EQ(length, 99u);
        EXPECT_EQ(buffer.chars(), text);
        return std::to_string(status);
    }
    EXPECT_LT(length, capacity);
    EXPECT_EQ(std::string(buffer.chars()).size(), length);
    return buffer.chars();
}

std::string ofStated(const std::string& text, std::size_t capacity, auto&& change) {
    GuardedBytes buffer(std::max(capacity, text.size()), 'x');
    text.copy(buffer.chars(), text.size());
    std::size_t length = 99;
    const HalvaneStatus status = change(buffer.chars(), text.size(), capacity, &length);
    if (status != kStatusOK) return std::to_string(status);
    EXPECT_EQ(buffer.text().find('\0'), std::string_view::npos);
    return std::string(buffer.text().substr(0, length));
}

struct CapacityRow {
    std::size_t capacity;
    const char* ofStated;
    const char* ofTerminated;
};

TEST(NumericSuffix, IsAppendedWithinTheCapacity) {
    const std::vector<CapacityRow> rows = {
        {3, "-6763", "-6763"},      {4, " (9)", "-6763"},        {5, "a (9)", " (9)"},
        {8, "abcd (9)", "abc (9)"}, {9, "abcd (9)", "abcd (9)"}, {10, "abcd (9)", "abcd (9)"},
    };
    const auto append = [](char* text, std::size_t length, std::size_t capacity,
                           std::size_t* newLength) {
        return AppendNumericSuffix(text, length, capacity, 9, kParenthesised, newLength);
    };
    for (const CapacityRow& row : rows) {
        EXPECT_EQ(ofStated("abcd", row.capacity, append), row.ofStated) << row.capacity;
        EXPECT_EQ(ofTerminated("abcd", row.capacity, append), row.ofTerminated) << row.capacity;
    }
}

TEST(NumericSuffix, IsIncrementedWithinTheCapacity) {
    const std::vector<CapacityRow> rows = {
        {4, "-6763", "-6763"},      {5, " (10)", "-6763"},        {6, "a (10)", " (10)"},
        {8, "abc (10)", "ab (10)"}, {9, "abcd (10)", "abc (10)"}, {10, "abcd (10)", "abcd (10)"},
    };
    const auto increment = [](char* text, std::size_t length, std::size_t capacity,
                              std::size_t* newLength) {
        return IncrementNumericSuffix(text, length, capacity, kParenthesised, newLength);
    };
    for (const CapacityRow& row : rows) {
        EXPECT_EQ(ofStated("abcd (9)", row.capacity, increment), row.ofStated) << row.capacity;
        EXPECT_EQ(ofTerminated("abcd (9)", row.capacity, increment), row.ofTerminated)
            << row.capacity;
    }
}

TEST(NumericSuffix, IsRefusedWhereTheTerminatorHasNoRoom) {
    const auto dash = [](char* text, std::size_t length, std::size_t capacity,
                         std::size_t* newLength) {
        return AppendNumericSuffix(text, length, capacity, 2, kDashed, newLength);
    };
    EXPECT_EQ(ofTerminated("abcd", 0, dash), "-6763");
    EXPECT_EQ(ofTerminated("abcd", 2, dash), "-6763");
    EXPECT_EQ(ofTerminated("abcd", 3, dash), "-2");
    EXPECT_EQ(ofTerminated("a\xC3\xA9", 5, dash), "a-2");
    EXPECT_EQ(ofTerminated("a\xC3\xA9", 6, dash), "a\xC3\xA9-2");
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

// While it lives, every random number is the same.
class ConstantChance {
  public:
    explicit ConstantChance(std::uint32_t number) {
        given = number;
        halvane::replaceRandomSource(
            [](std::span<std::uint32_t> values) { std::ranges::fill(values, given); });
    }
    ConstantChance(const ConstantChance&) = delete;
    ConstantChance& operator=(const ConstantChance&) = delete;
    ~ConstantChance() { halvane::replaceRandomSource(nullptr); }

  private:
    static inline std::uint32_t given = 0;
};

std::string incrementedByChance(const std::string& text, std::uint64_t threshold,
                                std::uint32_t chance) {
    const ConstantChance source(chance);
    return incremented(text, kDashed, threshold);
}

TEST(NumericSuffix, GrowsByChanceFromTheThresholdOn) {
    EXPECT_EQ(incrementedByChance("a-9", 10, UINT32_MAX), "a-10");
    EXPECT_EQ(incrementedByChance("a-10", 10, 0), "a-11");
    EXPECT_EQ(incrementedByChance("a-10", 10, UINT32_MAX), "a-138");  // 10 + 1 + 127
    EXPECT_EQ(incrementedByChance("a-1000", 10, 0xFFFFFF85), "a-1006");
    EXPECT_EQ(incrementedByChance("a-0", 0, UINT32_MAX), "a-128");
    EXPECT_EQ(incrementedByChance("a", 0, UINT32_MAX), "a-2");
    const std::string last = "a-18446744073709551615";
    EXPECT_EQ(incrementedByChance("a-18446744073709551487", 10, UINT32_MAX), last);
    EXPECT_EQ(incrementedByChance("a-18446744073709551488", 10, UINT32_MAX), "a-2");
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
        EXPECT_EQ(std::string(text, length), "Name (" + std::to_string(number) + ")");
    }
}

}  // namespace

// String arrays and numbers in text.
#include <cerrno>

#include "tests/utils/cli_test_support.h"

namespace {

struct Number {
    std::int64_t value;
    int error;
    std::string rest;
};

Number numberIn(const char* text, std::int64_t min, std::int64_t max, int base) {
    const char* end = nullptr;
    int error = -1;
    const auto value = StringToInteger64(text, min, max, base, &end, &error);
    return {value, error, end};
}

TEST(StringToInteger64, AnswersValueErrorAndEnd) {
    struct Row {
        const char* text;
        std::int64_t min, max;
        int base;
        Number expected;
    };
    const Row rows[] = {
        {"42", 0, 100, 10, {42, 0, ""}},
        {"42x", 0, 100, 10, {42, 0, "x"}},
        {"  -7 ", -10, 10, 0, {-7, 0, " "}},
        {"0x10", 0, 100, 0, {16, 0, ""}},
        {"010", 0, 100, 0, {8, 0, ""}},
        {"010", 0, 100, 10, {10, 0, ""}},
        {"z", 0, 100, 36, {35, 0, ""}},
        {"", -1, 1, 10, {0, 0, ""}},
        {"x", 0, 1, 10, {0, 0, "x"}},
        {"0", 0, 0, 10, {0, 0, ""}},
        {"101", 0, 100, 10, {101, ERANGE, ""}},
        {"-1", 0, 100, 10, {-1, ERANGE, ""}},
        {"100", 0, 100, 10, {100, 0, ""}},
        {"9223372036854775807", INT64_MIN, INT64_MAX, 10, {INT64_MAX, 0, ""}},
        {"-9223372036854775808", INT64_MIN, INT64_MAX, 10, {INT64_MIN, 0, ""}},
        {"9223372036854775808", INT64_MIN, INT64_MAX, 10, {INT64_MAX, ERANGE, ""}},
        {"-9223372036854775809!", INT64_MIN, INT64_MAX, 10, {INT64_MIN, ERANGE, "!"}},
        {"1", 0, 1, 1, {0, EINVAL, "1"}},
        {"1", 0, 1, 37, {0, EINVAL, "1"}},
        {"5", 10, 0, 10, {5, ERANGE, ""}},
        {"0b11", 0, 100, 0, {0, 0, "b11"}},  // no prefix, whatever the C library makes of it
        {"0B11", 0, 100, 2, {0, 0, "B11"}},
        {"0b11", 0, 0xFFFF, 16, {0xB11, 0, ""}},
        {"0x", 0, 100, 0, {0, 0, "x"}},
        {"0xg", 0, 100, 16, {0, 0, "xg"}},
        {"- 1", 0, 100, 10, {0, 0, "- 1"}},
        {" \t\n\v\f\r+1", 0, 100, 10, {1, 0, ""}},
        {"7fffffffffffffff", INT64_MIN, INT64_MAX, 16, {INT64_MAX, 0, ""}},
        {"-0x8000000000000000", INT64_MIN, INT64_MAX, 0, {INT64_MIN, 0, ""}},
        {"18446744073709551616", INT64_MIN, INT64_MAX, 10, {INT64_MAX, ERANGE, ""}},
        {"-99999999999999999999999z", INT64_MIN, INT64_MAX, 10, {INT64_MIN, ERANGE, "z"}},
    };
    for (const Row& row : rows) {
        const Number number = numberIn(row.text, row.min, row.max, row.base);
        EXPECT_EQ(number.value, row.expected.value) << row.text;
        EXPECT_EQ(number.error, row.expected.error) << row.text;
        EXPECT_EQ(number.rest, row.expected.rest) << row.text;
    }
    EXPECT_EQ(ERANGE, 34);
}

TEST(StringToInteger64, LeavesErrnoAlone) {
    errno = EPIPE;
    EXPECT_EQ(StringToInteger64("99999999999999999999", 0, 1, 10, nullptr, nullptr), INT64_MAX);
    EXPECT_EQ(errno, EPIPE);
}

TEST(StringToInteger64, RefusesNoText) {
    const char* end = "";
    int error = 0;
    EXPECT_EQ(StringToInteger64(nullptr, 0, 1, 10, &end, &error), 0);
    EXPECT_EQ(error, EINVAL);
    EXPECT_EQ(end, nullptr);
}

TEST(StringArray, AppendsACopyAndFreesAll) {
    char** array = nullptr;
    std::size_t count = 0;
    char text[] = "first";
    EXPECT_EQ(StringArray_Append(&array, &count, text), 0);
    text[0] = 'F';
    EXPECT_EQ(StringArray_Append(&array, &count, "second"), 0);
    ASSERT_EQ(count, 2u);
    EXPECT_STREQ(array[0], "first");
    EXPECT_STREQ(array[1], "second");
    EXPECT_EQ(StringArray_Append(&array, &count, nullptr), -6728);
    EXPECT_EQ(count, 2u);
    StringArray_Free(array, count);
}

TEST(StringArray, FreesNothingWhereThereIsNothing) {
    StringArray_Free(nullptr, 0);
    char* on_stack[] = {nullptr};
    StringArray_Free(on_stack, 0);
}

TEST(ErrQuitDeathTest, PrintsAndExits) {
    EXPECT_EXIT(ErrQuit(3, "error: %s at %.6a\n", "no", "\x02\x1A\x2B\x3C\x4D\x5E"),
                ::testing::ExitedWithCode(3), "^error: no at 02:1A:2B:3C:4D:5E\n$");
}

}  // namespace

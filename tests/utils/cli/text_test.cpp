// String arrays and numbers in text.
#include <cerrno>
#include <cstdlib>
#include <cstring>

#include "tests/support/replaced_heap.h"
#include "tests/utils/cli/test_support.h"

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
        {"0b11", 0, 100, 0, {0, 0, "b11"}},  // not a prefix, even if it is one in C
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

// Counts the requests of StringArray_Append() to the allocator until the end of the scope.
class ArraySizes {
  public:
    ArraySizes() {
        gSizes.clear();
        gGranted = SIZE_MAX;
    }
    ArraySizes(const ArraySizes&) = delete;
    ArraySizes& operator=(const ArraySizes&) = delete;

    // An allocator moves nothing if the requested size equals the current one.
    static std::size_t bytesToMove() {
        std::size_t bytes = 0;
        for (std::size_t i = 1; i < gSizes.size(); ++i) {
            if (gSizes[i] != gSizes[i - 1]) bytes += gSizes[i - 1];
        }
        return bytes;
    }
    static void grant(std::size_t count) { gGranted = count; }

  private:
    static void* reallocate(void* old, std::size_t size) {
        if (gGranted == 0) return nullptr;
        --gGranted;
        gSizes.push_back(size);
        return std::realloc(old, size);
    }

    inline static std::vector<std::size_t> gSizes;
    inline static std::size_t gGranted = SIZE_MAX;
    const halvane::testing::ScopedHeap heap_{{.reallocate = reallocate}};
};

TEST(StringArray, MovesAnEntryAtMostTwice) {
    constexpr std::size_t kCount = 10000;
    const ArraySizes sizes;
    char** array = nullptr;
    std::size_t count = 0;
    for (std::size_t i = 0; i < kCount; ++i) {
        ASSERT_EQ(StringArray_Append(&array, &count, std::to_string(i).c_str()), 0);
        ASSERT_EQ(count, i + 1);
    }
    EXPECT_GT(sizes.bytesToMove(), 0u);
    EXPECT_LE(sizes.bytesToMove(), 2 * kCount * sizeof(char*));
    for (std::size_t i = 0; i < kCount; ++i) EXPECT_EQ(array[i], std::to_string(i));
    StringArray_Free(array, count);
}

TEST(StringArray, MovesAnEntryOfARepeatedOptionAtMostTwice) {
    constexpr std::size_t kCount = 2000;
    char** array = nullptr;
    std::size_t count = 0;
    CLIOption table[] = {
        {.type = kCLIStringArray, .shortName = 'a', .valuePtr = &array, .countPtr = &count},
        {.type = kCLIEnd}};
    halvane::testing::CommandLine line(halvane::testing::Words(kCount, "-ax"));
    const ArraySizes sizes;
    line.parse(table);
    EXPECT_EQ(line.status, 0);
    EXPECT_EQ(count, kCount);
    EXPECT_GT(sizes.bytesToMove(), 0u);
    EXPECT_LE(sizes.bytesToMove(), 2 * kCount * sizeof(char*));
    StringArray_Free(array, count);
}

TEST(StringArray, TakesArraysThatWereMadeElsewhere) {
    for (std::size_t made = 1; made < 20; ++made) {
        std::size_t count = made;
        auto** array = static_cast<char**>(std::calloc(count, sizeof(char*)));
        for (std::size_t i = 0; i < made; ++i) array[i] = ::strdup(std::to_string(i).c_str());
        ASSERT_EQ(StringArray_Append(&array, &count, "last"), 0);
        ASSERT_EQ(StringArray_Append(&array, &count, "very last"), 0);
        ASSERT_EQ(count, made + 2);
        for (std::size_t i = 0; i < made; ++i) EXPECT_EQ(array[i], std::to_string(i));
        EXPECT_STREQ(array[made], "last");
        EXPECT_STREQ(array[made + 1], "very last");
        StringArray_Free(array, count);
    }
}

TEST(StringArray, IsAsItWasWhereMemoryRunsOut) {
    const ArraySizes sizes;
    char** array = nullptr;
    std::size_t count = 0;
    sizes.grant(0);
    EXPECT_EQ(StringArray_Append(&array, &count, "none"), -6728);
    EXPECT_EQ(array, nullptr);
    sizes.grant(2);
    EXPECT_EQ(StringArray_Append(&array, &count, "first"), 0);
    EXPECT_EQ(StringArray_Append(&array, &count, "second"), 0);
    char** const before = array;
    EXPECT_EQ(StringArray_Append(&array, &count, "third"), -6728);
    EXPECT_EQ(array, before);
    ASSERT_EQ(count, 2u);
    EXPECT_STREQ(array[1], "second");
    StringArray_Free(array, count);
    for (std::size_t great : {SIZE_MAX, SIZE_MAX / 8, SIZE_MAX / 16}) {
        EXPECT_EQ(StringArray_Append(&array, &great, "x"), -6728);
    }
}

TEST(StringArray, DoesNotReadAnArrayOfNone) {
    char* on_stack[] = {nullptr};
    char** array = on_stack;
    std::size_t count = 0;
    ASSERT_EQ(StringArray_Append(&array, &count, "first"), 0);
    EXPECT_NE(array, on_stack);
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

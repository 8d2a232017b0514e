#include "halvane/utils/text/compare.h"

#include <cstddef>
#include <cstdint>
#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <vector>

#include "tests/support/guarded_bytes.h"

namespace {

using halvane::testing::GuardedBytes;

struct WholeRow {
    std::string text;
    std::size_t length;
    const char* cstring;
    int exact;
    int ignoringCase;
};

TEST(TextCompare, ComparesATextWithAWholeCString) {
    const std::vector<WholeRow> rows = {
        {"console", 7, "console", 0, 0},
        {"Console", 7, "console", -1, 0},
        {"console", 7, "Console", 1, 0},
        {"Console", 4, "console", -1, -1},  // the C string is longer
        {"consoles", 8, "console", 1, 1},
        {"consoles", 7, "console", 0, 0},
        {"console", SIZE_MAX, "console", 0, 0},
        {"consol", SIZE_MAX, "console", -1, -1},
        {"consoles", SIZE_MAX, "console", 1, 1},
        {"", 0, "", 0, 0},
        {"a", 0, "", 0, 0},
        {"", 0, "a", -1, -1},
        {"a", 1, "", 1, 1},
        // With a stated length a NUL is a byte like any other.
        {std::string("ab\0cd", 5), 5, "ab", 1, 1},
        {std::string("ab\0", 3), 3, "ab", 1, 1},
        {std::string("\0", 1), 1, "", 1, 1},
        {std::string("ab\0cd", 5), 2, "ab", 0, 0},
        {std::string("ab\0cd", 5), SIZE_MAX, "ab", 0, 0},
        {std::string("ab\0cd", 5), 5, "abc", -1, -1},
        {"\x80", 1, "a", 1, 1},  // unsigned
        {"a", 1, "\xFF", -1, -1},
        {"_", 1, "A", 1, -1},  // 'A' is 'a', which is above '_'
        {"\xC4", 1, "\xE4", -1, -1},
    };
    for (const WholeRow& row : rows) {
        EXPECT_EQ(strncmpx(row.text.c_str(), row.length, row.cstring), row.exact)
            << row.text << " " << row.length << " " << row.cstring;
        EXPECT_EQ(strnicmpx(row.text.c_str(), row.length, row.cstring), row.ignoringCase)
            << row.text << " " << row.length << " " << row.cstring;
    }
}

TEST(TextCompare, ComparesTheStartOfAText) {
    const std::vector<WholeRow> rows = {
        {"prefix", SIZE_MAX, "pre", 0, 0},
        {"pre", SIZE_MAX, "pre", 0, 0},
        {"pr", SIZE_MAX, "pre", -1, -1},
        {"PREfix", SIZE_MAX, "pre", -1, 0},
        {"prefix", SIZE_MAX, "PRE", 1, 0},
        {"prz", SIZE_MAX, "pre", 1, 1},
        {"pra", SIZE_MAX, "pre", -1, -1},
        {"anything", SIZE_MAX, "", 0, 0},
        {"", SIZE_MAX, "", 0, 0},
        {"", SIZE_MAX, "a", -1, -1},
        {"prefix", 3, "pre", 0, 0},
        {"prefix", 2, "pre", -1, -1},
        {"prefix", 0, "", 0, 0},
        {"prefix", 0, "p", -1, -1},
        {"pre\xFF", SIZE_MAX, "prea", 1, 1},
        {std::string("pre\0fix", 7), 7, "pre", 0, 0},
        {std::string("pre\0fix", 7), 7, "prefix", -1, -1},
        {std::string("\0", 1), 1, "", 0, 0},
    };
    for (const WholeRow& row : rows) {
        EXPECT_EQ(strncmp_prefix(row.text.c_str(), row.length, row.cstring), row.exact)
            << row.text << " " << row.cstring;
        EXPECT_EQ(strnicmp_prefix(row.text.c_str(), row.length, row.cstring), row.ignoringCase)
            << row.text << " " << row.cstring;
        if (row.length != SIZE_MAX) continue;
        EXPECT_EQ(strcmp_prefix(row.text.c_str(), row.cstring), row.exact) << row.text;
        EXPECT_EQ(stricmp_prefix(row.text.c_str(), row.cstring), row.ignoringCase) << row.text;
    }
}

TEST(TextCompare, ComparesTheEndOfAText) {
    const std::vector<WholeRow> rows = {
        {"file.txt", 8, ".txt", 0, 0},
        {"file.txt", SIZE_MAX, ".txt", 0, 0},
        {"file.TXT", 8, ".txt", -1, 0},
        {"file.txt", 8, ".TXT", 1, 0},
        {"file.txt", 7, ".txt", 1, 1},
        {"file.txt", 7, ".tx", 0, 0},
        {"txt", SIZE_MAX, ".txt", -1, -1},
        {"zzz", SIZE_MAX, "aaaa", -1, -1},
        {"", 0, "", 0, 0},
        {"", 0, "a", -1, -1},
        {"a", 1, "", 0, 0},
        {"xb", SIZE_MAX, "a", 1, 1},
        {"x\xFF", SIZE_MAX, "a", 1, 1},
        {std::string("a.b\0.c", 6), 6, ".c", 0, 0},
        {std::string("a.b\0.c", 6), 6, ".b", 1, 1},
        {std::string("a.b\0", 4), 4, ".b", 1, 1},  // 'b' is above '.'
        {std::string(".b\0", 3), 3, "ab", 1, 1},
        {std::string("a.b\0.c", 6), SIZE_MAX, ".b", 0, 0},
    };
    for (const WholeRow& row : rows) {
        EXPECT_EQ(strncmp_suffix(row.text.c_str(), row.length, row.cstring), row.exact)
            << row.text << " " << row.cstring;
        EXPECT_EQ(strnicmp_suffix(row.text.c_str(), row.length, row.cstring), row.ignoringCase)
            << row.text << " " << row.cstring;
    }
}

TEST(TextCompare, ComparesMemoryBeyondNulls) {
    EXPECT_EQ(memicmp("aB\0c", "Ab\0C", 4), 0);
    EXPECT_EQ(memicmp("ab\0c", "ab\0d", 4), -1);
    EXPECT_EQ(memicmp("ab\0d", "ab\0c", 4), 1);
    EXPECT_EQ(memicmp("abX", "abY", 2), 0);
    EXPECT_EQ(memicmp("\x80", "\x7F", 1), 1);
    EXPECT_EQ(memicmp(nullptr, nullptr, 0), 0);
}

// Of all bytes, only the 26 capital letters equal another byte.
TEST(TextCompare, FoldsTheLettersOfAsciiAndNoOthers) {
    for (int a = 1; a < 256; ++a) {
        for (int b = 1; b < 256; ++b) {
            const char first = static_cast<char>(a);
            const char second[] = {static_cast<char>(b), '\0'};
            const auto lower = [](int c) { return c >= 'A' && c <= 'Z' ? c + 32 : c; };
            const int order = (lower(a) > lower(b)) - (lower(a) < lower(b));
            ASSERT_EQ(memicmp(&first, second, 1), order) << a << " " << b;
            ASSERT_EQ(strnicmpx(&first, 1, second), order) << a << " " << b;
        }
    }
}

TEST(TextCompare, ReadsNothingPastTheLength) {
    GuardedBytes text(std::string_view("console"));
    EXPECT_EQ(strncmpx(text.chars(), 7, "console"), 0);
    EXPECT_EQ(strnicmpx(text.chars(), 7, "CONSOLE"), 0);
    EXPECT_EQ(strnicmpx(text.chars(), 7, "consoles"), -1);
    EXPECT_EQ(strncmp_prefix(text.chars(), 7, "consoles"), -1);
    EXPECT_EQ(strnicmp_prefix(text.chars(), 7, "CONSOLE"), 0);
    EXPECT_EQ(strncmp_suffix(text.chars(), 7, "sole"), 0);
    EXPECT_EQ(strnicmp_suffix(text.chars(), 7, "SOLE"), 0);
    EXPECT_EQ(memicmp(text.chars(), "CONSOLE", 7), 0);
    GuardedBytes terminated = GuardedBytes::terminated("con");
    EXPECT_EQ(strnicmpx(terminated.chars(), SIZE_MAX, "console"), -1);
    EXPECT_EQ(stricmp_prefix(terminated.chars(), "console"), -1);
    EXPECT_EQ(strncmp_suffix(terminated.chars(), SIZE_MAX, "on"), 0);
    EXPECT_EQ(strncmpx("console", 7, terminated.chars()), 1);
}

}  // namespace

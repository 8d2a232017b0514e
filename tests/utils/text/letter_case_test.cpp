#include "halvane/utils/text/letter_case.h"

#include <cstdint>
#include <gtest/gtest.h>
#include <string>
#include <string_view>

#include "tests/support/guarded_bytes.h"

namespace {

using halvane::testing::GuardedBytes;

TEST(LetterCase, ChangesLettersInPlace) {
    char text[] = "Name 42 [\xC4]";
    EXPECT_EQ(tolowerstr(text, SIZE_MAX), text);
    EXPECT_STREQ(text, "name 42 [\xC4]");
    EXPECT_EQ(toupperstr(text, SIZE_MAX), text);
    EXPECT_STREQ(text, "NAME 42 [\xC4]");
}

TEST(LetterCase, StopsAtTheLengthAndAtANul) {
    char text[] = "ABCD";
    tolowerstr(text, 2);
    EXPECT_STREQ(text, "abCD");
    char withNul[] = "AB\0CD";
    tolowerstr(withNul, 5);
    EXPECT_EQ(std::string(withNul, 5), std::string("ab\0CD", 5));
    toupperstr(withNul, 0);
    EXPECT_STREQ(withNul, "ab");
}

TEST(LetterCase, ChangesTheLettersOfAsciiAndNoOthers) {
    for (int code = 1; code < 256; ++code) {
        const bool isLower = code >= 'a' && code <= 'z';
        const bool isUpper = code >= 'A' && code <= 'Z';
        char lowered = static_cast<char>(code);
        char raised = static_cast<char>(code);
        tolowerstr(&lowered, 1);
        toupperstr(&raised, 1);
        EXPECT_EQ(lowered, static_cast<char>(isUpper ? code + 32 : code));
        EXPECT_EQ(raised, static_cast<char>(isLower ? code - 32 : code));
    }
}

TEST(LetterCase, TouchesNothingPastTheLength) {
    GuardedBytes text(std::string_view("ABC"));
    tolowerstr(text.chars(), 3);
    EXPECT_EQ(text.text(), "abc");
    toupperstr(text.chars(), 3);
    EXPECT_EQ(text.text(), "ABC");
}

}  // namespace

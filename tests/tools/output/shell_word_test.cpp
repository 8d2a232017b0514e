#include "tools/halvane/output/shell_word.h"

#include <gtest/gtest.h>

using halvane::tool::shellWord;

namespace {

TEST(ShellWord, StandsBetweenQuotesWhereItMust) {
    EXPECT_EQ(shellWord("2.4"), "2.4");
    EXPECT_EQ(shellWord("02:00:00:00:00:01/24"), "02:00:00:00:00:01/24");
    EXPECT_EQ(shellWord("KITRI*"), "'KITRI*'");
    EXPECT_EQ(shellWord("my net"), "'my net'");
    EXPECT_EQ(shellWord("it's"), "'it'\\''s'");
    EXPECT_EQ(shellWord(""), "''");
    EXPECT_EQ(shellWord("a\\*"), "'a\\*'");
}

TEST(ShellWord, CannotCommandATerminal) {
    EXPECT_EQ(shellWord("\x1B[2J"), "$'\\x1B[2J'");
    EXPECT_EQ(shellWord("\xFFit's \\"), "$'\\xFFit\\'s \\\\'");
    EXPECT_EQ(shellWord("\xE2\x80\xAE"), "$'\\xE2\\x80\\xAE'");  // right-to-left override
}

}  // namespace

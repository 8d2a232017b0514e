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
}

}  // namespace

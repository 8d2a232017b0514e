#include "tools/halvane/output/wrapped_text.h"

#include <cstddef>
#include <gtest/gtest.h>
#include <string>
#include <vector>

using namespace halvane::tool;

namespace {

using Lines = std::vector<std::string>;

Lines linesOf(const std::vector<TextPart>& parts, std::size_t width) {
    Lines lines;
    for (const ShownText& line : wrapped(parts, width)) lines.push_back(line.octets());
    return lines;
}

TEST(WrappedText, JoinsPartsThatFit) {
    EXPECT_EQ(linesOf({TextPart::own("one two"), TextPart::own("three")}, 14),
              (Lines{"one two; three"}));
    EXPECT_EQ(linesOf({TextPart::own("one two"), TextPart::own("three")}, 13),
              (Lines{"one two", "three"}));
    EXPECT_EQ(linesOf({TextPart::own("one"), TextPart::own("two", ", ")}, 80), (Lines{"one, two"}));
    EXPECT_EQ(linesOf({}, 80), Lines{});
}

TEST(WrappedText, BeginsALineWhereAPartWantsOne) {
    TextPart own = TextPart::own("two");
    own.beginsLine = true;
    EXPECT_EQ(linesOf({TextPart::own("one"), own}, 80), (Lines{"one", "two"}));
    EXPECT_EQ(linesOf({own}, 80), (Lines{"two"}));
}

// The next part goes on where the last line of a long one has room.
TEST(WrappedText, BreaksALongPartAtItsBlanks) {
    EXPECT_EQ(linesOf({TextPart::own("one two three four"), TextPart::own("five")}, 10),
              (Lines{"one two", "three four", "five"}));
    EXPECT_EQ(linesOf({TextPart::own("one two three"), TextPart::own("4")}, 9),
              (Lines{"one two", "three; 4"}));
}

TEST(WrappedText, BreaksALongWordBetweenItsUnits) {
    EXPECT_EQ(linesOf({TextPart::own("abcdefgh")}, 3), (Lines{"abc", "def", "gh"}));
    // Two cells each; an escape is one unit.
    EXPECT_EQ(linesOf({TextPart::foreign(shownText("\u4F60\u597D\u4F60", {}))}, 5),
              (Lines{"\u4F60\u597D", "\u4F60"}));
    EXPECT_EQ(linesOf({TextPart::foreign(shownText("ab\x01", {}))}, 5), (Lines{"ab", "\\x01"}));
}

TEST(WrappedText, KeepsATextOfAnotherWhole) {
    EXPECT_EQ(linesOf({TextPart::own("one"), TextPart::foreign(shownText("a b", {}))}, 6),
              (Lines{"one", "a b"}));
}

}  // namespace

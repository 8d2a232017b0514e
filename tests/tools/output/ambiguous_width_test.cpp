#include "tools/halvane/output/ambiguous_width.h"

#include <gtest/gtest.h>

#include "tools/halvane/output/unicode.h"

using namespace halvane::tool;

namespace {

TEST(AmbiguousWidth, HasBothEndsOfItsRanges) {
    EXPECT_FALSE(isOfAmbiguousWidth(U'\u257F'));
    EXPECT_TRUE(isOfAmbiguousWidth(U'\u2580'));
    EXPECT_TRUE(isOfAmbiguousWidth(U'\u258F'));
    EXPECT_FALSE(isOfAmbiguousWidth(U'\u2590'));
    EXPECT_TRUE(isOfAmbiguousWidth(U'\u00A1'));
    EXPECT_FALSE(isOfAmbiguousWidth(U'\u00A0'));
    EXPECT_TRUE(isOfAmbiguousWidth(U'\U0001F1AC'));
    EXPECT_FALSE(isOfAmbiguousWidth(U'\U0001F1AD'));
}

TEST(AmbiguousWidth, LeavesOutTheEndsOfUnicode) {
    EXPECT_FALSE(isOfAmbiguousWidth(0));
    EXPECT_FALSE(isOfAmbiguousWidth(U'A'));
    EXPECT_FALSE(isOfAmbiguousWidth(U'\U0010FFFF'));
}

// Wide characters and marks have a width that nobody doubts.
TEST(AmbiguousWidth, HasNoneThatIsWideOrCombining) {
    std::size_t count = 0;
    for (char32_t character = 0; character <= 0x10FFFF; ++character) {
        if (!isOfAmbiguousWidth(character)) continue;
        ++count;
        EXPECT_EQ(cellsOf(character, AmbiguousWidth::One), 1u)
            << std::hex << static_cast<unsigned>(character);
    }
    EXPECT_GT(count, 800u);
}

}  // namespace

#include "tools/halvane/output/text_style.h"

#include <gtest/gtest.h>
#include <string>

#include "tools/halvane/output/glyphs.h"
#include "tools/halvane/output/surroundings.h"
#include "tools/halvane/output/theme.h"

using namespace halvane::tool;

namespace {

TEST(TextStyle, HasTheWidthOfItsSurroundings) {
    EXPECT_EQ(textStyleFor({.columns = 132}).width, 132u);
    EXPECT_EQ(textStyleFor({}).width, 80u);
}

TEST(TextStyle, TakesTheSignsOfTheLocale) {
    EXPECT_EQ(textStyleFor({.isUTF8 = true}).glyphs, GlyphSet::UTF8);
    EXPECT_FALSE(textStyleFor({.isUTF8 = true}).rules.isASCII);
    EXPECT_EQ(textStyleFor({}).glyphs, GlyphSet::ASCII);
    EXPECT_TRUE(textStyleFor({}).rules.isASCII);
    const TextStyle wished = textStyleFor({.isUTF8 = true}, ColorChoice::Auto, {.isASCII = true});
    EXPECT_EQ(wished.glyphs, GlyphSet::ASCII);
    EXPECT_TRUE(wished.rules.isASCII);
}

TEST(TextStyle, HasColoursWhereTheyAreWanted) {
    const auto painted = [](const TextStyle& style) {
        return style.theme.painted("x", Meaning::Danger);
    };
    const Surroundings terminal = {.isTerminal = true, .term = "xterm"};
    EXPECT_EQ(painted(textStyleFor(terminal)), "\x1B[1;31mx\x1B[m");
    EXPECT_EQ(painted(textStyleFor(terminal, ColorChoice::Never)), "x");
    EXPECT_EQ(painted(textStyleFor({})), "x");
    EXPECT_NE(painted(textStyleFor({}, ColorChoice::Always)), "x");
}

}  // namespace

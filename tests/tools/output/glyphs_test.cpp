#include "tools/halvane/output/glyphs.h"

#include <gtest/gtest.h>

#include "tools/halvane/output/cell_text.h"

using namespace halvane::tool;

namespace {

std::string joined(std::span<const char* const> signs) {
    std::string text;
    for (const char* sign : signs) text += sign;
    return text;
}

TEST(Glyphs, AreTheSignsOfEachSet) {
    const Glyphs& utf8 = glyphsOf(GlyphSet::UTF8);
    EXPECT_EQ(joined(utf8.barSteps), "\u258F\u258E\u258D\u258C\u258B\u258A\u2589\u2588");
    EXPECT_EQ(joined(utf8.historySteps), "\u2581\u2582\u2583\u2584\u2585\u2586\u2587\u2588");
    EXPECT_STREQ(utf8.rising, "\u2191");
    EXPECT_STREQ(utf8.falling, "\u2193");
    EXPECT_STREQ(utf8.cut, "\u2026");
    EXPECT_STREQ(utf8.twice80, "2\u00D780");

    const Glyphs& console = glyphsOf(GlyphSet::LinuxConsole);
    EXPECT_EQ(joined(console.barSteps), "\u258C\u2588");
    EXPECT_EQ(joined(console.historySteps), "\u2584\u2588");
    EXPECT_STREQ(console.rising, "\u2191");
    EXPECT_STREQ(console.cut, "~");
    EXPECT_STREQ(console.twice80, "2x80");

    const Glyphs& ascii = glyphsOf(GlyphSet::ASCII);
    EXPECT_EQ(joined(ascii.barSteps), "#");
    EXPECT_STREQ(ascii.barRest, ".");
    EXPECT_EQ(joined(ascii.historySteps), "_.-=*#");
    EXPECT_STREQ(ascii.rising, "^");
    EXPECT_STREQ(ascii.falling, "v");
    EXPECT_STREQ(ascii.cut, "~");
}

TEST(Glyphs, TakeOneCellEach) {
    for (const GlyphSet set : {GlyphSet::UTF8, GlyphSet::LinuxConsole, GlyphSet::ASCII}) {
        const Glyphs& glyphs = glyphsOf(set);
        for (const auto& signs : {glyphs.barSteps, glyphs.historySteps}) {
            for (const char* sign : signs) EXPECT_EQ(cellsOf(sign, {}), 1u);
        }
        for (const char* sign : {glyphs.rising, glyphs.falling, glyphs.cut}) {
            EXPECT_EQ(cellsOf(sign, {}), 1u);
        }
        EXPECT_EQ(cellsOf(glyphs.twice80, {}), 4u);
    }
}

TEST(GlyphSet, FollowsLocaleAndTerminal) {
    EXPECT_EQ(glyphSetFor({.isUTF8 = true, .term = "xterm"}, {}), GlyphSet::UTF8);
    EXPECT_EQ(glyphSetFor({.isUTF8 = true, .term = ""}, {}), GlyphSet::UTF8);
    EXPECT_EQ(glyphSetFor({.isUTF8 = true, .term = "linux"}, {}), GlyphSet::LinuxConsole);
    EXPECT_EQ(glyphSetFor({.isUTF8 = false, .term = "linux"}, {}), GlyphSet::ASCII);
    EXPECT_EQ(glyphSetFor({.isUTF8 = false, .term = "xterm"}, {}), GlyphSet::ASCII);
}

TEST(GlyphSet, FollowsWishes) {
    const Surroundings utf8 = {.isUTF8 = true, .term = "xterm"};
    EXPECT_EQ(glyphSetFor(utf8, {.isASCII = true}), GlyphSet::ASCII);
    EXPECT_EQ(glyphSetFor(utf8, {.ambiguous = AmbiguousWidth::Two}), GlyphSet::ASCII);
}

TEST(TextRules, EscapeWhatTheLocaleHasNot) {
    EXPECT_FALSE(textRulesFor({.isUTF8 = true}, {}).isASCII);
    EXPECT_TRUE(textRulesFor({.isUTF8 = false}, {}).isASCII);
    EXPECT_TRUE(textRulesFor({.isUTF8 = true}, {.isASCII = true}).isASCII);
    const TextRules wide = textRulesFor({.isUTF8 = true}, {.ambiguous = AmbiguousWidth::Two});
    EXPECT_FALSE(wide.isASCII);
    EXPECT_EQ(wide.ambiguous, AmbiguousWidth::Two);
}

}  // namespace

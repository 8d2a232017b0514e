#include "tools/halvane/output/theme.h"

#include <gtest/gtest.h>

using namespace halvane::tool;

namespace {

constexpr TextRules kPlain = {};
const Theme k16(Palette::Colors16, true);
const Theme k256(Palette::Colors256, true);

Surroundings terminal(std::string term, std::string colorTerm = "", std::string noColor = "") {
    return {.isTerminal = true,
            .isUTF8 = true,
            .term = std::move(term),
            .colorTerm = std::move(colorTerm),
            .noColor = std::move(noColor)};
}

TEST(Palette, FollowsTheTerminal) {
    const auto automatic = [](const Surroundings& around) {
        return paletteFor(ColorChoice::Auto, around);
    };
    EXPECT_EQ(automatic(terminal("xterm")), Palette::Colors16);
    EXPECT_EQ(automatic(terminal("linux")), Palette::Colors16);
    EXPECT_EQ(automatic(terminal("xterm-256color")), Palette::Colors256);
    EXPECT_EQ(automatic(terminal("screen.256color-bce")), Palette::Colors256);
    EXPECT_EQ(automatic(terminal("xterm", "truecolor")), Palette::Colors256);
    EXPECT_EQ(automatic(terminal("xterm", "24bit")), Palette::Colors256);
    EXPECT_EQ(automatic(terminal("xterm", "yes")), Palette::Colors16);
    EXPECT_EQ(automatic(terminal("dumb")), Palette::None);
    EXPECT_EQ(automatic(terminal("")), Palette::None);
    EXPECT_EQ(automatic(terminal("", "truecolor")), Palette::None);
    EXPECT_EQ(automatic(terminal("xterm-256color", "", "1")), Palette::None);
    EXPECT_EQ(automatic(terminal("xterm-256color", "", "0")), Palette::None);
    EXPECT_EQ(automatic({.isTerminal = false, .term = "xterm"}), Palette::None);
}

TEST(Palette, FollowsTheChoice) {
    EXPECT_EQ(paletteFor(ColorChoice::Always, {}), Palette::Colors16);
    EXPECT_EQ(paletteFor(ColorChoice::Always, terminal("dumb", "", "1")), Palette::Colors16);
    EXPECT_EQ(paletteFor(ColorChoice::Always, {.term = "tmux-256color"}), Palette::Colors256);
    EXPECT_EQ(paletteFor(ColorChoice::Never, terminal("xterm-256color")), Palette::None);
}

struct Row {
    Meaning meaning;
    const char* of16;
    const char* of256;
};

TEST(Theme, PaintsByMeaning) {
    for (const Row& row : {
             Row{Meaning::Danger, "1;31", "1;38;5;196"},
             Row{Meaning::Caution, "33", "38;5;130"},
             Row{Meaning::Good, "32", "38;5;30"},
             Row{Meaning::StrongSignal, "1;36", "1;38;5;32"},
             Row{Meaning::FairSignal, "36", "38;5;32"},
             Row{Meaning::FaintBar, "2", "38;5;243"},
             Row{Meaning::Current, "1;32", "1;38;5;30"},
             Row{Meaning::Secondary, "2", "38;5;243"},
             Row{Meaning::Header, "1", "1"},
         }) {
        EXPECT_EQ(k16.painted("WEP", row.meaning), "\x1B[" + std::string(row.of16) + "mWEP\x1B[m");
        EXPECT_EQ(k256.painted("WEP", row.meaning),
                  "\x1B[" + std::string(row.of256) + "mWEP\x1B[m");
        EXPECT_EQ(Theme().painted("WEP", row.meaning), "WEP");
    }
    EXPECT_EQ(k16.painted("WPA2", Meaning::Plain), "WPA2");
}

TEST(Theme, PaintsNoBlankAtTheEnds) {
    EXPECT_EQ(k16.painted("", Meaning::Danger), "");
    EXPECT_EQ(k16.painted("  ", Meaning::Danger), "  ");
    EXPECT_EQ(k16.painted(" a b ", Meaning::Header), " \x1B[1ma b\x1B[m ");
}

TEST(Theme, DimsWhatTheToolAdded) {
    const ShownText text = shownText("\xC6\xC6TME", kPlain);
    EXPECT_EQ(k16.painted(text, Meaning::Plain), "\x1B[2m\\xC6\\xC6\x1B[mTME");
    EXPECT_EQ(k16.painted(text, Meaning::Current), "\x1B[2m\\xC6\\xC6\x1B[m\x1B[1;32mTME\x1B[m");
    EXPECT_EQ(k256.painted(shownName("", kPlain), Meaning::Plain), "\x1B[38;5;243m(hidden)\x1B[m");
    EXPECT_EQ(Theme().painted(text, Meaning::Current), "\\xC6\\xC6TME");
}

TEST(Theme, IsolatesTextFromRightToLeftOnATerminal) {
    const std::string cafe = "\u05D1\u05D9\u05EA 2";
    const ShownText text = shownText(cafe, kPlain);
    EXPECT_EQ(Theme(Palette::None, true).painted(text, Meaning::Plain), "\u2068" + cafe + "\u2069");
    EXPECT_EQ(Theme(Palette::Colors16, false).painted(text, Meaning::Plain), cafe);
    EXPECT_EQ(k16.painted(text, Meaning::Good), "\u2068\x1B[32m" + cafe + "\x1B[m\u2069");
}

TEST(Theme, MovesTheCursorWithColoursOnATerminal) {
    EXPECT_TRUE(k16.movesCursor());
    EXPECT_FALSE(Theme(Palette::None, true).movesCursor());
    EXPECT_FALSE(Theme(Palette::Colors16, false).movesCursor());
    EXPECT_TRUE(Theme(ColorChoice::Auto, terminal("xterm")).movesCursor());
    EXPECT_FALSE(Theme(ColorChoice::Auto, terminal("xterm", "", "1")).movesCursor());
}

TEST(SignalMeaning, FadesWithTheSignal) {
    EXPECT_EQ(meaningOfSignal(-55), Meaning::StrongSignal);
    EXPECT_EQ(meaningOfSignal(-56), Meaning::FairSignal);
    EXPECT_EQ(meaningOfSignal(-67), Meaning::FairSignal);
    EXPECT_EQ(meaningOfSignal(-68), Meaning::Plain);
    EXPECT_EQ(meaningOfSignal(-90), Meaning::Plain);
    EXPECT_EQ(meaningOfBar(-55), Meaning::StrongSignal);
    EXPECT_EQ(meaningOfBar(-67), Meaning::FairSignal);
    EXPECT_EQ(meaningOfBar(-68), Meaning::Plain);
    EXPECT_EQ(meaningOfBar(-78), Meaning::Plain);
    EXPECT_EQ(meaningOfBar(-79), Meaning::FaintBar);
}

}  // namespace

#include "tools/halvane/output/shown_text.h"

#include <algorithm>
#include <gtest/gtest.h>

using namespace halvane::tool;
using halvane::MacAddress;

namespace {

using namespace std::string_literals;
using namespace std::string_view_literals;

constexpr TextRules kPlain = {};
constexpr TextRules kASCII = {.isASCII = true};

std::string shown(std::string_view octets, const TextRules& rules = kPlain) {
    return shownText(octets, rules).octets();
}

// Returns the octets of a text with what the tool added between braces.
std::string marked(const ShownText& text) {
    std::string result;
    std::string_view rest = text.octets();
    bool isAdded = false;
    for (const TextUnit& unit : text.units()) {
        if (unit.isAdded != isAdded) result += unit.isAdded ? "{" : "}";
        isAdded = unit.isAdded;
        result += rest.substr(0, unit.size);
        rest.remove_prefix(unit.size);
    }
    return result + (isAdded ? "}" : "");
}

std::string utf8(char32_t code) {
    std::string text;
    if (code < 0x80) return text += static_cast<char>(code);
    const auto add = [&](unsigned value) { text += static_cast<char>(value); };
    if (code < 0x800) {
        add(0xC0 | code >> 6);
    } else if (code < 0x10000) {
        add(0xE0 | code >> 12);
        add(0x80 | (code >> 6 & 0x3F));
    } else {
        add(0xF0 | code >> 18);
        add(0x80 | (code >> 12 & 0x3F));
        add(0x80 | (code >> 6 & 0x3F));
    }
    add(0x80 | (code & 0x3F));
    return text;
}

// Whether the units make up the text, the sums are theirs, and no octet commands the terminal.
void expectSound(const ShownText& text) {
    std::size_t size = 0;
    std::size_t cells = 0;
    for (const TextUnit& unit : text.units()) {
        EXPECT_GT(unit.size, 0u);
        size += unit.size;
        cells += unit.cells;
    }
    EXPECT_EQ(size, text.octets().size());
    EXPECT_EQ(cells, text.cells());
    EXPECT_TRUE(std::ranges::none_of(
        text.octets(), [](char octet) { return (octet >= 0 && octet < ' ') || octet == '\x7F'; }));
}

TEST(ShownText, LeavesWhatIsVisible) {
    EXPECT_EQ(shown("Samsung_2.4G"), "Samsung_2.4G");
    EXPECT_EQ(shown("Caf\u00E9 \u2615"), "Caf\u00E9 \u2615");
    EXPECT_EQ(shown("\u65E5\u672C\u8A9E\u30AB\u30D5\u30A7 5G"),
              "\u65E5\u672C\u8A9E\u30AB\u30D5\u30A7 5G");
    EXPECT_EQ(shown("[air purifier]_E30AJT1013767Z"), "[air purifier]_E30AJT1013767Z");
    EXPECT_EQ(shown(""), "");
}

TEST(ShownText, EscapesControlsAndStrayOctets) {
    EXPECT_EQ(shown("a\tb\x1B[31m"), R"(a\x09b\x1B[31m)");
    EXPECT_EQ(shown("\0\x1F\x7F"sv), R"(\x00\x1F\x7F)");
    EXPECT_EQ(shown("\xC6TME Enterprise"), R"(\xC6TME Enterprise)");
    EXPECT_EQ(shown("\xB2\xE2\xCA\xD4"), R"(\xB2\xE2\xCA\xD4)");
    EXPECT_EQ(shown("\xC0\x80"), R"(\xC0\x80)");          // overlong
    EXPECT_EQ(shown("\xED\xA0\x80"), R"(\xED\xA0\x80)");  // surrogate
    EXPECT_EQ(shown("\xE6\x97"), R"(\xE6\x97)");          // cut off
}

TEST(ShownText, DoublesBackslashes) {
    EXPECT_EQ(marked(shownText(R"(\x41)", kPlain)), R"({\\}x41)");
    EXPECT_EQ(marked(shownText("A\x01"
                               "B",
                               kPlain)),
              R"(A{\x01}B)");
}

TEST(ShownText, NamesWhatHidesOrTurnsTheLine) {
    EXPECT_EQ(shown("\u202Egnp.exe"), "\\u{202E}gnp.exe");
    EXPECT_EQ(shown("a\u0085\u009B"
                    "b"),
              "a\\u{0085}\\u{009B}b");
    EXPECT_EQ(shown("a\u200Bb\u00ADc\u2028d"), "a\\u{200B}b\\u{00AD}c\\u{2028}d");
    EXPECT_EQ(shown("\uE000\U000F0000\u0378\uFFFE"), "\\u{E000}\\u{F0000}\\u{0378}\\u{FFFE}");
    EXPECT_EQ(shown("\U000E0041"), "\\u{E0041}");
}

TEST(ShownText, LeavesTheJoinersOfEmojiAlone) {
    const std::string family = "\U0001F469\u200D\U0001F469\u200D\U0001F467";
    EXPECT_EQ(shown(family + " family"), family + " family");
    EXPECT_EQ(shownText(family, kPlain).units().size(), 1u);
    EXPECT_EQ(shownText(family, kPlain).cells(), 6u);
    EXPECT_EQ(shown("\u2764\uFE0F"), "\u2764\uFE0F");
    EXPECT_EQ(shown("\u2764\uFE0F\u200D\U0001F525"), "\u2764\uFE0F\u200D\U0001F525");
    EXPECT_EQ(shown("\U0001F469\U0001F3FD\u200D\U0001F692"),
              "\U0001F469\U0001F3FD\u200D\U0001F692");
    EXPECT_EQ(shown("1\uFE0F\u20E3"), "1\uFE0F\u20E3");
}

TEST(ShownText, EscapesTheSameJoinersElsewhere) {
    EXPECT_EQ(shown("a\u200Db"), "a\\u{200D}b");
    EXPECT_EQ(shown("\u200D\U0001F467"), "\\u{200D}\U0001F467");
    EXPECT_EQ(shown("\U0001F467\u200D"), "\U0001F467\\u{200D}");
    EXPECT_EQ(shown("\U0001F467\u200Da"), "\U0001F467\\u{200D}a");
    EXPECT_EQ(shown("a\uFE0F"), "a\\u{FE0F}");
    EXPECT_EQ(shown("1\uFE0F"), "1\\u{FE0F}");
    EXPECT_EQ(shown("\u2764\uFE0F\uFE0F"), "\u2764\uFE0F\\u{FE0F}");
    EXPECT_EQ(shown("\u2764\uFE0E"), "\u2764\\u{FE0E}");
}

TEST(ShownText, LetsNoMarkJoinWhatIsNotItsBase) {
    EXPECT_EQ(shown("\u0301e"), "\\u{0301}e");
    EXPECT_EQ(shown("e\u0301\u0302"), "e\u0301\u0302");
    EXPECT_EQ(shown("a\x01\u0301"), "a\\x01\\u{0301}");
    EXPECT_EQ(shown("\\\u0301"), "\\\\\\u{0301}");
    EXPECT_EQ(shown("\u1161"), "\\u{1161}");
    EXPECT_EQ(shown("\u1112\u1161\u11AB"), "\u1112\u1161\u11AB");
    EXPECT_EQ(shownText("\u1112\u1161\u11AB", kPlain).cells(), 2u);
}

TEST(ShownText, QuotesWhatWouldDeceive) {
    EXPECT_EQ(marked(shownText("   ", kPlain)), "{\"}   {\"}");
    EXPECT_EQ(shown(" lead"), "\" lead\"");
    EXPECT_EQ(shown("trail "), "\"trail \"");
    EXPECT_EQ(shown("\u3000wide"), "\"\u3000wide\"");
    EXPECT_EQ(shown("(hidden)"), "\"(hidden)\"");
    EXPECT_EQ(shown("\"quoted\""), "\"\"quoted\"\"");
    EXPECT_EQ(shown("a (b) \"c\""), "a (b) \"c\"");
    EXPECT_EQ(shown("-"), "-");
}

TEST(ShownText, WritesASCIIAlone) {
    EXPECT_EQ(shown("Caf\u00E9 \u2615", kASCII), "Caf\\u{00E9} \\u{2615}");
    EXPECT_EQ(shown("\U0001F469\u200D\U0001F467", kASCII), "\\u{1F469}\\u{200D}\\u{1F467}");
    EXPECT_EQ(shown("e\u0301", kASCII), "e\\u{0301}");
    EXPECT_EQ(shown("plain\xFF", kASCII), "plain\\xFF");
    EXPECT_EQ(shown("\u3000x", kASCII), "\\u{3000}x");
}

TEST(ShownText, TellsItsCells) {
    EXPECT_EQ(shownText("\u65E5\u672C\u8A9E\u30AB\u30D5\u30A7 5G", kPlain).cells(), 15u);
    EXPECT_EQ(shownText("\u202Egnp.exe", kPlain).cells(), 15u);
    EXPECT_EQ(shownText("e\u0301", kPlain).cells(), 1u);
    EXPECT_EQ(shownText("\u00A7\u2026", {.ambiguous = AmbiguousWidth::Two}).cells(), 4u);
}

TEST(ShownText, IsUnsteadyWhereTerminalsDisagree) {
    for (const auto* text : {"\u2764\uFE0F", "\U0001F469\u200D\U0001F467", "\U0001F1E9\U0001F1EA",
                             "\U0001F44D\U0001F3FD", "1\uFE0F\u20E3"}) {
        EXPECT_TRUE(shownText(text, kPlain).isUnsteady()) << text;
        EXPECT_FALSE(shownText(text, kASCII).isUnsteady()) << text;
    }
    for (const auto* text : {"\U0001F4F6 home", "Caf\u00E9 \u2615", "a\uFE0F", "\u65E5"}) {
        EXPECT_FALSE(shownText(text, kPlain).isUnsteady()) << text;
    }
}

TEST(ShownText, KnowsWhichWayItRuns) {
    EXPECT_TRUE(shownText("\u05D1\u05D9\u05EA 2", kPlain).isRightToLeft());
    EXPECT_TRUE(shownText("caf\u00E9 \u0642", kPlain).isRightToLeft());
    EXPECT_FALSE(shownText("\u0642", kASCII).isRightToLeft());
    EXPECT_FALSE(shownText("\u202E", kPlain).isRightToLeft());
    EXPECT_FALSE(shownText("plain", kPlain).isRightToLeft());
}

TEST(ShownText, BeginsItsClustersAnewBehindAnEscape) {
    const ShownText text = shownText("\U0001F1E9\x01\U0001F1EA\U0001F1EB", kPlain);
    ASSERT_EQ(text.units().size(), 3u);
    EXPECT_EQ(text.units()[2].cells, 2u);  // one flag
}

TEST(ShownText, KeepsEscapesWhole) {
    const ShownText text = shownText("\xB2\xE2", kPlain);
    ASSERT_EQ(text.units().size(), 2u);
    EXPECT_EQ(text.units()[0].size, 4u);
}

TEST(ShownText, DropsBlanksAtItsEnd) {
    ShownText text = ownText(" 40 ", kPlain);
    text.dropTrailingBlanks();
    EXPECT_EQ(text.octets(), " 40");
    EXPECT_EQ(text.cells(), 3u);
    expectSound(text);
}

TEST(ShownName, HasAPlaceholderWhereItIsHidden) {
    EXPECT_EQ(marked(shownName("", kPlain)), "{(hidden)}");
    EXPECT_EQ(marked(shownName(std::string(7, '\0'), kPlain)), "{(hidden, 7)}");
    EXPECT_EQ(marked(shownName("(hidden)", kPlain)), "{\"}(hidden){\"}");
    EXPECT_EQ(shownName("\0a"sv, kPlain).octets(), "\\x00a");
    EXPECT_EQ(shownName("KITRI_BoB", kPlain).octets(), "KITRI_BoB");
}

TEST(ShownName, HasTheAddressWhereThatIsNotShown) {
    const auto bssid = MacAddress::fromText("8A:D8:1B:25:98:6A");
    EXPECT_EQ(marked(shownHidden(*bssid)), "{(25:98:6A)}");
}

TEST(ShownMesh, IsTold) {
    EXPECT_EQ(marked(shownMesh("backhaul", kPlain)), "{(mesh) }backhaul");
    EXPECT_EQ(marked(shownMesh("(x)", kPlain)), "{(mesh) \"}(x){\"}");
    EXPECT_EQ(shownMesh("", kPlain).octets(), "(mesh)");
}

TEST(ShownText, IsSoundForAllNamesOfTwoOctets) {
    for (int first = 0; first < 256; ++first) {
        for (int second = 0; second < 256; ++second) {
            const std::string name{static_cast<char>(first), static_cast<char>(second)};
            expectSound(shownName(name, kPlain));
        }
    }
}

// Alone, each takes cells: nothing is invisible, and nothing joins what stands before.
TEST(ShownText, IsSoundForEveryCodePoint) {
    for (char32_t code = 0; code <= 0x10FFFF; ++code) {
        if (code >= 0xD800 && code <= 0xDFFF) continue;
        const ShownText text = shownName(utf8(code), kPlain);
        ASSERT_GT(text.cells(), 0u) << std::hex << static_cast<unsigned>(code);
        ASSERT_TRUE(!text.octets().empty() && text.octets().front() != ' ' &&
                    text.octets().back() != ' ');
        expectSound(text);
        const ShownText ascii = shownName(utf8(code), kASCII);
        ASSERT_TRUE(std::ranges::none_of(ascii.octets(), [](char octet) { return octet < ' '; }))
            << std::hex << static_cast<unsigned>(code);
        ASSERT_EQ(ascii.octets().size(), ascii.cells());
    }
}

TEST(OwnText, IsLeftAsItIs) {
    EXPECT_EQ(marked(ownText("(local) \\ \u2588", kPlain)), "(local) \\ \u2588");
    EXPECT_EQ(ownText("\u2588\u258F", kPlain).cells(), 2u);
}

}  // namespace

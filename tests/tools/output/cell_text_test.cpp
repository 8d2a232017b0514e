#include "tools/halvane/output/cell_text.h"

#include <gtest/gtest.h>

using namespace halvane::tool;

namespace {

constexpr TextRules kPlain = {};

ShownText text(std::string_view octets) {
    return shownText(octets, kPlain);
}

ShownText mark() {
    return ownText("\u2026", kPlain);
}

std::string inMiddle(std::string_view octets, std::size_t cells) {
    return cutInMiddle(text(octets), cells, mark()).octets();
}

std::string atEnd(std::string_view octets, std::size_t cells) {
    return cutAtEnd(text(octets), cells, mark()).octets();
}

TEST(CellText, CountsCells) {
    EXPECT_EQ(cellsOf("WPA2", kPlain), 4u);
    EXPECT_EQ(cellsOf("2\u00D780", kPlain), 4u);
    EXPECT_EQ(cellsOf("\u65E5\u672C", kPlain), 4u);
    EXPECT_EQ(cellsOf("", kPlain), 0u);
    EXPECT_EQ(cellsOf("2\u00D780", {.ambiguous = AmbiguousWidth::Two}), 5u);
}

TEST(CutInMiddle, KeepsWhatFits) {
    EXPECT_EQ(inMiddle("KT_GiGA_2G_Wave2_0DE3", 21), "KT_GiGA_2G_Wave2_0DE3");
    EXPECT_EQ(inMiddle("", 0), "");
    EXPECT_EQ(inMiddle("slayerjo car", 12), "slayerjo car");
}

struct Cut {
    std::size_t cells;
    const char* name;
    const char* expected;
};

TEST(CutInMiddle, KeepsThreeFifthsBeforeTheMark) {
    for (const Cut& cut : {
             Cut{12, "KT_GiGA_2G_Wave2_0DE3", "KT_GiGA\u20260DE3"},
             Cut{12, "KT_WiFi_2G_33E3", "KT_WiFi\u202633E3"},
             Cut{12, "SK_WiFiGIGA3B15", "SK_WiFi\u20263B15"},
             Cut{12, "SK_WiFiGIGA3B15_2.4G", "SK_WiFi\u20262.4G"},
             Cut{12, "olleh_WiFi_95E4", "olleh_W\u202695E4"},
             Cut{12, "[air purifier]_E30AJT1013767Z", "[air pu\u2026767Z"},
             Cut{12, "T wifi zone_secure", "T wifi \u2026cure"},
             Cut{12, "Den speaker.o", "Den spe\u2026er.o"},
             Cut{12, "401 Prashanti", "401 Pra\u2026anti"},
             Cut{14, "KT_GiGA_2G_Wave2_0DE3", "KT_GiGA_\u2026_0DE3"},
             Cut{14, "KT_WiFi_2G_33E3", "KT_WiFi_\u2026_33E3"},
             Cut{14, "SK_WiFiGIGA3B15", "SK_WiFiG\u2026A3B15"},
             Cut{14, "SK_WiFiGIGA3B15_2.4G", "SK_WiFiG\u2026_2.4G"},
             Cut{14, "olleh_WiFi_95E4", "olleh_Wi\u2026_95E4"},
             Cut{14, "[air purifier]_E30AJT1013767Z", "[air pur\u20263767Z"},
             Cut{14, "T wifi zone_secure", "T wifi z\u2026ecure"},
             Cut{20, "Disney Convention Center Guest", "Disney Conve\u2026r Guest"},
             Cut{20, "DIRECT-FE-HP OfficeJet Pro 7740", "DIRECT-FE-HP\u2026ro 7740"},
             Cut{21, "[air purifier]_E30AJT1013767Z", "[air purifie\u20261013767Z"},
             Cut{21, "Uncle Router's Gigabit LAN Party", "Uncle Router\u2026AN Party"},
             Cut{21, "Ingham's Wi-Fi Guest Network", "Ingham's Wi-\u2026 Network"},
             Cut{24, "DIRECT-FE-HP OfficeJet Pro 7740", "DIRECT-FE-HP O\u2026 Pro 7740"},
             Cut{28, "DIRECT-FE-HP OfficeJet Pro 7740", "DIRECT-FE-HP Offi\u2026t Pro 7740"},
             Cut{28, "KITRI_BoB, KITRI_Guest, KITRI_Mentee2", "KITRI_BoB, KITRI_\u2026RI_Mentee2"},
         }) {
        EXPECT_EQ(inMiddle(cut.name, cut.cells), cut.expected) << cut.cells;
    }
    EXPECT_EQ(inMiddle(std::string(32, 'W'), 21),
              std::string(12, 'W') + "\u2026" + std::string(8, 'W'));
}

TEST(CutInMiddle, GoesDownToTheMark) {
    EXPECT_EQ(inMiddle("abcdef", 5), "abc\u2026f");
    EXPECT_EQ(inMiddle("abcdef", 3), "ab\u2026");
    EXPECT_EQ(inMiddle("abcdef", 2), "a\u2026");
    EXPECT_EQ(inMiddle("abcdef", 1), "\u2026");
    EXPECT_EQ(inMiddle("abcdef", 0), "");
}

TEST(CutInMiddle, SplitsNoWideCharacter) {
    const std::string name = "\u65E5\u672C\u8A9E\u30AB\u30D5\u30A7";
    EXPECT_EQ(inMiddle(name, 11), "\u65E5\u672C\u8A9E\u2026\u30D5\u30A7");
    EXPECT_EQ(inMiddle(name, 6), "\u65E5\u2026\u30A7");
    EXPECT_EQ(inMiddle(name, 2), "\u2026");
}

TEST(CutInMiddle, SplitsNoClusterAndNoEscape) {
    const std::string accents = "a\u0301b\u0301c\u0301d\u0301e\u0301";
    EXPECT_EQ(inMiddle(accents, 4), "a\u0301b\u0301\u2026e\u0301");
    const std::string family = "\U0001F469\u200D\U0001F469\u200D\U0001F467";
    EXPECT_EQ(inMiddle(family + " family", 9), "\u2026 family");
    EXPECT_EQ(inMiddle(family + " family", 11), family + "\u2026mily");
    EXPECT_EQ(inMiddle("\xB2\xE2\xCA\xD4", 15), "\\xB2\\xE2\u2026\\xD4");
    EXPECT_EQ(inMiddle("\xB2\xE2\xCA\xD4", 4), "\u2026");
}

TEST(CutInMiddle, IsSoundAtEveryWidth) {
    for (const auto* name : {"KT_GiGA_2G_Wave2_0DE3", "\u65E5\u672C\u8A9E\u30AB\u30D5\u30A7 5G",
                             "\U0001F469\u200D\U0001F469\u200D\U0001F467 family", "a\u0301b\xFF\\",
                             "\u05D1\u05D9\u05EA \u05E7\u05E4\u05D4 2", "   ", "(x)"}) {
        const ShownText whole = text(name);
        for (std::size_t cells = 0; cells <= whole.cells() + 1; ++cells) {
            for (const ShownText& cut :
                 {cutInMiddle(whole, cells, mark()), cutAtEnd(whole, cells, mark())}) {
                EXPECT_LE(cut.cells(), cells);
                std::size_t size = 0;
                for (const TextUnit& unit : cut.units()) size += unit.size;
                EXPECT_EQ(size, cut.octets().size());
                const bool isMarked = cut.octets().find("\u2026") != std::string::npos;
                EXPECT_EQ(isMarked, cells > 0 && cells < whole.cells());
            }
        }
    }
}

TEST(CutInMiddle, MarksItsMarkAsAdded) {
    const ShownText cut = cutInMiddle(text("abcdef"), 4, mark());
    ASSERT_EQ(cut.units().size(), 4u);
    EXPECT_FALSE(cut.units()[1].isAdded);
    EXPECT_TRUE(cut.units()[2].isAdded);
    EXPECT_FALSE(cut.units()[3].isAdded);
}

TEST(CutInMiddle, TellsWhatItsResultHas) {
    const std::string name = "ab\U0001F1E9\U0001F1EAcdefghijklm\U0001F1EB\U0001F1F7no";
    EXPECT_TRUE(cutInMiddle(text(name), 9, mark()).isUnsteady());
    EXPECT_FALSE(cutInMiddle(text(name), 5, mark()).isUnsteady());
    EXPECT_TRUE(cutInMiddle(text("\u05D1 abcdefgh"), 8, mark()).isRightToLeft());
    EXPECT_FALSE(cutInMiddle(text("abcdef \u05D1 ghijkl"), 8, mark()).isRightToLeft());
}

TEST(CutAtEnd, KeepsTheBeginning) {
    EXPECT_EQ(atEnd("36 40 44 48", 11), "36 40 44 48");
    EXPECT_EQ(atEnd("36 40 44 48", 10), "36 40 44 \u2026");
    EXPECT_EQ(atEnd("\u65E5\u672C\u8A9E", 4), "\u65E5\u2026");
    EXPECT_EQ(atEnd("abc", 1), "\u2026");
    EXPECT_EQ(atEnd("abc", 0), "");
}

}  // namespace

#include "tools/halvane/output/unicode.h"

#include <gtest/gtest.h>

using namespace halvane::tool;

namespace {

constexpr AmbiguousWidth kOne = AmbiguousWidth::One;
constexpr AmbiguousWidth kTwo = AmbiguousWidth::Two;

TEST(Unicode, GivesCellsByEastAsianWidth) {
    EXPECT_EQ(cellsOf(U'A', kOne), 1u);
    EXPECT_EQ(cellsOf(U'\u00E9', kOne), 1u);
    EXPECT_EQ(cellsOf(U'\u65E5', kOne), 2u);      // a Han character, wide
    EXPECT_EQ(cellsOf(U'\uFF21', kOne), 2u);      // full-width A
    EXPECT_EQ(cellsOf(U'\uFF71', kOne), 1u);      // half-width katakana
    EXPECT_EQ(cellsOf(U'\uAC00', kOne), 2u);      // Hangul syllable
    EXPECT_EQ(cellsOf(U'\u3000', kOne), 2u);      // ideographic space
    EXPECT_EQ(cellsOf(U'\U0001F4F6', kOne), 2u);  // antenna bars
    EXPECT_EQ(cellsOf(U'\u2764', kOne), 1u);      // heart, neutral
    EXPECT_EQ(cellsOf(U'\U0001F1E9', kOne), 1u);  // regional indicator, neutral
}

TEST(Unicode, GivesNoCellToWhatJoinsACharacter) {
    EXPECT_EQ(cellsOf(U'\u0301', kOne), 0u);  // acute accent
    EXPECT_EQ(cellsOf(U'\u20E3', kOne), 0u);  // enclosing keycap
    EXPECT_EQ(cellsOf(U'\u200D', kOne), 0u);
    EXPECT_EQ(cellsOf(U'\uFE0F', kOne), 0u);
    EXPECT_EQ(cellsOf(U'\u1100', kOne), 2u);  // Hangul, first consonant
    EXPECT_EQ(cellsOf(U'\u1161', kOne), 0u);  // its vowel
    EXPECT_EQ(cellsOf(U'\u11A8', kOne), 0u);  // its last consonant
}

TEST(Unicode, GivesACellToMarksThatTakeSpace) {
    EXPECT_EQ(cellsOf(U'\u093E', kOne), 1u);  // Devanagari vowel sign AA
    EXPECT_FALSE(isCombining(U'\u093E'));
}

TEST(Unicode, GivesAmbiguousCharactersTheWishedCells) {
    for (const char32_t ambiguous : {U'\u00A7', U'\u2026', U'\u2588', U'\u2191', U'\u00D7'}) {
        EXPECT_EQ(cellsOf(ambiguous, kOne), 1u);
        EXPECT_EQ(cellsOf(ambiguous, kTwo), 2u);
    }
    EXPECT_EQ(cellsOf(U'A', kTwo), 1u);
    EXPECT_EQ(cellsOf(U'\u65E5', kTwo), 2u);
    EXPECT_EQ(cellsOf(U'\u0301', kTwo), 0u);
}

TEST(Unicode, SeesWhatIsVisible) {
    for (const char32_t visible : {U' ', U'A', U'\u00A0', U'\u0301', U'\u2026', U'\U0001F4F6'}) {
        EXPECT_TRUE(isVisible(visible)) << std::hex << static_cast<unsigned>(visible);
    }
    for (const char32_t hidden :
         {U'\n',     U'\x7F',   U'\x9B',   U'\u00AD', U'\u034F',     U'\u061C',
          U'\u115F', U'\u180E', U'\u200B', U'\u200E', U'\u2028',     U'\u2029',
          U'\u202E', U'\u2060', U'\u2066', U'\u3164', U'\uE000',     U'\uFE0F',
          U'\uFEFF', U'\uFFA0', U'\uFFFE', U'\u0378', U'\U000E0041', U'\U000E0100'}) {
        EXPECT_FALSE(isVisible(hidden)) << std::hex << static_cast<unsigned>(hidden);
    }
}

TEST(Unicode, KnowsBlanks) {
    for (const char32_t blank : {U' ', U'\u00A0', U'\u2003', U'\u2800', U'\u3000'}) {
        EXPECT_TRUE(isBlank(blank)) << std::hex << static_cast<unsigned>(blank);
    }
    EXPECT_FALSE(isBlank(U'_'));
    EXPECT_FALSE(isBlank(U'\t'));
}

TEST(Unicode, KnowsLettersFromRightToLeft) {
    EXPECT_TRUE(isRightToLeft(U'\u05D0'));   // Hebrew alef
    EXPECT_TRUE(isRightToLeft(U'\u0642'));   // Arabic qaf
    EXPECT_FALSE(isRightToLeft(U'\u0660'));  // Arabic digit
    EXPECT_FALSE(isRightToLeft(U'A'));
    EXPECT_FALSE(isRightToLeft(U'1'));
}

TEST(GraphemeBreaks, KeepsClustersTogether) {
    GraphemeBreaks breaks;
    EXPECT_TRUE(breaks.beginsCluster(U'e'));
    EXPECT_FALSE(breaks.beginsCluster(U'\u0301'));
    EXPECT_TRUE(breaks.beginsCluster(U'\U0001F1E9'));
    EXPECT_FALSE(breaks.beginsCluster(U'\U0001F1EA'));
    EXPECT_TRUE(breaks.beginsCluster(U'\U0001F1E9'));
    EXPECT_TRUE(breaks.beginsCluster(U'\U0001F468'));
    EXPECT_FALSE(breaks.beginsCluster(U'\u200D'));
    EXPECT_FALSE(breaks.beginsCluster(U'\U0001F467'));
}

TEST(GraphemeBreaks, BeginsAnew) {
    GraphemeBreaks breaks;
    EXPECT_TRUE(breaks.beginsCluster(U'e'));
    breaks.restart();
    EXPECT_TRUE(breaks.beginsCluster(U'\u0301'));
}

}  // namespace

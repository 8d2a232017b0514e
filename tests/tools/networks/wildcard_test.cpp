#include "tools/halvane/networks/wildcard.h"

#include <gtest/gtest.h>
#include <string>

using halvane::tool::matchesWildcard;

namespace {

TEST(Wildcard, StandsForItselfWithoutSigns) {
    EXPECT_TRUE(matchesWildcard("home", "home"));
    EXPECT_TRUE(matchesWildcard("", ""));
    EXPECT_FALSE(matchesWildcard("home", "homes"));
    EXPECT_FALSE(matchesWildcard("home", "Home"));
    EXPECT_FALSE(matchesWildcard("home", ""));
}

TEST(Wildcard, StarStandsForAnyOctets) {
    EXPECT_TRUE(matchesWildcard("*", ""));
    EXPECT_TRUE(matchesWildcard("KITRI*", "KITRI_BoB"));
    EXPECT_TRUE(matchesWildcard("*BoB", "KITRI_BoB"));
    EXPECT_TRUE(matchesWildcard("K*_*B", "KITRI_BoB"));
    EXPECT_TRUE(matchesWildcard("*ab*ab", "aabbabab"));
    EXPECT_FALSE(matchesWildcard("*ab", "aba"));
    EXPECT_FALSE(matchesWildcard("a*b*c", "acb"));
}

TEST(Wildcard, QuestionMarkStandsForOneCharacter) {
    EXPECT_TRUE(matchesWildcard("caf?", "caf\xC3\xA9"));
    EXPECT_TRUE(matchesWildcard("?", "\xC3"));
    EXPECT_TRUE(matchesWildcard("?\xA9", "\xE9\xA9"));
    EXPECT_FALSE(matchesWildcard("?", ""));
    EXPECT_FALSE(matchesWildcard("caf?", "caf"));
}

TEST(Wildcard, BackslashTakesTheMeaning) {
    EXPECT_TRUE(matchesWildcard("a\\*b", "a*b"));
    EXPECT_FALSE(matchesWildcard("a\\*b", "axb"));
    EXPECT_TRUE(matchesWildcard("\\\\", "\\"));
    EXPECT_TRUE(matchesWildcard("\\x", "\\x"));
    EXPECT_TRUE(matchesWildcard("\\", "\\"));
}

TEST(Wildcard, EndsSoonWithManyStars) {
    std::string pattern;
    for (int i = 0; i < 1000; ++i) pattern += "*a";
    EXPECT_FALSE(matchesWildcard(pattern + 'b', std::string(32, 'a')));
}

}  // namespace

#include <array>
#include <cstddef>
#include <gtest/gtest.h>
#include <random>
#include <regex>
#include <string>
#include <vector>

#include "halvane/utils/log/pattern_internal.h"

using halvane::logging::__LogCategory_match;

namespace {

struct Row {
    const char* pattern;
    const char* name;
    bool matches;
};

template <std::size_t kCount>
void expectRows(const std::array<Row, kCount>& rows) {
    for (const Row& row : rows) {
        EXPECT_EQ(__LogCategory_match(row.pattern, row.name), row.matches)
            << "\"" << row.pattern << "\" and \"" << row.name << "\"";
    }
}

TEST(LogPattern, MatchesAnywhereInTheName) {
    expectRows(std::array<Row, 9>{{
        {"WiFi", "WiFi", true},
        {"WiFi", "WiFiScan", true},
        {"WiFi", "MyWiFiScan", true},
        {"Scan", "WiFiScan", true},
        {"iFiS", "WiFiScan", true},
        {"WiFiScan", "WiFi", false},
        {"WiFi", "WiF", false},
        {"aab", "aaab", true},  // found behind a false start
        {"abcd", "ababcabcd", true},
    }});
}

TEST(LogPattern, IsCaseSensitive) {
    expectRows(std::array<Row, 4>{{
        {"wifi", "WiFi", false},
        {"WIFI", "WiFi", false},
        {"WiFi", "wifi", false},
        {"S*can", "WiFiscan", true},  // none of 'S'
    }});
}

TEST(LogPattern, EmptyMatchesEveryName) {
    expectRows(std::array<Row, 6>{{
        {"", "", true},
        {"", "WiFi", true},
        {"^", "WiFi", true},
        {"$", "WiFi", true},
        {"^", "", true},
        {"$", "", true},
    }});
}

TEST(LogPattern, ACaretAtTheStartAnchorsAtTheStart) {
    expectRows(std::array<Row, 7>{{
        {"^WiFi", "WiFiScan", true},
        {"^WiFi", "MyWiFi", false},
        {"^Scan", "WiFiScan", false},
        {"^.*Scan", "WiFiScan", true},
        {"^i", "WiFi", false},
        {"^a*b", "aaab", true},
        {"^a*b", "caab", false},
    }});
}

TEST(LogPattern, ADollarAtTheEndAnchorsAtTheEnd) {
    expectRows(std::array<Row, 9>{{
        {"Scan$", "WiFiScan", true},
        {"WiFi$", "WiFiScan", false},
        {"WiFi$", "WiFiWiFi", true},  // found behind another that is not at the end
        {"^WiFi$", "WiFi", true},
        {"^WiFi$", "WiFiScan", false},
        {"^WiFi$", "MyWiFi", false},
        {"^$", "", true},
        {"^$", "a", false},
        {"a*$", "b", true},
    }});
}

TEST(LogPattern, ADotMatchesAnyOneCharacter) {
    expectRows(std::array<Row, 7>{{
        {"W.Fi", "WiFi", true},
        {"W.Fi", "W.Fi", true},
        {"W.Fi", "WFi", false},
        {"^....$", "WiFi", true},
        {"^.....$", "WiFi", false},
        {".", "", false},
        {"i.$", "WiFi", false},
    }});
}

TEST(LogPattern, AStarMatchesAnyNumberOfWhatItFollows) {
    expectRows(std::array<Row, 12>{{
        {"^ba*c$", "bc", true},
        {"^ba*c$", "bac", true},
        {"^ba*c$", "baaac", true},
        {"^ba*c$", "babc", false},
        {"^a*ab$", "aab", true},  // leaves one for what follows
        {"^a*a*a*$", "aa", true},
        {"^.*$", "", true},
        {"^.*$", "WiFi", true},
        {"^W.*n$", "WiFiScan", true},
        {"^W.*x$", "WiFiScan", false},
        {"^.*i.*i", "WiFi", true},
        {"^.*i.*i.*i", "WiFi", false},
    }});
}

TEST(LogPattern, SpecialCharactersElsewhereStandForThemselves) {
    expectRows(std::array<Row, 18>{{
        {"*", "a*b", true},
        {"*", "ab", false},
        {"*b", "a*b", true},
        {"^*", "*a", true},
        {"^*", "a*", false},
        {"**", "", true},  // any number of '*'
        {"^**a$", "***a", true},
        {"a**", "b", false},  // any number of 'a', then a '*'
        {"a**", "aa*", true},
        {"a^b", "a^b", true},
        {"a^b", "ab", false},
        {"^^a", "^a", true},
        {"^^a", "a", false},
        {"$a", "$a", true},
        {"$a", "a", false},
        {"a$$", "a$", true},
        {"a$$", "a", false},
        {"^$*a$", "$$a", true},  // any number of '$'
    }});
    for (const char* plain : {"+", "?", "[", "]", "(", ")", "{", "}", "|", "\\", "_", " ", "-"}) {
        EXPECT_TRUE(__LogCategory_match(plain, std::string("a") + plain + "b")) << plain;
        EXPECT_FALSE(__LogCategory_match(plain, "ab")) << plain;
    }
}

TEST(LogPattern, BytesBeyondASCIIAreCharactersToo) {
    EXPECT_TRUE(__LogCategory_match("\xC3\xA9", "caf\xC3\xA9"));
    EXPECT_TRUE(__LogCategory_match("^caf..$", "caf\xC3\xA9"));
    EXPECT_FALSE(__LogCategory_match("\xC3\xA8", "caf\xC3\xA9"));
}

TEST(LogPattern, ManyStarsOnALongNameAreNotSlow) {
    // Trying one way after the other would take longer than the age of the universe.
    std::string stars;
    for (int i = 0; i < 100; ++i) stars += "a*";
    EXPECT_FALSE(__LogCategory_match("^" + stars + "b$", std::string(2000, 'a')));
    EXPECT_TRUE(__LogCategory_match("^" + stars + "$", std::string(2000, 'a')));
    std::string dots;
    for (int i = 0; i < 100; ++i) dots += ".*a";
    EXPECT_FALSE(__LogCategory_match(dots + "b", std::string(2000, 'a')));
    EXPECT_TRUE(__LogCategory_match(dots, std::string(100, 'a')));
    EXPECT_FALSE(__LogCategory_match(dots, std::string(99, 'a')));
}

// All texts of 'a' and 'b' up to a length.
std::vector<std::string> allNames(std::size_t longest) {
    std::vector<std::string> names = {""};
    for (std::size_t i = 0; names[i].size() < longest; ++i) {
        const std::string name = names[i];
        names.push_back(name + 'a');
        names.push_back(name + 'b');
    }
    return names;
}

class PatternMaker {
  public:
    // A pattern with the same meaning as a regular expression: plain characters and dots, each with
    // at most one star, and anchors only at the ends.
    std::string next() {
        std::string pattern;
        if (oneOf(3) == 0) pattern += '^';
        for (unsigned left = oneOf(6); left > 0; --left) {
            pattern += "ab."[oneOf(3)];
            if (oneOf(2) == 0) pattern += '*';
        }
        if (oneOf(3) == 0) pattern += '$';
        return pattern;
    }

  private:
    unsigned oneOf(unsigned count) { return static_cast<unsigned>(random_() % count); }

    std::mt19937 random_{20260405};  // the same patterns every time
};

TEST(LogPattern, AgreesWithRegularExpressionsWhereBothMeanTheSame) {
    const std::vector<std::string> names = allNames(5);
    ASSERT_EQ(names.size(), 63u);
    PatternMaker patterns;
    unsigned matches = 0;
    constexpr unsigned kPatterns = 500;
    for (unsigned i = 0; i < kPatterns; ++i) {
        const std::string pattern = patterns.next();
        const std::regex judge(pattern, std::regex::ECMAScript);
        for (const std::string& name : names) {
            const bool expected = std::regex_search(name, judge);
            ASSERT_EQ(__LogCategory_match(pattern, name), expected)
                << "\"" << pattern << "\" and \"" << name << "\"";
            matches += expected ? 1 : 0;
        }
    }
    // Both results are common.
    EXPECT_GT(matches, kPatterns * 63 / 10);
    EXPECT_LT(matches, kPatterns * 63 * 9 / 10);
}

}  // namespace

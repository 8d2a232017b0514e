#include <array>
#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <string_view>

#include "halvane/base/similar_word_internal.h"

using halvane::similarWord;
using halvane::typingDistance;

namespace {

constexpr std::array<std::string_view, 8> kWords = {"decode",  "devices", "disable", "channels",
                                                    "clients", "config",  "configs", "monitor"};

TEST(TypingDistance, CountsMistakes) {
    struct Row {
        std::string_view a, b;
        std::size_t distance;
        const char* reason;
    };
    for (const Row& row : {
             Row{"", "", 0, "nothing"},
             Row{"", "abc", 3, "all added"},
             Row{"abc", "", 3, "all dropped"},
             Row{"monitor", "monitor", 0, "the same"},
             Row{"monitr", "monitor", 1, "a letter dropped"},
             Row{"monnitor", "monitor", 1, "a letter too many"},
             Row{"momitor", "monitor", 1, "another letter"},
             Row{"mointor", "monitor", 1, "two letters swapped"},
             Row{"ca", "abc", 3, "a swapped letter is not changed again"},
             Row{"Monitor", "monitor", 1, "the case counts"},
         }) {
        EXPECT_EQ(typingDistance(row.a, row.b), row.distance) << row.reason;
        EXPECT_EQ(typingDistance(row.b, row.a), row.distance) << row.reason;
    }
}

TEST(SimilarWord, IsTheNearestOne) {
    struct Row {
        std::string_view typed;
        std::optional<std::string_view> found;
        const char* reason;
    };
    for (const Row& row : {
             Row{"decod", "decode", "one letter"},
             Row{"dceode", "decode", "swapped letters"},
             Row{"chanels", "channels", "one letter of many"},
             Row{"clinets", "clients", "swapped letters"},
             Row{"konfigs", "configs", "nearer than config"},
             Row{"confi", "config", "nearer than configs, which also begins so"},
             Row{"confix", "config", "one letter away; configs is two away"},
             Row{"mon", "monitor", "only one word begins so"},
             Row{"de", std::nullopt, "two words begin so"},
             Row{"bogus", std::nullopt, "none is near"},
             Row{"x", std::nullopt, "one letter is replaced, and nothing is left"},
             Row{"", std::nullopt, "nothing was typed"},
             Row{"mxnxtxr", std::nullopt, "three of seven are wrong"},
         }) {
        EXPECT_EQ(similarWord(row.typed, kWords), row.found) << row.reason;
    }
}

TEST(SimilarWord, BeginsAlikeOfSeveralAsNear) {
    using Words = std::array<std::string_view, 2>;
    EXPECT_EQ(similarWord("bsid", Words{"ssid", "bssid"}), "bssid");
    EXPECT_EQ(similarWord("bsid", Words{"basid", "bssid"}), std::nullopt);
    EXPECT_EQ(similarWord("xsid", Words{"ssid", "bsid"}), std::nullopt);
}

TEST(SimilarWord, IsNoneOfSeveralAsNear) {
    EXPECT_EQ(similarWord("bat", std::array<std::string_view, 2>{"cat", "rat"}), std::nullopt);
    EXPECT_EQ(similarWord("bat", std::array<std::string_view, 2>{"cat", "cat"}), "cat");
    EXPECT_EQ(similarWord("2", std::array<std::string_view, 3>{"2.4", "5", "6"}), "2.4");
}

TEST(SimilarWord, IsNoneOfALongText) {
    const std::string longest(halvane::kLongestSimilarWord, 'x');
    const std::string beyond = longest + 'x';
    EXPECT_EQ(similarWord(longest + 'y', std::array<std::string_view, 1>{longest}), std::nullopt);
    EXPECT_EQ(similarWord(longest, std::array<std::string_view, 1>{beyond}), std::nullopt);
    EXPECT_EQ(similarWord(longest.substr(1), std::array<std::string_view, 1>{longest}), longest);
}

}  // namespace

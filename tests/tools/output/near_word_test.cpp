#include "tools/halvane/output/near_word.h"

#include <gtest/gtest.h>
#include <optional>
#include <string_view>
#include <vector>

using halvane::tool::nearWord;

namespace {

using Words = std::vector<std::string_view>;

TEST(NearWord, IsFoundWhateverItsCaseIs) {
    const Words words = {"WPA2", "WPA3", "Enterprise"};
    EXPECT_EQ(nearWord("wap2", words), 0u);
    EXPECT_EQ(nearWord("WPA2", words), 0u);
    EXPECT_EQ(nearWord("enterprize", words), 2u);
}

TEST(NearWord, IsTheFirstOfThoseThatDifferInCaseAlone) {
    EXPECT_EQ(nearWord("kitri_bob", Words{"other", "KITRI_BoB", "kitri_BOB"}), 1u);
}

TEST(NearWord, IsAbsentWhereNoneOrSeveralAreNear) {
    EXPECT_EQ(nearWord("strong", Words{"WPA2", "Open"}), std::nullopt);
    EXPECT_EQ(nearWord("wpa4", Words{"WPA2", "WPA3"}), std::nullopt);
    EXPECT_EQ(nearWord("", Words{"a"}), std::nullopt);
    EXPECT_EQ(nearWord("a", {}), std::nullopt);
}

}  // namespace

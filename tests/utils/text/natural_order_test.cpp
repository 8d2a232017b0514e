#include "halvane/utils/text/natural_order.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <gtest/gtest.h>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "tests/support/guarded_bytes.h"

namespace {

using halvane::testing::GuardedBytes;

int compare(const std::string& a, const std::string& b, bool caseSensitive = true) {
    return TextCompareNatural(a.data(), a.size(), b.data(), b.size(), caseSensitive);
}

// Expects each name to come before all names behind it.
void expectAscending(const std::vector<std::string>& names, bool caseSensitive) {
    for (std::size_t i = 0; i < names.size(); ++i) {
        for (std::size_t j = 0; j < names.size(); ++j) {
            const int order = (i > j) - (i < j);
            EXPECT_EQ(compare(names[i], names[j], caseSensitive), order)
                << names[i] << " " << names[j];
        }
    }
}

TEST(NaturalOrder, TakesDigitsForNumbers) {
    expectAscending({"a2", "a7", "a07", "a10", "a10b", "a10c", "b1"}, true);
    expectAscending({"file7", "file007", "file8"}, true);
    expectAscending({"1", "2", "10", "11", "100"}, true);
    expectAscending({"1.9", "1.10", "2.0"}, true);
}

TEST(NaturalOrder, PutsAStartBeforeWhatItStarts) {
    expectAscending({"", "1", "a", "a1", "a1b", "ab"}, true);
}

TEST(NaturalOrder, KeepsTheLastOfARunOfZerosAsTheNumber) {
    expectAscending({"a0", "a00", "a000", "a1", "a01", "a001"}, true);
    expectAscending({"0", "0b1", "00", "00b"}, true);
}

TEST(NaturalOrder, LetsZerosDecideBeforeWhatFollows) {
    EXPECT_EQ(compare("a7z", "a07a"), -1);
    EXPECT_EQ(compare("a7-1", "a7-01"), -1);
    EXPECT_EQ(compare("a7-2", "a7-01"), 1);
}

TEST(NaturalOrder, ComparesADigitWithAnotherCharacterAsBytes) {
    expectAscending({"a.", "a/", "a0", "a9", "a:", "aA", "a\xFF"}, true);
    EXPECT_EQ(compare("a10", "a:"), -1);
    EXPECT_EQ(compare("\x80", "z"), 1);
}

TEST(NaturalOrder, ComparesNumbersOfAnyLength) {
    const std::string zeros(1000, '0');
    const std::string large = "1" + zeros;
    EXPECT_EQ(compare(large, large + "0"), -1);
    EXPECT_EQ(compare(large + "1", large + "2"), -1);
    EXPECT_EQ(compare(zeros + "5", "5"), 1);
    EXPECT_EQ(compare(zeros + "5", "6"), -1);
    EXPECT_EQ(compare(large, large), 0);
}

TEST(NaturalOrder, RegardsCaseOnlyWhenAsked) {
    EXPECT_EQ(compare("Name 2", "name 10", false), -1);
    EXPECT_EQ(compare("name 2", "NAME 2", false), 0);
    EXPECT_EQ(compare("name 2", "NAME 2", true), 1);
    EXPECT_EQ(compare("B1", "a2", false), 1);
    EXPECT_EQ(compare("B1", "a2", true), -1);
    EXPECT_EQ(compare("_", "A", false), -1);  // 'a' is above '_'
}

TEST(NaturalOrder, TakesEachLengthInItsOwnWay) {
    EXPECT_EQ(TextCompareNatural("a2x", 2, "a10", SIZE_MAX, true), -1);
    EXPECT_EQ(TextCompareNatural("a10", SIZE_MAX, "a2x", 2, true), 1);
    EXPECT_EQ(TextCompareNatural("a2", SIZE_MAX, "a23", 2, true), 0);
    EXPECT_EQ(TextCompareNatural("a\0b", 3, "a\0c", 3, true), -1);
    EXPECT_EQ(TextCompareNatural(nullptr, 0, nullptr, 0, true), 0);
    EXPECT_EQ(TextCompareNatural(nullptr, 0, "a", 1, true), -1);
}

TEST(NaturalOrder, ReadsNothingPastTheLengths) {
    GuardedBytes a(std::string_view("file 00"));
    GuardedBytes b(std::string_view("file 0"));
    EXPECT_EQ(TextCompareNatural(a.chars(), a.size(), b.chars(), b.size(), false), 1);
    EXPECT_EQ(TextCompareNatural(b.chars(), b.size(), a.chars(), a.size(), false), -1);
    GuardedBytes terminated = GuardedBytes::terminated("file 0");
    EXPECT_EQ(TextCompareNatural(terminated.chars(), SIZE_MAX, b.chars(), b.size(), true), 0);
}

// Names over an alphabet that makes numbers, zeros and prefixes meet often.
std::vector<std::string> generatedNames(std::size_t count) {
    std::mt19937 random(17);
    const std::string alphabet = "0012aAb-:";
    std::vector<std::string> names;
    while (names.size() < count) {
        std::string name(random() % 6, ' ');
        for (char& character : name) character = alphabet[random() % alphabet.size()];
        names.push_back(name);
    }
    return names;
}

class NaturalOrderOfGeneratedNames : public ::testing::TestWithParam<bool> {};

TEST_P(NaturalOrderOfGeneratedNames, IsAStrictWeakOrder) {
    const auto names = generatedNames(250);
    const std::size_t count = names.size();
    std::vector<std::vector<int>> order(count, std::vector<int>(count));
    for (std::size_t i = 0; i < count; ++i) {
        for (std::size_t j = 0; j < count; ++j) {
            order[i][j] = compare(names[i], names[j], GetParam());
        }
    }
    for (std::size_t i = 0; i < count; ++i) {
        ASSERT_EQ(order[i][i], 0) << names[i];
        for (std::size_t j = 0; j < count; ++j) {
            ASSERT_EQ(order[i][j], -order[j][i]) << names[i] << " " << names[j];
            if (GetParam() && order[i][j] == 0) {
                ASSERT_EQ(names[i], names[j]);
            }
            for (std::size_t k = 0; k < count; ++k) {
                const bool isTransitive = order[i][j] != order[j][k] || order[i][k] == order[i][j];
                ASSERT_TRUE(isTransitive) << names[i] << " " << names[j] << " " << names[k];
            }
        }
    }
}

TEST_P(NaturalOrderOfGeneratedNames, SortsTheSameFromAnyStart) {
    auto names = generatedNames(300);
    const auto isBefore = [](const std::string& a, const std::string& b) {
        return compare(a, b, GetParam()) < 0;
    };
    std::ranges::sort(names);
    std::ranges::stable_sort(names, isBefore);
    auto others = names;
    std::ranges::reverse(others);
    std::ranges::sort(others, isBefore);
    for (std::size_t i = 0; i < names.size(); ++i) {
        ASSERT_EQ(compare(names[i], others[i], GetParam()), 0) << names[i] << " " << others[i];
    }
}

INSTANTIATE_TEST_SUITE_P(BothCases, NaturalOrderOfGeneratedNames, ::testing::Bool());

}  // namespace

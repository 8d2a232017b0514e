#include <clocale>
#include <cwchar>
#include <cwctype>
#include <gtest/gtest.h>
#include <ios>
#include <locale.h>
#include <map>
#include <string>
#include <utility>

#include "halvane/regulatory/case_folding_internal.h"

using halvane::foldedCase;
using halvane::orderOfFolded;

namespace {

constexpr char32_t kEnd = 0x110000;

// The characters that fold, with their results.
std::map<char32_t, char32_t> foldingCharacters() {
    std::map<char32_t, char32_t> found;
    for (char32_t character = 0; character < kEnd; ++character) {
        const char32_t folded = foldedCase(character);
        if (folded != character) found.emplace(character, folded);
    }
    return found;
}

TEST(CaseFolding, JoinsTheCasesOfALetter) {
    struct Row {
        char32_t character, folded;
    };
    constexpr Row kRows[] = {
        {'A', 'a'},       {'Z', 'z'},      {'@', '@'},         {'[', '['},       {0xC5, 0xE5},
        {0xDE, 0xFE},     {0xD7, 0xD7},    {0xDF, 0xDF},       {0x1E9E, 0xDF},   {0x130, 0x130},
        {0x131, 0x131},   {0x17F, 's'},    {0x178, 0xFF},      {0x1C4, 0x1C6},   {0x1C5, 0x1C6},
        {0x23A, 0x2C65},  {0x391, 0x3B1},  {0x3A2, 0x3A2},     {0x3C2, 0x3C3},   {0x386, 0x3AC},
        {0x1FBC, 0x1FB3}, {0x2126, 0x3C9}, {0x212A, 'k'},      {0x212B, 0xE5},   {0x410, 0x430},
        {0x401, 0x451},   {0x4C0, 0x4CF},  {0x52E, 0x52F},     {0xA64A, 0xA64B}, {0x1C88, 0xA64B},
        {0xFF21, 0xFF41}, {0x5D0, 0x5D0},  {0x10400, 0x10400},
    };
    for (const Row& row : kRows) {
        EXPECT_EQ(foldedCase(row.character), row.folded) << std::hex << +row.character;
        EXPECT_EQ(foldedCase(row.folded), row.folded) << std::hex << +row.folded;
    }
}

TEST(CaseFolding, OfWhatIsFoldedChangesNothing) {
    const auto all = foldingCharacters();
    EXPECT_EQ(all.size(), 857u);
    for (const auto& [character, folded] : all) {
        EXPECT_FALSE(all.contains(folded)) << std::hex << +character;
    }
}

// By the C library's tables, folding gives the small letter of the capital letter.
class CaseFoldingOfTheCLibrary : public ::testing::Test {
  protected:
    void SetUp() override {
        locale_ = ::newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
        if (locale_ == nullptr) GTEST_SKIP() << "there is no locale C.UTF-8";
    }
    void TearDown() override {
        if (locale_ != nullptr) ::freelocale(locale_);
    }
    char32_t fold(char32_t character) const {
        const auto upper = ::towupper_l(static_cast<std::wint_t>(character), locale_);
        return static_cast<char32_t>(::towlower_l(upper, locale_));
    }

  private:
    ::locale_t locale_ = nullptr;
};

TEST_F(CaseFoldingOfTheCLibrary, IsTheSame) {
    for (const auto& [character, folded] : foldingCharacters()) {
        EXPECT_EQ(folded, fold(character)) << std::hex << +character;
    }
}

// Later editions of Unicode add letters at the ends of other blocks.
TEST_F(CaseFoldingOfTheCLibrary, KnowsNoOtherLettersOfTheOldBlocks) {
    constexpr std::pair<char32_t, char32_t> kBlocks[] = {
        {0x0, 0x24F},      // Latin
        {0x370, 0x52F},    // Greek, Cyrillic
        {0x1E00, 0x1FFF},  // Latin, Greek
    };
    for (const auto& [first, last] : kBlocks) {
        for (char32_t character = first; character <= last; ++character) {
            // The dotted and the dotless I are the letters of one language, and fold there only.
            if (character == 0x130 || character == 0x131) continue;
            EXPECT_EQ(foldedCase(character), fold(character)) << std::hex << +character;
        }
    }
}

TEST(FoldedOrder, IsThatOfFoldedCharacters) {
    struct Row {
        const char *a, *b;
        int order;
    };
    constexpr Row kRows[] = {
        {"\xC3\x85land", "\xC3\xA5LAND", 0},                          // A with ring, and a
        {"\xE2\x84\xAB", "\xC3\xA5", 0},                              // the angstrom sign
        {"\xCE\x95\xCE\x9B\xCE\x9B\xCE\x86\xCE\xA3",                  // Greek in capitals, and
         "\xCE\xB5\xCE\xBB\xCE\xBB\xCE\xAC\xCF\x82", 0},              // with its final sigma
        {"\xD0\xA0\xD0\x9E\xD0\xA1", "\xD1\x80\xD0\xBE\xD1\x81", 0},  // Cyrillic
        {"\xC8\xBA"
         "b",
         "\xE2\xB1\xA5"
         "B",
         0},  // of two bytes, and of three
        {"Z", "\xC3\x85", -1},
        {"\xC3\x85", "\xC3\xA4", 1},
        {"\xC3\x85"
         "a",
         "\xC3\xA5", 1},
        {"", "a", -1},
        {"", "", 0},
        {"\xC3", "\xC3", 0},
        {"\xC3", "\xE3", -1},
        {"\xC3", "\xF4\x8F\xBF\xBF", 1},  // the last character
        {"\xC3"
         "A",
         "\xC3"
         "a",
         0},
    };
    for (const Row& row : kRows) {
        EXPECT_EQ(orderOfFolded(row.a, row.b), row.order) << row.a << ' ' << row.b;
        EXPECT_EQ(orderOfFolded(row.b, row.a), -row.order) << row.b << ' ' << row.a;
    }
}

}  // namespace

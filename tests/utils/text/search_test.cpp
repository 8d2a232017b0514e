#include "halvane/utils/text/search.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <gtest/gtest.h>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "halvane/utils/text/two_way_search_internal.h"

#include "tests/support/guarded_bytes.h"

namespace {

using halvane::BytesIgnoringCase;
using halvane::ExactBytes;
using halvane::TwoWaySearch;
using halvane::testing::GuardedBytes;
using std::string_view;

constexpr std::size_t kNone = string_view::npos;

std::size_t placeOf(const void* found, const void* text) {
    if (found == nullptr) return kNone;
    return static_cast<std::size_t>(static_cast<const char*>(found) -
                                    static_cast<const char*>(text));
}

std::size_t boyerMoore(string_view text, string_view pattern) {
    return placeOf(BoyerMooreSearch(text.data(), text.size(), pattern.data(), pattern.size()),
                   text.data());
}

// The C library gives the expected places.
std::size_t judged(string_view text, string_view pattern) {
    return placeOf(::memmem(text.data(), text.size(), pattern.data(), pattern.size()), text.data());
}

std::string lowered(string_view text) {
    std::string lower(text);
    for (char& c : lower) c = c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
    return lower;
}

TEST(TextSearch, FindsWithoutRegardToCase) {
    const char* const text = "The Quick QUICK fox";
    EXPECT_EQ(stristr(text, "quick"), text + 4);
    EXPECT_EQ(stristr(text, "QUICK F"), text + 10);
    EXPECT_EQ(stristr(text, "t"), text);
    EXPECT_EQ(stristr(text, "X"), text + 18);
    EXPECT_EQ(stristr(text, ""), text);
    EXPECT_EQ(stristr(text, "quicker"), nullptr);
    EXPECT_EQ(stristr(text + 19, ""), text + 19);
    EXPECT_EQ(stristr("", "a"), nullptr);
    EXPECT_EQ(stristr("\xC4", "\xE4"), nullptr);
    EXPECT_EQ(stristr("[", "{"), nullptr);  // 32 apart, and no letters
    EXPECT_EQ(stristr("@@", "``"), nullptr);
}

TEST(TextSearch, FindsWithinALength) {
    const char* const text = "one TWO three";
    EXPECT_EQ(strncasestr(text, 7, "two"), text + 4);
    EXPECT_EQ(strncasestr(text, 6, "two"), nullptr);
    EXPECT_EQ(strncasestr(text, SIZE_MAX, "THREE"), text + 8);
    EXPECT_EQ(strncasestr(text, 0, ""), text);
    EXPECT_EQ(strncasestr("ab\0cd", 5, "cd"), nullptr);  // a NUL ends a text
}

TEST(TextSearch, FindsTheLastByteWithTheCLibrary) {
    const char text[] = "a.b.c";
    EXPECT_EQ(memrchr(text, '.', 5), text + 3);
    EXPECT_EQ(memrchr(text, '.', 3), text + 1);
    EXPECT_EQ(memrchr(text, 'x', 5), nullptr);
}

TEST(TextSearch, SpansAcceptedCharacters) {
    EXPECT_EQ(strnspn("123abc", SIZE_MAX, "0123456789"), 3u);
    EXPECT_EQ(strnspn("123abc", 2, "0123456789"), 2u);
    EXPECT_EQ(strnspn("abc", SIZE_MAX, "0123456789"), 0u);
    EXPECT_EQ(strnspn("aaa", SIZE_MAX, "a"), 3u);
    EXPECT_EQ(strnspn("aaa", SIZE_MAX, ""), 0u);
    EXPECT_EQ(strnspn("", SIZE_MAX, "a"), 0u);
    EXPECT_EQ(strnspn("\xFF\x80z", SIZE_MAX, "\x80\xFF"), 2u);
    EXPECT_EQ(strnspn("aa\0aa", 5, "a"), 2u);
}

TEST(TextSearch, SpansAlikeUnderBothNames) {
    EXPECT_EQ(strnspnx("123", SIZE_MAX, "0123456789"), 3u);
    EXPECT_EQ(strnspnx("123abc", SIZE_MAX, "0123456789"), 3u);
    EXPECT_EQ(strnspnx("123abc", 3, "0123456789"), 3u);
    EXPECT_EQ(strnspnx("123abc", 4, "0123456789"), 3u);
    EXPECT_EQ(strnspnx("123abc", 2, "0123456789"), 2u);
    EXPECT_EQ(strnspnx("12\0"
                       "34",
                       5, "0123456789"),
              2u);  // a NUL is never accepted
    EXPECT_EQ(strnspnx("", SIZE_MAX, "a"), 0u);
}

TEST(TextSearch, ReadsNothingPastTheLength) {
    GuardedBytes text(string_view("aXbXcX"));
    EXPECT_EQ(placeOf(strncasestr(text.chars(), 6, "cx"), text.chars()), 4u);
    EXPECT_EQ(strncasestr(text.chars(), 6, "cxd"), nullptr);
    EXPECT_EQ(strnspn(text.chars(), 6, "abcX"), 6u);
    EXPECT_EQ(strnspnx(text.chars(), 6, "abcX"), 6u);
    GuardedBytes terminated = GuardedBytes::terminated("aXb");
    EXPECT_EQ(stristr(terminated.chars(), "bc"), nullptr);
    EXPECT_EQ(strnspn(terminated.chars(), SIZE_MAX, "abX"), 3u);
    EXPECT_EQ(strnspnx(terminated.chars(), SIZE_MAX, "abX"), 3u);
}

struct TerminatedSearch {
    const char* name;
    const char* (*find)(const char* text, const char* pattern);
};

constexpr TerminatedSearch kTerminatedSearches[] = {
    {"stristr",
     [](const char* text, const char* pattern) -> const char* { return stristr(text, pattern); }},
    {"strncasestr",
     [](const char* text, const char* pattern) -> const char* {
         return strncasestr(text, SIZE_MAX, pattern);
     }},
    {"strncasestr of a length",
     [](const char* text, const char* pattern) -> const char* {
         return strncasestr(text, SIZE_MAX - 1, pattern);
     }},
    {"BoyerMooreSearch",
     [](const char* text, const char* pattern) {
         return static_cast<const char*>(BoyerMooreSearch(text, SIZE_MAX, pattern, SIZE_MAX));
     }},
};

// Measuring all of the text at each call would make a walk from place to place take the square of
// its length. The text has no terminator, so the program ends where one is looked for.
TEST(TextSearch, FindsNothingInANullText) {
    for (const char* pattern : {"", "a"}) {
        EXPECT_EQ(stristr(nullptr, pattern), nullptr);
        EXPECT_EQ(strncasestr(nullptr, 3, pattern), nullptr);
    }
}

TEST(TextSearch, LooksNotFarBehindThePlace) {
    for (const TerminatedSearch& search : kTerminatedSearches) {
        SCOPED_TRACE(search.name);
        for (const std::size_t start : {0u, 1u, 100u, 511u, 512u, 5000u, 40000u}) {
            std::string text(4096 + 4 * start, '.');
            text.replace(start, 3, "abc");
            GuardedBytes guarded{string_view(text)};
            EXPECT_EQ(placeOf(search.find(guarded.chars(), "abc"), guarded.chars()), start);
            EXPECT_EQ(placeOf(search.find(guarded.chars() + start, "a"), guarded.chars()), start);
            EXPECT_EQ(search.find(guarded.chars() + start, ""), guarded.chars() + start);
        }
    }
}

// The search finds a place before, across or after any cut of a long text, and no place behind its
// end.
TEST(TextSearch, FindsPlacesAnywhereInLongTexts) {
    for (const TerminatedSearch& search : kTerminatedSearches) {
        SCOPED_TRACE(search.name);
        for (const std::size_t size : {1u, 2u, 3u, 100u, 600u}) {
            std::string pattern(size, 'b');
            pattern.back() = 'a';
            for (std::size_t start = 0; start < 4000; start += size < 100 ? 3 : 17) {
                std::string text(start, 'b');
                text += pattern;
                const char* const place = search.find(text.c_str(), pattern.c_str());
                ASSERT_EQ(placeOf(place, text.c_str()), start) << size;
                text.pop_back();
                ASSERT_EQ(search.find(text.c_str(), pattern.c_str()), nullptr) << start;
            }
        }
    }
}

TEST(BoyerMoore, FindsTheFirstPlace) {
    EXPECT_EQ(boyerMoore("here is a simple example", "example"), 17u);
    EXPECT_EQ(boyerMoore("abcabc", "abc"), 0u);
    EXPECT_EQ(boyerMoore("abcabd", "abd"), 3u);
    EXPECT_EQ(boyerMoore("abc", "abcd"), kNone);
    EXPECT_EQ(boyerMoore("abc", ""), 0u);
    EXPECT_EQ(boyerMoore("", ""), 0u);
    EXPECT_EQ(boyerMoore("", "a"), kNone);
    EXPECT_EQ(boyerMoore("xyz", "z"), 2u);
    EXPECT_EQ(boyerMoore("xyz", "Z"), kNone);
}

TEST(BoyerMoore, TakesLengthsAsTheyAre) {
    const char text[] = "a\0b\0c";
    EXPECT_EQ(BoyerMooreSearch(text, 5, "\0c", 2), text + 3);
    EXPECT_EQ(BoyerMooreSearch(text, SIZE_MAX, "b", 1), nullptr);
    EXPECT_EQ(BoyerMooreSearch(text, 5, "b", SIZE_MAX), text + 2);
    EXPECT_EQ(BoyerMooreSearch(nullptr, 0, "b", 1), nullptr);
    EXPECT_EQ(BoyerMooreSearch(text, 5, nullptr, 0), text);
}

// Combines every text over a small alphabet with every pattern, so that all kinds of repetition
// occur.
void forEachWord(string_view alphabet, std::size_t longest, auto&& use) {
    std::vector<std::string> words = {""};
    for (std::size_t first = 0, length = 0; length <= longest; ++length) {
        const std::size_t end = words.size();
        for (; first < end; ++first) {
            use(words[first]);
            if (length == longest) continue;
            for (const char letter : alphabet) words.push_back(words[first] + letter);
        }
    }
}

TEST(BoyerMoore, AgreesWithMemmemOnAllShortTexts) {
    forEachWord("ab", 10, [](const std::string& text) {
        forEachWord("ab", 6, [&](const std::string& pattern) {
            const std::size_t place = judged(text, pattern);
            ASSERT_EQ(boyerMoore(text, pattern), place) << text << " " << pattern;
            if (pattern.empty()) return;
            ASSERT_EQ(TwoWaySearch<ExactBytes>(pattern).find(text), place)
                << text << " " << pattern;
        });
    });
}

// A text that repeats itself, with some changes.
std::string repetitiveText(std::mt19937& random, std::size_t size, unsigned letters) {
    const std::size_t period = 1 + random() % 7;
    std::string text(size, 'a');
    for (std::size_t i = 0; i < size; ++i) {
        const bool isNew = i < period || random() % 40 == 0;
        text[i] = isNew ? static_cast<char>('a' + random() % letters) : text[i - period];
    }
    return text;
}

TEST(BoyerMoore, AgreesWithMemmemOnGeneratedTexts) {
    std::mt19937 random(3);
    for (int i = 0; i < 20000; ++i) {
        const unsigned letters = 2 + random() % 4;
        const std::string text = repetitiveText(random, random() % 2000, letters);
        std::string pattern;
        if (random() % 2 == 0 && !text.empty()) {
            pattern = text.substr(random() % text.size(), random() % 700);
            if (random() % 4 == 0 && !pattern.empty()) pattern[random() % pattern.size()] ^= 1;
        } else {
            pattern = repetitiveText(random, random() % 12, letters);
        }
        const std::size_t place = judged(text, pattern);
        ASSERT_EQ(boyerMoore(text, pattern), place) << text << "\n" << pattern;
        if (pattern.empty()) continue;
        ASSERT_EQ(TwoWaySearch<ExactBytes>(pattern).find(text), place) << text << "\n" << pattern;
    }
}

TEST(BoyerMoore, AgreesWithMemmemOnBytesOfAllValues) {
    std::mt19937 random(4);
    std::string text(20000, ' ');
    for (char& byte : text) byte = static_cast<char>(random());
    for (const std::size_t size : {1u, 2u, 3u, 4u, 8u, 31u, 255u, 256u, 257u, 258u, 300u, 1000u}) {
        for (int i = 0; i < 50; ++i) {
            std::string pattern = text.substr(random() % (text.size() - size), size);
            ASSERT_EQ(boyerMoore(text, pattern), judged(text, pattern));
            pattern[random() % size] ^= 0x20;
            ASSERT_EQ(boyerMoore(text, pattern), judged(text, pattern));
        }
    }
}

TEST(BoyerMoore, ReadsNothingBehindTextAndPattern) {
    std::mt19937 random(6);
    for (std::size_t size = 0; size < 40; ++size) {
        for (std::size_t patternSize = 0; patternSize < 12; ++patternSize) {
            GuardedBytes text(repetitiveText(random, size, 2));
            GuardedBytes pattern(repetitiveText(random, patternSize, 2));
            EXPECT_EQ(boyerMoore(text.text(), pattern.text()), judged(text.text(), pattern.text()));
        }
    }
}

TEST(TextSearch, IgnoringCaseAgreesWithMemmemOnLoweredTexts) {
    std::mt19937 random(8);
    for (int i = 0; i < 10000; ++i) {
        const auto mixed = [&](std::string text) {
            for (char& c : text) c = random() % 2 == 0 ? static_cast<char>(c - 32) : c;
            return text;
        };
        const std::string text = mixed(repetitiveText(random, random() % 400, 3));
        const std::string pattern =
            random() % 2 == 0 || text.empty()
                ? mixed(repetitiveText(random, random() % 10, 3))
                : mixed(lowered(text.substr(random() % text.size(), random() % 100)));
        const std::size_t place = judged(lowered(text), lowered(pattern));
        const char* const found = strncasestr(text.c_str(), text.size(), pattern.c_str());
        ASSERT_EQ(placeOf(found, text.c_str()), place) << text << "\n" << pattern;
        ASSERT_EQ(placeOf(stristr(text.c_str(), pattern.c_str()), text.c_str()), place);
        if (pattern.empty()) continue;
        ASSERT_EQ(TwoWaySearch<BytesIgnoringCase>(pattern).find(text), place) << text << "\n"
                                                                              << pattern;
    }
}

// A search whose time is the product of both lengths would need hours for these.
TEST(TextSearch, TakesTimeInProportionToTheText) {
    constexpr std::size_t kSize = 4'000'000;
    const std::string half(kSize / 4, 'a');
    const std::string text(kSize, 'a');
    for (const std::string& pattern : {half + "b" + half, "b" + half, half + "b", half + "ba"}) {
        EXPECT_EQ(boyerMoore(text, pattern), kNone);
        EXPECT_EQ(stristr(text.c_str(), pattern.c_str()), nullptr);
        EXPECT_EQ(TwoWaySearch<ExactBytes>(pattern).find(text), kNone);
    }
    EXPECT_EQ(boyerMoore(text + "b" + half, half + "b" + half), kSize - half.size());
}

}  // namespace

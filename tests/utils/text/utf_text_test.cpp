#include "halvane/utils/text/utf_text.h"

#include <cstddef>
#include <cstdint>
#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "tests/support/guarded_bytes.h"

namespace {

using halvane::testing::GuardedBytes;

struct Row {
    std::string text;
    std::vector<std::size_t> lengths;  // for a maximum of 0, 1, ...
};

TEST(UTFText, IsCutBetweenCharacters) {
    const std::vector<Row> rows = {
        {"abc", {0, 1, 2, 3, 3}},
        {"", {0, 0}},
        {"a\xC3\xA9z", {0, 1, 1, 3, 4, 4}},
        {"\xE2\x82\xAC\xE2\x82\xAC", {0, 0, 0, 3, 3, 3, 6, 6}},
        {"\xF0\x9F\x98\x80.", {0, 0, 0, 0, 4, 5}},
        {"\xF8\x88\x80\x80\x80.", {0, 0, 0, 0, 0, 5, 6}},
        {"\xFC\x84\x80\x80\x80\x80.", {0, 0, 0, 0, 0, 0, 6, 7}},
        {"\xED\x95\x9C.", {0, 0, 0, 3, 4}},  // ED before 80 to 9F is a character
        // U+1F600 as a surrogate pair: the function drops the first half if that would be the end.
        // If it drops a part of the second half, it does not look at the text before it again.
        {"a\xED\xA0\xBD\xED\xB8\x80z", {0, 1, 1, 1, 1, 4, 4, 7, 8}},
        {"\xED\xAF\xBF\xED\xB0\x80.", {0, 0, 0, 0, 3, 3, 6, 7}},
    };
    for (const Row& row : rows) {
        for (std::size_t maximum = 0; maximum < row.lengths.size(); ++maximum) {
            EXPECT_EQ(TruncateUTF8(row.text.data(), row.text.size(), maximum), row.lengths[maximum])
                << ::testing::PrintToString(row.text) << " " << maximum;
            EXPECT_EQ(TruncateUTF8(row.text.c_str(), SIZE_MAX, maximum), row.lengths[maximum])
                << ::testing::PrintToString(row.text) << " " << maximum;
        }
    }
}

// A full stop at the end makes each text one byte too long.
TEST(UTFText, IsCutBeforeBytesThatAreNoCharacter) {
    const std::vector<std::pair<std::string, std::size_t>> rows = {
        {"a\xC3", 1},          // a lead byte alone
        {"a\xE2\x82", 1},      // a byte missing
        {"a\xC3\xA9\xA9", 3},  // a byte too many takes no whole character with it
        {"a\xE2\x82\xAC\x80\x80", 4},
        {"a\xFE\x80", 1},  // lead bytes that announce nothing
        {"a\xFF", 1},
        {"\x80\x80\x80", 0},  // nothing leads them
        {"ab\x80", 2},
        {"ab\x80\x80", 2},
        {"a\xED\xA0\xBD\x80", 1},
        {"a\xED\xA0\xBD", 1},  // half of a pair
        {"a\xED\xA0Z", 4},     // only the end is looked at
        {"a\xED\xA0\xBD\xC3", 4},
        {"\xC3\xE2\x82", 1},
        {"a\xED\xB8\x80", 4},
    };
    for (const auto& [text, length] : rows) {
        EXPECT_EQ(TruncateUTF8((text + ".").data(), text.size() + 1, text.size()), length)
            << ::testing::PrintToString(text);
    }
}

TEST(UTFText, LosesNoCharacterToAStrayByteBehindIt) {
    EXPECT_EQ(TruncateUTF8("a\x80\x80!", 4, 2), 1u);
    EXPECT_EQ(TruncateUTF8("a\x80\x80!", 4, 3), 1u);
    EXPECT_EQ(TruncateUTF8("a\x80\x80!", SIZE_MAX, 2), 1u);
    EXPECT_EQ(TruncateUTF8("\xC3\xA9\x80!", 4, 3), 2u);
}

TEST(UTFText, KeepsWhatFitsWhateverItHolds) {
    for (const std::string text : {"a\xC3", "\x80\x80", "\xED\xA0\xBD", "\xFF"}) {
        EXPECT_EQ(TruncateUTF8(text.data(), text.size(), text.size()), text.size());
        EXPECT_EQ(TruncateUTF8(text.c_str(), SIZE_MAX, text.size()), text.size());
        EXPECT_EQ(TruncateUTF8(text.c_str(), SIZE_MAX, SIZE_MAX), text.size());
    }
    EXPECT_EQ(TruncateUTF8("a\0\xC3\xA9", 4, 3), 2u);  // a NUL is a byte like others
}

TEST(UTFText, ReadsNothingPastItsEnd) {
    for (const std::string text : {"a", "\xC3\xA9", "\x80", "\xED\xA0"}) {
        GuardedBytes guarded{std::string_view(text)};
        for (std::size_t maximum = 0; maximum <= 4; ++maximum) {
            EXPECT_LE(TruncateUTF8(guarded.chars(), guarded.size(), maximum), maximum);
        }
        GuardedBytes terminated = GuardedBytes::terminated(text);
        for (std::size_t maximum = 0; maximum <= 4; ++maximum) {
            EXPECT_LE(TruncateUTF8(terminated.chars(), SIZE_MAX, maximum), maximum);
        }
    }
}

TEST(UTFText, CountsCodeUnits) {
    const std::uint16_t text[] = {'a', 0xD83D, 0xDE00, 0, 'b'};
    EXPECT_EQ(UTF16strlen(text, SIZE_MAX), 3u);
    EXPECT_EQ(UTF16strlen(text, 5), 3u);
    EXPECT_EQ(UTF16strlen(text, 2), 2u);
    EXPECT_EQ(UTF16strlen(text + 3, SIZE_MAX), 0u);
    GuardedBytes guarded(4, 0x20);
    EXPECT_EQ(UTF16strlen(reinterpret_cast<const std::uint16_t*>(guarded.data()), 2), 2u);
}

}  // namespace

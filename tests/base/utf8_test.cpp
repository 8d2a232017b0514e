#include <cstdint>
#include <gtest/gtest.h>
#include <string>

#include "halvane/base/utf8_internal.h"

#include "tests/support/guarded_bytes.h"

using namespace halvane;
using halvane::testing::GuardedBytes;

namespace {

struct Row {
    std::string text;
    std::uint32_t codePoint;
};

const Row kFirstAndLastOfEachSize[] = {
    {std::string(1, '\0'), 0},
    {"\x7F", 0x7F},
    {"\xC2\x80", 0x80},
    {"\xDF\xBF", 0x7FF},
    {"\xE0\xA0\x80", 0x800},
    {"\xED\x9F\xBF", 0xD7FF},
    {"\xEE\x80\x80", 0xE000},
    {"\xEF\xBF\xBF", 0xFFFF},
    {"\xF0\x90\x80\x80", 0x10000},
    {"\xF4\x8F\xBF\xBF", 0x10FFFF},
};

TEST(UTF8, ReadsTheFirstAndLastCharacterOfEachSize) {
    for (const Row& row : kFirstAndLastOfEachSize) {
        const auto character = firstUtf8Character(row.text + "x");
        ASSERT_TRUE(character) << row.codePoint;
        EXPECT_EQ(character->codePoint, row.codePoint);
        EXPECT_EQ(character->size, row.text.size());
    }
}

TEST(UTF8, RefusesEveryTruncation) {
    for (const Row& row : kFirstAndLastOfEachSize) {
        for (std::size_t size = 1; size < row.text.size(); ++size) {
            const GuardedBytes cut(std::string_view(row.text).substr(0, size));
            EXPECT_FALSE(firstUtf8Character(cut.text())) << row.codePoint << " cut to " << size;
            EXPECT_FALSE(isUtf8(cut.text()));
        }
    }
}

TEST(UTF8, RefusesWhatIsNoCharacter) {
    for (const char* text : {
             "\x80",              // a continuation by itself
             "\xC0\x80",          // overlong
             "\xC1\xBF",          // overlong
             "\xE0\x9F\xBF",      // overlong
             "\xF0\x8F\xBF\xBF",  // overlong
             "\xED\xA0\x80",      // a surrogate
             "\xED\xBF\xBF",      // a surrogate
             "\xF4\x90\x80\x80",  // above U+10FFFF
             "\xF5\x80\x80\x80",  // above U+10FFFF
             "\xFF",
             "\xC2x",  // false continuations
             "\xE1\x80x",
             "\xF1\x80\x80x",
         }) {
        EXPECT_FALSE(firstUtf8Character(text));
        EXPECT_FALSE(isUtf8(std::string("before") + text));
    }
}

TEST(UTF8, IsTextOfCharactersAlone) {
    EXPECT_TRUE(isUtf8(""));
    std::string all;
    for (const Row& row : kFirstAndLastOfEachSize) all += row.text;
    EXPECT_TRUE(isUtf8(all));
    EXPECT_FALSE(isUtf8(all + "\xFF"));
    EXPECT_FALSE(isUtf8("\xFF" + all));
}

TEST(UTF8, IsCountedInUTF16CodeUnits) {
    EXPECT_EQ(utf16Length(""), 0u);
    EXPECT_EQ(utf16Length(std::string(3, '\0')), 3u);
    EXPECT_EQ(utf16Length("a\xC3\xA9\xE2\x82\xAC"), 3u);
    EXPECT_EQ(utf16Length("\xEF\xBF\xBF"), 1u);
    EXPECT_EQ(utf16Length("\xF0\x90\x80\x80"), 2u);
    EXPECT_EQ(utf16Length("\xF4\x8F\xBF\xBFx"), 3u);
    EXPECT_EQ(utf16Length("\xFFx\xED\xA0\x80"), 5u) << "each byte of no character counts";
    EXPECT_EQ(utf16Length("\xE2\x82"), 2u);
}

}  // namespace

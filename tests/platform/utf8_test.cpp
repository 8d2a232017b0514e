#include <gtest/gtest.h>
#include <string>

#include "halvane/platform/utf8_internal.h"

namespace {

using halvane::isUtf8;

struct Row {
    std::string text;
    bool isWellFormed;
    const char* why;
};

TEST(Utf8, KnowsWellFormedText) {
    const Row rows[] = {
        {"", true, "nothing"},
        {"plain", true, "ASCII"},
        {std::string("\0", 1), true, "U+0000"},
        {"\xC2\x80", true, "U+0080"},
        {"\xDF\xBF", true, "U+07FF"},
        {"\xE0\xA0\x80", true, "U+0800"},
        {"\xED\x9F\xBF", true, "U+D7FF, the last before the surrogates"},
        {"\xEE\x80\x80", true, "U+E000, the first after them"},
        {"\xEF\xBF\xBF", true, "U+FFFF"},
        {"\xF0\x90\x80\x80", true, "U+10000"},
        {"\xF4\x8F\xBF\xBF", true, "U+10FFFF"},
        {"\x80", false, "a continuation byte that nothing leads"},
        {"\xC0\x80", false, "U+0000, overlong"},
        {"\xC1\xBF", false, "U+007F, overlong"},
        {"\xE0\x9F\xBF", false, "U+07FF, overlong"},
        {"\xF0\x8F\xBF\xBF", false, "U+FFFF, overlong"},
        {"\xED\xA0\x80", false, "U+D800, a surrogate"},
        {"\xF4\x90\x80\x80", false, "U+110000"},
        {"\xF5\x80\x80\x80", false, "a lead byte that there is not"},
        {"\xFF", false, "no byte of UTF-8"},
        {"\xC2", false, "two bytes cut short"},
        {"\xE2\x82", false, "three bytes cut short"},
        {"\xF0\x9F\x93", false, "four bytes cut short"},
        {"\xE2\x28\xA1", false, "a second byte that continues nothing"},
        {"\xE2\x82\x28", false, "a third byte that continues nothing"},
        {"good\xFF", false, "bad at the end"},
    };
    for (const Row& row : rows) EXPECT_EQ(isUtf8(row.text), row.isWellFormed) << row.why;
}

TEST(Utf8, TellsCharactersAndTheirSizes) {
    const auto character = halvane::firstUtf8Character("\xF0\x9F\x93\xB6 rest");
    ASSERT_TRUE(character);
    EXPECT_EQ(character->codePoint, U'\U0001F4F6');
    EXPECT_EQ(character->size, 4u);
}

}  // namespace

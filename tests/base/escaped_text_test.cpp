#include "halvane/base/escaped_text.h"

#include <cstddef>
#include <gtest/gtest.h>
#include <initializer_list>
#include <string_view>

#include "halvane/base/byte_buffer.h"

#include "tests/support/hostile_bytes.h"

using halvane::ByteBuffer;
using halvane::escapedText;
using namespace std::literals;

namespace {

struct Row {
    std::string_view octets;
    std::string_view text;
    const char* reason;
};

void expectRows(std::initializer_list<Row> rows) {
    for (const Row& row : rows) {
        const ByteBuffer octets = ByteBuffer::fromText(row.octets);
        EXPECT_EQ(escapedText(octets.bytes()), row.text) << row.reason;
    }
}

TEST(EscapedText, KeepsPrintableUTF8) {
    expectRows({
        {"", "", "nothing"},
        {"Maple 12 ~", "Maple 12 ~", "ASCII up to its last printable character"},
        {"\xC2\xA1", "\xC2\xA1", "U+00A1, first printable one of two octets here"},
        {"\xDF\xBF", "\xDF\xBF", "U+07FF, last of two octets"},
        {"\xE0\xA0\x80", "\xE0\xA0\x80", "U+0800, first of three octets"},
        {"\xED\x9F\xBF", "\xED\x9F\xBF", "U+D7FF, last before the surrogates"},
        {"\xEE\x80\x80", "\xEE\x80\x80", "U+E000, first after the surrogates"},
        {"\xEF\xBF\xBD", "\xEF\xBF\xBD", "U+FFFD"},
        {"\xF0\x90\x80\x80", "\xF0\x90\x80\x80", "U+10000, first of four octets"},
        {"\xF4\x8F\xBF\xBD", "\xF4\x8F\xBF\xBD", "U+10FFFD"},
    });
}

TEST(EscapedText, EscapesControlCharacters) {
    expectRows({
        {"\0a\x1F "sv, "\\x00a\\x1F ", "C0"},
        {"\x1B[2J", "\\x1B[2J", "a terminal's clear-screen command"},
        {"\x7F", "\\x7F", "DELETE"},
        {"\xC2\x80\xC2\x9F\xC2\xA0", "\\xC2\\x80\\xC2\\x9F\xC2\xA0", "C1, then U+00A0"},
    });
}

TEST(EscapedText, EscapesInvisibleAndDirectionalCharacters) {
    expectRows({
        {"a\xE2\x80\x8B\x62", "a\\xE2\\x80\\x8Bb", "U+200B zero width space"},
        {"\xE2\x80\x8D", "\\xE2\\x80\\x8D", "U+200D zero width joiner"},
        {"\xE2\x80\x8F", "\\xE2\\x80\\x8F", "U+200F right-to-left mark"},
        {"\xE2\x80\x90", "\xE2\x80\x90", "U+2010 hyphen, which is visible"},
        {"\xE2\x80\xA8", "\\xE2\\x80\\xA8", "U+2028 line separator"},
        {"\xE2\x80\xAE", "\\xE2\\x80\\xAE", "U+202E right-to-left override"},
        {"\xE2\x81\xA6", "\\xE2\\x81\\xA6", "U+2066 left-to-right isolate"},
        {"\xE2\x81\xA9", "\\xE2\\x81\\xA9", "U+2069 pop directional isolate"},
        {"\xD8\x9C", "\\xD8\\x9C", "U+061C Arabic letter mark"},
        {"\xEF\xBB\xBF", "\\xEF\\xBB\\xBF", "U+FEFF byte order mark"},
        {"\xF3\xA0\x81\x81", "\\xF3\\xA0\\x81\\x81", "U+E0041 tag letter"},
    });
}

TEST(EscapedText, DoublesBackslashes) {
    expectRows({{"\\x41", "\\\\x41", "text that looks like an escape stays apart from one"}});
}

// Rows as in The Unicode Standard, 3.9, tables 3-8 to 3-11.
TEST(EscapedText, EscapesWhatIsNotWellFormed) {
    expectRows({
        {"\x80", "\\x80", "continuation without a lead"},
        {"\xBF", "\\xBF", "continuation without a lead"},
        {"\xC0\xAF", "\\xC0\\xAF", "overlong U+002F"},
        {"\xC1\xBF", "\\xC1\\xBF", "overlong U+007F"},
        {"\xE0\x80\xBF", "\\xE0\\x80\\xBF", "overlong in three octets"},
        {"\xE0\x9F\xBF", "\\xE0\\x9F\\xBF", "overlong U+07FF"},
        {"\xF0\x81\x82\x41", "\\xF0\\x81\\x82\x41", "overlong in four octets, then a letter"},
        {"\xF0\x8F\xBF\xBF", "\\xF0\\x8F\\xBF\\xBF", "overlong U+FFFF"},
        {"\xED\xA0\x80", "\\xED\\xA0\\x80", "first surrogate"},
        {"\xED\xBF\xBF", "\\xED\\xBF\\xBF", "last surrogate"},
        {"\xF4\x90\x80\x80", "\\xF4\\x90\\x80\\x80", "U+110000"},
        {"\xF5\x80\x80\x80", "\\xF5\\x80\\x80\\x80", "lead beyond the last"},
        {"\xFE\xFF", "\\xFE\\xFF", "never in UTF-8"},
        {"\xC3", "\\xC3", "two octets, cut after one"},
        {"\xE2\x82", "\\xE2\\x82", "three octets, cut after two"},
        {"\xF0\x9F\x93", "\\xF0\\x9F\\x93", "four octets, cut after three"},
        {"\xE2\x82z", "\\xE2\\x82z", "three octets, broken by a letter"},
        {"\xC3\xC3\xA9", "\\xC3\xC3\xA9", "a lead, then a whole character"},
        {"\xB2\xE2\xCA\xD4", "\\xB2\\xE2\\xCA\\xD4", "GB 18030"},
    });
}

TEST(EscapedText, HandlesEveryPrefixOfEveryKindOfSequence) {
    const halvane::testing::Bytes sample = {0x41, 0xC3, 0xA9, 0xE2, 0x82, 0xAC, 0xF0, 0x9F,
                                            0x93, 0xB6, 0xE2, 0x80, 0xAE, 0x5C, 0x1B};
    std::size_t previous = 0;
    halvane::testing::forEachPrefix(sample, [&](const ByteBuffer& prefix) {
        const std::size_t size = escapedText(prefix.bytes()).size();
        EXPECT_GE(size, prefix.size());
        EXPECT_LE(size, 4 * prefix.size());
        previous = size;
    });
    EXPECT_EQ(previous, 1u + 2 + 3 + 4 + 3 * 4 + 2 + 4);
}

TEST(EscapedText, TakesTextWithNULsToo) {
    using namespace std::string_view_literals;
    EXPECT_EQ(halvane::escapedText("a\0b\n"sv), "a\\x00b\\x0A");
    EXPECT_EQ(halvane::escapedText(""sv), "");
}

}  // namespace

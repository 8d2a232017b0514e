#include "halvane/utils/text/quoted_text.h"

#include <algorithm>
#include <cstddef>
#include <gtest/gtest.h>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "tests/support/guarded_bytes.h"

namespace {

using halvane::testing::GuardedBytes;
using Words = std::vector<std::string>;

using Parse = bool (*)(const char*, const char*, char, char*, std::size_t, std::size_t*,
                       std::size_t*, const char**);

// Returns all tokens of a text, which ends at an inaccessible page.
Words tokens(Parse parse, std::string_view text, char delimiter) {
    GuardedBytes guarded(text);
    GuardedBytes buffer(text.size());  // no token is longer than its written form
    const char* at = guarded.chars();
    const char* const end = at + guarded.size();
    std::size_t copied = 0;
    std::size_t total = 0;
    Words words;
    while (parse(at, end, delimiter, buffer.chars(), buffer.size(), &copied, &total, &at)) {
        EXPECT_EQ(copied, total);
        words.emplace_back(buffer.chars(), total);
    }
    return words;
}

struct Row {
    std::string text;
    Words words;
};

void expectWords(Parse parse, char delimiter, const std::vector<Row>& rows) {
    for (const Row& row : rows) {
        EXPECT_EQ(tokens(parse, row.text, delimiter), row.words)
            << ::testing::PrintToString(row.text);
    }
}

TEST(QuotedText, IsReadTokenByToken) {
    expectWords(ParseQuotedEscapedString, ' ',
                {
                    {"", {}},
                    {" \t\n\v\f\r ", {}},
                    {"one", {"one"}},
                    {"  one two ", {"one", "two"}},
                    {"one  two", {"one", "two"}},  // the second blank is skipped
                    {"one\ttwo", {"one\ttwo"}},    // no delimiter
                });
    expectWords(ParseQuotedEscapedString, ',',
                {
                    {"one,two", {"one", "two"}},
                    {"one, two ,three", {"one", "two ", "three"}},
                    {"one,,two", {"one", "", "two"}},
                    {",", {""}},
                    {"one,", {"one"}},
                    {"one, ", {"one"}},
                });
}

TEST(QuotedText, ProtectsWhatStandsInQuotes) {
    expectWords(ParseQuotedEscapedString, ' ',
                {
                    {"\"one two\" three", {"one two", "three"}},
                    {"'one two' three", {"one two", "three"}},
                    {"a\"b c\"'d'e", {"ab cde"}},
                    {"\"\" '' x", {"", "", "x"}},
                    {"\"it's\" 'say \"x\"'", {"it's", "say \"x\""}},
                    {"'one two", {"one two"}},  // never closed
                    {"\"one two", {"one two"}},
                    {"'a\\nb\\\\'", {"a\\nb\\\\"}},  // all of it as it is
                    {"'a\\' b", {"a\\", "b"}},
                    {"'a\\\nb'", {"a\\\nb"}},
                    {"' '", {" "}},
                });
}

TEST(QuotedText, EscapesOutsideOfQuotes) {
    expectWords(ParseQuotedEscapedString, ' ',
                {
                    {"one\\ two", {"one two"}},
                    {"\\\"one\\\" \\'two\\'", {"\"one\"", "'two'"}},
                    {"a\\\\b", {"a\\b"}},
                    {"\\n\\t", {"nt"}},
                    {"\\x41\\X6a", {"Aj"}},
                    {"\\x4", {"x4"}},
                    {"\\xg1", {"xg1"}},
                    {"\\x411", {"A1"}},
                    {"\\101\\0611", {"A11"}},
                    {"\\377", {"\xFF"}},
                    {"\\400", {"400"}},  // the first digit is above 3
                    {"\\18", {"18"}},
                    {"\\08a", {"08a"}},
                    {"\\10", {"10"}},
                    {"\\x20x", {" x"}},  // a blank that ends nothing
                    {"\\x00x", {std::string("\0x", 2)}},
                    {"a\\", {"a\\"}},  // nothing behind it
                    {"\\", {"\\"}},
                });
}

TEST(QuotedText, EscapesInDoubleQuotes) {
    expectWords(ParseQuotedEscapedString, ' ',
                {
                    {"\"a\\\"b\\\\c\"", {"a\"b\\c"}},
                    {"\"a\\nb\\'c\\ d\"", {"a\\nb\\'c\\ d"}},
                    {"\"\\x41\\101\"", {"AA"}},
                    {"\"\\x4\"", {"\\x4"}},
                    {"\"\\400\"", {"\\400"}},
                    {"\"\\x22\" b", {"\"", "b"}},
                    {"\"a\\", {"a\\"}},
                });
}

TEST(QuotedText, ContinuesLines) {
    expectWords(ParseQuotedEscapedString, ' ',
                {
                    {"one\\\ntwo", {"onetwo"}},
                    {"\"one\\\ntwo\"", {"onetwo"}},
                    {"\\\none", {"one"}},
                    {"one \\\n two", {"one", "", "two"}},  // an empty token before the blank
                    {"one \\\n", {"one", ""}},
                    {"\\\n\\\n", {""}},
                });
    expectWords(ParseQuotedEscapedString, ',',
                {
                    {"\\\n  one,b", {"  one", "b"}},  // the blanks are within the token
                    {" \\\none", {"one"}},
                    {" \\\n one", {" one"}},
                    {"a, \\\n ,b", {"a", " ", "b"}},
                });
}

TEST(QuotedText, ReadsAnEmptyTokenOfAContinuedLineAlone) {
    const std::string text = "\\\n";
    const char* next = nullptr;
    std::size_t copied = 99;
    std::size_t total = 99;
    EXPECT_TRUE(ParseQuotedEscapedString(text.data(), text.data() + 2, ',', nullptr, 0, &copied,
                                         &total, &next));
    EXPECT_EQ(copied, 0u);
    EXPECT_EQ(total, 0u);
    EXPECT_EQ(next, text.data() + 2);
}

TEST(QuotedText, TakesNullsAndAnyDelimiter) {
    EXPECT_EQ(tokens(ParseQuotedEscapedString, std::string_view("a\0b c", 5), '\0'),
              (Words{"a", "b c"}));
    EXPECT_EQ(tokens(ParseQuotedEscapedString, std::string_view("a\0b c", 5), ' '),
              (Words{std::string("a\0b", 3), "c"}));
    EXPECT_EQ(tokens(ParseQuotedEscapedString, "a'b", '\''), (Words{"a", "b"}));
    EXPECT_EQ(tokens(ParseQuotedEscapedString, "a\\b", '\\'), (Words{"a", "b"}));
}

TEST(QuotedText, CountsWhatDoesNotFit) {
    const std::string text = "'abcdef' x";
    const char* next = nullptr;
    for (std::size_t capacity = 0; capacity <= 8; ++capacity) {
        GuardedBytes buffer(capacity);
        std::size_t copied = 99;
        std::size_t total = 99;
        EXPECT_TRUE(ParseQuotedEscapedString(text.data(), text.data() + text.size(), ' ',
                                             buffer.chars(), capacity, &copied, &total, &next));
        EXPECT_EQ(copied, std::min<std::size_t>(capacity, 6));
        EXPECT_EQ(total, 6u);
        EXPECT_EQ(std::string(buffer.chars(), copied), std::string("abcdef").substr(0, copied));
        EXPECT_EQ(next, text.data() + 9);
    }
}

TEST(QuotedText, WritesNothingWithoutAToken) {
    for (const Parse parse : {ParseQuotedEscapedString, ParseEscapedString}) {
        char buffer[] = "x";
        std::size_t copied = 99;
        std::size_t total = 99;
        const char* next = buffer;
        EXPECT_FALSE(parse("", "", ' ', buffer, 1, &copied, &total, &next));
        EXPECT_STREQ(buffer, "x");
        EXPECT_EQ(copied, 99u);
        EXPECT_EQ(total, 99u);
        EXPECT_EQ(next, buffer);
        const std::string text = "abc";
        EXPECT_TRUE(
            parse(text.data(), text.data() + 3, ' ', nullptr, 0, nullptr, nullptr, nullptr));
    }
}

TEST(EscapedText, TakesTheByteBehindABackslashAsItIs) {
    expectWords(ParseEscapedString, ',',
                {
                    {"", {}},
                    {"one,two", {"one", "two"}},
                    {"one\\,two,three", {"one,two", "three"}},
                    {"a\\\\,b", {"a\\", "b"}},
                    {"\\x41\\n", {"x41n"}},
                    {" one , two ", {" one ", " two "}},  // white space stays
                    {"'a,b'", {"'a", "b'"}},              // quotes are nothing
                    {"a,,b,", {"a", "", "b"}},
                    {",", {""}},
                    {"a\\", {"a\\"}},
                });
    EXPECT_EQ(tokens(ParseEscapedString, "a\\b", '\\'), (Words{"a", "b"}));
}

// A text with each byte protected by a backslash is read back, whatever it holds.
TEST(EscapedText, ReadsBackWhatWasEscaped) {
    std::mt19937 random(1);
    const std::string_view alphabet("ab,\\\"' \n\tx0\0", 12);
    for (int i = 0; i < 5000; ++i) {
        std::string text;
        std::string escaped;
        std::string quoted = "'";
        for (std::size_t size = 1 + random() % 10; text.size() < size;) {
            const char byte = alphabet[random() % alphabet.size()];
            text += byte;
            escaped += {'\\', byte};
            if (byte == '\'') {
                quoted += "'\\''";
            } else {
                quoted += byte;
            }
        }
        ASSERT_EQ(tokens(ParseEscapedString, escaped, ','), (Words{text}));
        ASSERT_EQ(tokens(ParseQuotedEscapedString, quoted + "'", ','), (Words{text}));
    }
}

TEST(QuotedText, ComesToAnEndWhateverItHolds) {
    std::mt19937 random(2);
    const std::string_view alphabet = "\"'\\\n x014,";
    for (int i = 0; i < 20000; ++i) {
        std::string text(random() % 12, ' ');
        for (char& byte : text) byte = alphabet[random() % alphabet.size()];
        std::size_t size = 0;
        for (const auto& word : tokens(ParseQuotedEscapedString, text, ',')) size += word.size();
        ASSERT_LE(size, text.size());
    }
}

}  // namespace

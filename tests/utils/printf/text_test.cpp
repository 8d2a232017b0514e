#include <array>
#include <cstddef>

#include "tests/utils/printf/test_support.h"

namespace {

using halvane::testing::printed;

constexpr const char* kNull = nullptr;

TEST(PrintFCharacter, PrintsAnyByte) {
    EXPECT_EQ(printed("%c%c%c", 'a', 0x7F, 0xE9), "a\x7F\xE9");
    EXPECT_EQ(printed("%c", 0), std::string(1, '\0'));
    EXPECT_EQ(printed("[%3c|%-3c]", 'x', 'y'), "[  x|y  ]");
}

TEST(PrintFCharacter, QuotesAndReplacesWhatDoesNotPrint) {
    EXPECT_EQ(printed("%'c%'c%'c%'c%'c", 'a', 31, 32, 126, 127), "'a''^'' ''~''^'");
    EXPECT_EQ(printed("%''c%''C", 'a', 0x61626364u), "'a''abcd'");
    EXPECT_EQ(printed("[%'5c|%-'5c]", 'x', 'y'), "[  'x'|'y'  ]");
}

TEST(PrintFCharacterCode, PrintsFourBytesMostSignificantFirst) {
    EXPECT_EQ(printed("%C", 0x61626364u), "abcd");
    EXPECT_EQ(printed("%C", 0x1F207E7Fu), "^ ~^");
    EXPECT_EQ(printed("%'C", 0x61626300u), "'abc^'");
    EXPECT_EQ(printed("[%6C|%-'8C]", 0x61626364u, 0x61626364u), "[  abcd|'abcd'  ]");
}

TEST(PrintFText, KeepsWholeCharactersWithinThePrecision) {
    // 2, 3 and 4 bytes.
    const char* const text = "\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80";
    const std::array<std::size_t, 12> kept = {0, 0, 2, 2, 2, 5, 5, 5, 5, 9, 9, 9};
    for (std::size_t precision = 0; precision < kept.size(); ++precision) {
        EXPECT_EQ(printed("%.*s", static_cast<int>(precision), text),
                  std::string(text).substr(0, kept[precision]))
            << precision;
    }
}

TEST(PrintFText, KeepsMalformedTextThatIsNotCut) {
    EXPECT_EQ(printed("%s", "a\xC3"), "a\xC3");
    EXPECT_EQ(printed("%.9s", "a\xC3"), "a\xC3");
    EXPECT_EQ(printed("%.3s", "\x80\x80\x80\x80\x80"), "\x80\x80\x80");
}

// The terminator may be missing if the precision ends the text.
TEST(PrintFText, ReadsNothingBehindThePrecision) {
    const std::vector<char> text = {'a', 'b', 'c'};
    EXPECT_EQ(printed("%.3s", text.data()), "abc");
    EXPECT_EQ(printed("%'.5s", text.data()), "'abc'");
}

TEST(PrintFText, PrintsNullUnlessNothingIsAskedFor) {
    EXPECT_EQ(printed("%s|%.1s|%.0s|%#s|%##s|%###s", kNull, kNull, kNull, kNull, kNull, kNull),
              "<<NULL>>|<<NULL>>||<<NULL>>|<<NULL>>|<<NULL>>");
    EXPECT_EQ(printed("%S|%.5S|%.0S|%#S|%##S", kNull, kNull, kNull, kNull, kNull),
              "<<NULL>>|<<NULL>>||<<NULL>>|<<NULL>>");
    EXPECT_EQ(printed("[%10s|%-10s]", kNull, kNull), "[  <<NULL>>|<<NULL>>  ]");
    EXPECT_EQ(printed("%'s", kNull), "<<NULL>>");
    EXPECT_EQ(printed("%#.0s%##.0s%###.0s", kNull, kNull, kNull), "");
}

TEST(PrintFText, QuotesSinglyOrDoubly) {
    EXPECT_EQ(printed("%'s %''s", "a", "b"), "'a' \"b\"");
    EXPECT_EQ(printed("[%'6s|%-''6s]", "ab", "cd"), "[  'ab'|\"cd\"  ]");
    EXPECT_EQ(printed("%'s", ""), "''");
}

TEST(PrintFText, TakesTheQuotesOffThePrecision) {
    EXPECT_EQ(printed("%'.5s|%'.4s|%'.3s|%'.2s|%'.1s|%'.0s", "abcd", "abcd", "abcd", "abcd", "abcd",
                      "abcd"),
              "'abc'|'ab'|'a'|''||");
    EXPECT_EQ(printed("%''.4s", "\xC3\xA9\xC3\xA9"), "\"\xC3\xA9\"");
    EXPECT_EQ(printed("%''.5s", "\xC3\xA9\xC3\xA9"), "\"\xC3\xA9\"");
}

TEST(PrintFText, PrintsPascalStrings) {
    EXPECT_EQ(printed("%#s",
                      "\x03"
                      "abcdef"),
              "abc");
    EXPECT_EQ(printed("%#s",
                      "\x00"
                      "abc"),
              "");
    EXPECT_EQ(printed("%#.2s|%#.9s",
                      "\x03"
                      "abc",
                      "\x03"
                      "abc"),
              "ab|abc");
    EXPECT_EQ(printed("%#.2s",
                      "\x03"
                      "a\xC3\xA9"),
              "a");
    EXPECT_EQ(printed("[%#5s|%'#s]",
                      "\x03"
                      "abc",
                      "\x01"
                      "x"),
              "[  abc|'x']");
    const std::vector<char> exact = {2, 'o', 'k'};
    EXPECT_EQ(printed("%#s", exact.data()), "ok");
}

TEST(PrintFText, RefusesTooManyAlternates) {
    EXPECT_EQ(printed("%####s|%s", "x", "next"), "<< ERROR: %s with too many #'s (4) >>|next");
    EXPECT_EQ(printed("%#####s", kNull), "<< ERROR: %s with too many #'s (5) >>");
    EXPECT_EQ(printed("%###S|%s", kNull, "next"), "<< ERROR: %S with too many #'s (3) >>|next");
    EXPECT_EQ(printed(("%" + std::string(300, '#') + "s").c_str(), kNull),
              "<< ERROR: %s with too many #'s (255) >>");
}

TEST(PrintFFunctionName, IsFoundInASignature) {
    struct Row {
        const char* signature;
        const char* name;
    };
    constexpr std::array<Row, 17> kRows = {{
        {"+[C m:with:]", "+[C m:with:]"},
        {"-[C m:]", "m:"},
        {"-[C m:with:] tail", "m:with:"},
        {"-[C m:", "m:"},
        {"-[C]", "-[C"},
        {"int *f(void)", "f"},
        {"char **f(void)", "f"},
        {"void ns::C::m(int)", "ns::C::m"},
        {"virtual void C::m() const", "C::m"},
        {"const char * C::m(int)", "C::m"},
        {"void *C::m(int)", "C::m"},
        {"static int f(int a, int b)", "f"},
        {"main", "main"},
        {"int main", "main"},
        {"f(void)", "f"},
        {"", ""},
        {"***", ""},
    }};
    for (const auto& row : kRows)
        EXPECT_EQ(printed("%###s", row.signature), row.name) << row.signature;
    EXPECT_EQ(printed("%###.3s|%'###s|%###6s", "void name(int)", "int f()", "int f()"),
              "nam|'f'|     f");
}

TEST(PrintFUTF16, TakesTheByteOrderFromFlagsOrTheMark) {
    EXPECT_EQ(printed("%S", u"host"), "host");
    EXPECT_EQ(printed("%#S", "\0b\0i\0g\0\0"), "big");
    EXPECT_EQ(printed("%##S", "l\0i\0t\0\0\0"), "lit");
    for (const char* format : {"%S", "%#S", "%##S"}) {
        EXPECT_EQ(printed(format, "\xFE\xFF\0b\0e\0\0"), "be") << format;
        EXPECT_EQ(printed(format, "\xFF\xFEl\0e\0\0\0"), "le") << format;
        EXPECT_EQ(printed(format, "\xFE\xFF\0\0"), "") << format;
        EXPECT_EQ(printed(format, "\0\0"), "") << format;
    }
}

TEST(PrintFUTF16, ReplacesUnitsThatAreNotPrintableASCII) {
    EXPECT_EQ(printed("%S", u"a\u00E9\u0161~\x7F \x1Fz"), "a^^~^ ^z");
    EXPECT_EQ(printed("%S", u"\U0001F600"), "^^");
}

TEST(PrintFUTF16, LimitsCodeUnitsToThePrecision) {
    EXPECT_EQ(printed("%.2S|%.9S|%.0S", u"abc", u"abc", u"abc"), "ab|abc|");
    const std::vector<char16_t> unterminated = {u'x', u'y'};
    EXPECT_EQ(printed("%.2S", unterminated.data()), "xy");
    // The mark does not count as a unit.
    const std::vector<char16_t> marked = {0xFEFF, u'x', u'y'};
    EXPECT_EQ(printed("%.2S|%.1S", marked.data(), marked.data()), "xy|x");
    EXPECT_EQ(printed("%.2S", u"\uFEFFabc"), "ab");
    EXPECT_EQ(printed("%.2S", u"\uFFFEa\u6200c"), "^b");  // swapped
    EXPECT_EQ(printed("%'.4S|%'.2S", u"\uFEFFabc", u"\uFEFFabc"), "'ab'|''");
}

// Not even the byte-order mark: a precision of 0 allows a pointer to nothing.
TEST(PrintFUTF16, ReadsNothingWithAPrecisionOfZero) {
    const std::vector<char16_t> afterIt = {u'x'};
    EXPECT_EQ(printed("%.0S|%'.1S|", afterIt.data() + 1, afterIt.data() + 1), "||");
}

TEST(PrintFUTF16, HonoursFieldAndQuotes) {
    EXPECT_EQ(printed("[%5S|%-5S|%'S|%''S]", u"abc", u"abc", u"q", u"d"),
              "[  abc|abc  |'q'|\"d\"]");
    EXPECT_EQ(printed("%'.4S|%'.1S|", u"abcd", u"abcd"), "'ab'||");
    EXPECT_EQ(printed("%S", std::u16string(1000, u'w').c_str()), std::string(1000, 'w'));
}

// Text at an odd address is read byte by byte.
TEST(PrintFUTF16, ReadsUnalignedText) {
    const std::array<char, 6> bytes = {'?', '\0', 'o', '\0', 'k', '\0'};
    std::vector<char> text(bytes.begin(), bytes.end());
    text.push_back('\0');
    EXPECT_EQ(printed("%#S", text.data() + 1), "ok");
}

}  // namespace

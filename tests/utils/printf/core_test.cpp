#include <cstdarg>
#include <cstddef>
#include <limits>

#include "tests/utils/printf/test_support.h"

namespace {

using halvane::testing::printed;

TEST(PrintFParsing, PrintsLiteralTextAndPercent) {
    EXPECT_EQ(printed(""), "");
    EXPECT_EQ(printed("text"), "text");
    EXPECT_EQ(printed("100%%"), "100%");
    EXPECT_EQ(printed("%%%%"), "%%");
    EXPECT_EQ(printed("%3%|%-3%|"), "  %|%  |");
}

TEST(PrintFParsing, ReportsWhatIsNoConversion) {
    EXPECT_EQ(printed("%y"), "<<UNKNOWN FORMAT CONVERSION CODE %y>>");
    EXPECT_EQ(printed("a%-5.3lEb"), "a<<UNKNOWN FORMAT CONVERSION CODE %E>>b");
    EXPECT_EQ(printed("%Lf"), "<<UNKNOWN FORMAT CONVERSION CODE %L>>f");
    EXPECT_EQ(printed("%e|%g|%F"),
              "<<UNKNOWN FORMAT CONVERSION CODE %e>>|<<UNKNOWN FORMAT CONVERSION CODE %g>>|"
              "<<UNKNOWN FORMAT CONVERSION CODE %F>>");
    EXPECT_EQ(printed("%\x80"), "<<UNKNOWN FORMAT CONVERSION CODE %\x80>>");
}

// A conversion ends with the format. The parser reads nothing behind the terminator.
TEST(PrintFParsing, EndsWithTheFormat) {
    EXPECT_EQ(printed("a%"), "a<<UNKNOWN FORMAT CONVERSION CODE %>>");
    EXPECT_EQ(printed("%-08.3ll"), "<<UNKNOWN FORMAT CONVERSION CODE %>>");
    EXPECT_EQ(printed("%5\0d"), "<<UNKNOWN FORMAT CONVERSION CODE %>>");
    EXPECT_EQ(printed("%{dur\0}"), "<<UNKNOWN PRINTF EXTENSION 'dur'>>" + std::string());
}

TEST(PrintFParsing, TakesFlagsInAnyOrderAndRepeated) {
    for (const char* format : {"%+08d", "%0+8d", "%00++8d"})
        EXPECT_EQ(printed(format, 42), "+0000042");
    EXPECT_EQ(printed("%-08d|", 42), "42      |");
    EXPECT_EQ(printed("% d% d", 1, -1), " 1-1");
    EXPECT_EQ(printed("%+ d% +d", 1, 1), "+1+1");
}

TEST(PrintFParsing, TakesWidthAndPrecisionFromTheArguments) {
    EXPECT_EQ(printed("%*d|%*d|", 4, 1, -4, 2), "   1|2   |");
    EXPECT_EQ(printed("%.*d|%.*d|", 3, 7, -3, 7), "007|7|");
    EXPECT_EQ(printed("%.*s|%.*s", 2, "abc", -1, "abc"), "ab|abc");
    EXPECT_EQ(printed("%*.*s|", -5, 2, "abc"), "ab   |");
    EXPECT_EQ(printed("%.*s", std::numeric_limits<int>::min(), "abc"), "abc");
    EXPECT_EQ(printed("%0*d", -4, 5), "5   ");
    EXPECT_EQ(printed("%.s|%.d|", "abc", 0), "||");
    EXPECT_EQ(printed("%.99999999999s", "abc"), "abc");
}

TEST(PrintFParsing, RefusesMalformedSizeModifiers) {
    for (const char* format : {"%hhhd", "%llld", "%hld", "%lhd", "%hjd", "%hzd", "%htd", "%ljd",
                               "%lzd", "%ltd", "%jjd", "%zjd", "%tzd", "%zhd", "%hhlx"}) {
        EXPECT_EQ(SNPrintF(nullptr, 0, format, 1), -1) << format;
    }
}

// j, z and t count as one l, so one more l may follow.
TEST(PrintFParsing, TakesOneLBehindTheSizesOfTheStandardTypes) {
    EXPECT_EQ(printed("%jld|%zlu|%tld", std::numeric_limits<std::int64_t>::min(), SIZE_MAX,
                      std::int64_t{-1}),
              "-9223372036854775808|18446744073709551615|-1");
    for (const char* format : {"%jlld", "%zllu", "%tlld", "%jlhd", "%jljd"}) {
        EXPECT_EQ(SNPrintF(nullptr, 0, format, 1LL), -1) << format;
    }
}

TEST(PrintFParsing, StopsAtTheMalformedModifier) {
    char text[8];
    EXPECT_EQ(SNPrintF(text, sizeof(text), "a%dz%hlx%s", 1, 2, nullptr), -1);
    EXPECT_STREQ(text, "a1z");
}

TEST(PrintFExtension, ReportsUnknownNames) {
    EXPECT_EQ(printed("%{nope}!"), "<<UNKNOWN PRINTF EXTENSION 'nope'>>!");
    EXPECT_EQ(printed("%{}!"), "<<UNKNOWN PRINTF EXTENSION ''>>!");
    EXPECT_EQ(printed("%{open"), "<<UNKNOWN PRINTF EXTENSION 'open'>>");
    EXPECT_EQ(printed("%{"), "<<UNKNOWN PRINTF EXTENSION ''>>");
    EXPECT_EQ(printed("%{durx}%{du}"),
              "<<UNKNOWN PRINTF EXTENSION 'durx'>><<UNKNOWN PRINTF EXTENSION 'du'>>");
}

TEST(PrintFExtension, MatchesNamesWithoutRegardToCase) {
    for (const char* format : {"%{dur}", "%{DUR}", "%{Dur}"}) EXPECT_EQ(printed(format, 5), "5s");
    EXPECT_EQ(printed("%{Text}", "a\n", std::size_t{2}), "a\n");
}

TEST(PrintFExtension, CutsAnEndlessNameToTheScratchArea) {
    const std::string name(1000, 'n');
    const std::string text = printed(("%{" + name + "}").c_str());
    EXPECT_EQ(text.size(), 299u);
    EXPECT_TRUE(text.starts_with("<<UNKNOWN PRINTF EXTENSION 'nnn"));
}

TEST(PrintFMultiLineText, IndentsEachLineButBlankOnes) {
    const std::string text = "one\n\n two\n\nthree";
    EXPECT_EQ(printed("%{text}", text.c_str(), text.size()), text);
    EXPECT_EQ(printed("%1{text}", text.c_str(), text.size()), "    one\n\n     two\n\n    three");
    EXPECT_EQ(printed("%2{text}", "a\n", std::size_t{2}), "        a\n");
    EXPECT_EQ(printed("%1{text}", "abcdef", std::size_t{3}), "    abc");
    EXPECT_EQ(printed("%1{text}", "a\nb", SIZE_MAX), "    a\n    b");
    EXPECT_EQ(printed("%1{text}", "", SIZE_MAX), "");
    EXPECT_EQ(printed("%1{text}", "\n", std::size_t{1}), "\n");
}

TEST(PrintFMultiLineText, SurvivesANullPointer) {
    const char* const none = nullptr;
    EXPECT_EQ(printed("%{text}", none, std::size_t{0}), "");
    EXPECT_EQ(printed("%{text}", none, std::size_t{3}), "<<NULL>>");
    EXPECT_EQ(printed("%{text}", none, SIZE_MAX), "<<NULL>>");
}

std::string nested(const char* outer, const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    const std::string text = printed(outer, format, &arguments, "after");
    va_end(arguments);
    return text;
}

// A parameter is not an object of type va_list on every platform, so `arguments` is copied first.
std::string nestedFromParameter(const char* format, va_list arguments) {
    va_list copy;
    va_copy(copy, arguments);
    const std::string text = printed("<%V>", format, &copy);
    va_end(copy);
    return text;
}

std::string nestedTwice(const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    const std::string first = nestedFromParameter(format, arguments);
    const std::string second = printed("%V%V", format, &arguments, format, &arguments);
    va_end(arguments);
    return first + second;
}

TEST(PrintFNested, ExpandsTheFormatInPlace) {
    EXPECT_EQ(nested("[%V] %s", "%d-%s", 1, "two"), "[1-two] after");
    EXPECT_EQ(nested("[%V] %s", "%s %f %llu %s %d %d %d %d", "a", 1.5, 1ull << 40, "b", 1, 2, 3, 4),
              "[a 1.500000 1099511627776 b 1 2 3 4] after");
    EXPECT_EQ(nested("%V%s", ""), "after");
}

TEST(PrintFNested, LeavesTheListOfTheCallerAsItWas) {
    EXPECT_EQ(nestedTwice("%d,%d;", 1, 2), "<1,2;>1,2;1,2;");
}

TEST(PrintFNested, PrintsNullForAMissingFormatOrList) {
    va_list* const noList = nullptr;
    EXPECT_EQ(nested("%V %s", nullptr), "<<NULL>> after");
    EXPECT_EQ(printed("%V %s", "%d", noList, "after"), "<<NULL>> after");
}

TEST(PrintFNested, CountsOnAndFailsAsAWhole) {
    int count = 0;
    EXPECT_EQ(nested("abc%V", "de%n", &count), "abcde");
    EXPECT_EQ(count, 5);
    char text[8];
    va_list* const noList = nullptr;
    EXPECT_EQ(SNPrintF(text, sizeof(text), "%V%lhd", "x", noList, 1), -1);
}

}  // namespace

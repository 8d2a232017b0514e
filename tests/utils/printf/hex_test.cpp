#include <cstddef>
#include <numeric>

#include "tests/utils/printf/test_support.h"

namespace {

using halvane::testing::printed;

std::string hex(const char* format, const std::string& bytes, int max = 1000) {
    const std::vector<char> copy(bytes.begin(), bytes.end());
    return printed(format, copy.data(), static_cast<int>(copy.size()), max);
}

// Bytes 0x41, 0x42, ...: "ABC...".
std::string letters(std::size_t count) {
    std::string text(count, '\0');
    std::iota(text.begin(), text.end(), 'A');
    return text;
}

TEST(PrintFHex, PrintsBytesInline) {
    EXPECT_EQ(hex("%H", std::string("\x00\xAB\x7f", 3)), "00 ab 7f");
    EXPECT_EQ(hex("%H", "A"), "41");
    EXPECT_EQ(hex("%H", ""), "");
    EXPECT_EQ(hex("%.0H", "AB"), "41 42");
    EXPECT_EQ(hex("[%8H|", "AB"), "[   41 42|");
    EXPECT_EQ(hex("[%-8H|", "AB"), "[41 42   |");
}

TEST(PrintFHex, AddsCharacters) {
    EXPECT_EQ(hex("%#H", "A\x1F\x20~\x7F"), "41 1f 20 7e 7f |A^ ~^|");
    EXPECT_EQ(hex("%#H", ""), "||");
    EXPECT_EQ(hex("%##H", "A\x80"), "|A^|");
    EXPECT_EQ(hex("%##H", ""), "||");
}

TEST(PrintFHex, FillsItsFieldInEachInlineForm) {
    EXPECT_EQ(hex("[%#12H]", "AB"), "[  41 42 |AB|]");
    EXPECT_EQ(hex("[%-#12H]", "AB"), "[41 42 |AB|  ]");
    EXPECT_EQ(hex("[%##6H]", "AB"), "[  |AB|]");
    EXPECT_EQ(hex("[%#4H]", ""), "[  ||]");
    EXPECT_EQ(hex("[%6.3H]", "AB"), "[  4142]");
}

TEST(PrintFHex, PrintsDigitsOnly) {
    EXPECT_EQ(hex("%.3H", "\x01\xfe"), "01fe");
    EXPECT_EQ(hex("%.3H", ""), "");
    EXPECT_EQ(hex("%.3H", "ABCDEF", 2), "4142");
    EXPECT_EQ(hex("%.3H", std::string(1000, '\x5A'), 1000).size(), 2000u);
}

TEST(PrintFHex, ShowsNoMoreThanTheMaximum) {
    EXPECT_EQ(hex("%H", "ABC", 2), "41 42");
    EXPECT_EQ(hex("%#H", "ABC", 2), "41 42 |AB|");
    EXPECT_EQ(hex("%#H", "ABC", 0), "||");
    EXPECT_EQ(hex("%H", "ABC", -1), "");
}

TEST(PrintFHex, MeasuresATextOfSizeMinusOne) {
    EXPECT_EQ(printed("%H", "AB", -1, 100), "41 42");
    EXPECT_EQ(printed("%.3H", "ABCD", -1, 3), "414243");
    EXPECT_EQ(printed("%H", "AB", -2, 100), "");
}

TEST(PrintFHex, PrintsNullForMissingBytes) {
    const void* const none = nullptr;
    EXPECT_EQ(printed("%H", none, 0, 10), "");
    EXPECT_EQ(printed("%H", none, 3, 10), "<<NULL 3/10>>");
    EXPECT_EQ(printed("%.1H", none, 3, 10), "<<NULL 3/10>>");
    EXPECT_EQ(printed("%.2H", none, 0, 10), "(0 bytes)\n");
    EXPECT_EQ(printed("%H", none, -1, 10), "<<NULL 0/10>>");
}

TEST(PrintFHex, RefusesOtherPrecisions) {
    EXPECT_EQ(hex("%.4H", "A"), "<< BAD %H PRECISION >>");
    EXPECT_EQ(hex("%.2147483647H", "A"), "<< BAD %H PRECISION >>");
}

TEST(PrintFHexDump, PrintsShortDataOnOneLine) {
    EXPECT_EQ(hex("%.1H", "AB\x01"),
              "414201                              |AB^             | (3 bytes)\n");
    EXPECT_EQ(hex("%.1H", "ABCDE"),
              "41424344 45                         |ABCDE           | (5 bytes)\n");
    EXPECT_EQ(hex("%.1H", letters(16)),
              "41424344 45464748 494a4b4c 4d4e4f50 |ABCDEFGHIJKLMNOP| (16 bytes)\n");
    EXPECT_EQ(hex("%.1H", ""),
              "                                    |                | (0 bytes)\n");
    EXPECT_EQ(hex("%2.1H", "A"),
              "        41                                  |A               | (1 bytes)\n");
}

TEST(PrintFHexDump, PrintsLongDataWithOffsets) {
    EXPECT_EQ(hex("%1.1H", letters(17)),
              "    +0000: 41424344 45464748 494a4b4c 4d4e4f50 |ABCDEFGHIJKLMNOP| (17 bytes)\n"
              "    +0010: 51                                  |Q               |\n");
    const std::string text = hex("%.1H", std::string(0x10011, 'x'), 0x10011);
    EXPECT_NE(text.find("\n+FFF0: 78787878"), text.npos);
    EXPECT_NE(text.find("\n+10000: 78787878"), text.npos);
    EXPECT_NE(text.find("\n+10010: 78 "), text.npos);
}

TEST(PrintFHexDump, TellsHowMuchItLeavesOut) {
    EXPECT_EQ(hex("%1.1H", letters(40), 17),
              "    +0000: 41424344 45464748 494a4b4c 4d4e4f50 |ABCDEFGHIJKLMNOP| (40 bytes)\n"
              "    +0010: 51                                  |Q               |\n"
              "    ... 23 more bytes ...\n");
    EXPECT_EQ(hex("%.1H", "ABC", 1),
              "41                                  |A               | (3 bytes)\n"
              "... 2 more bytes ...\n");
    EXPECT_EQ(hex("%.1H", letters(40), 0), "... 40 more bytes ...\n");
}

TEST(PrintFHexDump, PutsABlockOnTheLineOrBelowIt) {
    EXPECT_EQ(hex("%.2H", ""), "(0 bytes)\n");
    EXPECT_EQ(hex("%3.2H", "A"),
              "41                                  |A               | (1 bytes)\n");
    EXPECT_EQ(hex("%.2H", letters(16)),
              "41424344 45464748 494a4b4c 4d4e4f50 |ABCDEFGHIJKLMNOP| (16 bytes)\n");
    EXPECT_EQ(hex("%.2H", letters(17)),
              "\n"
              "+0000: 41424344 45464748 494a4b4c 4d4e4f50 |ABCDEFGHIJKLMNOP| (17 bytes)\n"
              "+0010: 51                                  |Q               |\n");
    EXPECT_EQ(hex("%1.2H", letters(17), 16),
              "\n"
              "    +0000: 41424344 45464748 494a4b4c 4d4e4f50 |ABCDEFGHIJKLMNOP| (17 bytes)\n"
              "    ... 1 more bytes ...\n");
}

}  // namespace

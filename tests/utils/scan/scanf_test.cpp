#include "halvane/utils/scan/scanf.h"

#include <algorithm>
#include <climits>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <gtest/gtest.h>
#include <memory>
#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace {

// The text without a terminator, at the end of a heap block of its size.
class ExactText {
  public:
    explicit ExactText(std::string_view text) : block_(new char[text.size()]), size_(text.size()) {
        std::memcpy(block_.get(), text.data(), size_);
    }
    const char* data() const { return block_.get(); }
    std::size_t size() const { return size_; }

  private:
    std::unique_ptr<char[]> block_;
    std::size_t size_;
};

template <typename... Arguments>
int scan(std::string_view text, const char* format, Arguments... arguments) {
    const ExactText exact(text);
    return SNScanF(exact.data(), exact.size(), format, arguments...);
}

struct IntegerRow {
    const char* text;
    const char* format;
    int assigned;
    std::int32_t value;  // of the destination, which held 99
    int consumed;        // -1 where scanning ended before the %n behind
};

void expectIntegers(const std::vector<IntegerRow>& rows) {
    for (const IntegerRow& row : rows) {
        std::int32_t value = 99;
        int consumed = -1;
        const std::string format = std::string(row.format) + "%n";
        EXPECT_EQ(scan(row.text, format.c_str(), &value, &consumed), row.assigned)
            << row.text << " " << row.format;
        EXPECT_EQ(value, row.value) << row.text << " " << row.format;
        EXPECT_EQ(consumed, row.consumed) << row.text << " " << row.format;
    }
}

TEST(Scan, ReadsIntegersOfEachBase) {
    expectIntegers({
        {"42", "%d", 1, 42, 2},
        {"42", "%u", 1, 42, 2},
        {"42x", "%d", 1, 42, 2},
        {"0x10", "%d", 1, 0, 1},
        {"010", "%d", 1, 10, 3},
        {"17", "%o", 1, 15, 2},
        {"018", "%o", 1, 1, 2},
        {"ff", "%x", 1, 255, 2},
        {"fF", "%X", 1, 255, 2},
        {"0xfF", "%x", 1, 255, 4},
        {"0XfF", "%X", 1, 255, 4},
        {"0b1", "%x", 1, 0xB1, 3},
        {"fg", "%x", 1, 15, 1},
        {"101", "%b", 1, 5, 3},
        {"0b101", "%b", 1, 5, 5},
        {"0B101", "%b", 1, 5, 5},
        {"0b102", "%b", 1, 2, 4},
        {"12", "%b", 1, 1, 1},
    });
}

TEST(Scan, DetectsTheBaseByItsPrefix) {
    expectIntegers({
        {"0b101", "%i", 1, 5, 5},
        {"0b2", "%i", 1, 0, 1},
        {"0x1F", "%i", 1, 31, 4},
        {"0x", "%i", 1, 0, 1},
        {"0xg", "%i", 1, 0, 1},
        {"0b", "%i", 1, 0, 1},
        {"017", "%i", 1, 15, 3},
        {"08", "%i", 1, 8, 2},
        {"0", "%i", 1, 0, 1},
        {"19", "%i", 1, 19, 2},
        {"-0x10", "%i", 1, -16, 5},
        {"+0b11", "%i", 1, 3, 5},
        {"0X1f", "%i", 1, 31, 4},
        {"0B101", "%i", 1, 5, 5},
        {"0Xg", "%i", 1, 0, 1},
        {"0B2", "%i", 1, 0, 1},
        {"f", "%i", 0, 99, -1},
    });
}

TEST(Scan, TakesAPrefixOnlyBeforeADigit) {
    expectIntegers({
        {"0x", "%x", 1, 0, 1},
        {"0xg", "%x", 1, 0, 1},
        {"0b", "%b", 1, 0, 1},
        {"0b2", "%b", 1, 0, 1},
    });
}

TEST(Scan, LeavesTheLetterOfAPrefixWithoutDigits) {
    std::int32_t value = 99;
    char left = 0;
    EXPECT_EQ(scan("0x", "%i%c", &value, &left), 2);
    EXPECT_EQ(value, 0);
    EXPECT_EQ(left, 'x');
}

TEST(Scan, AcceptsASignBeforeAnotherCharacter) {
    expectIntegers({
        {"-5", "%d", 1, -5, 2},
        {"+5", "%d", 1, 5, 2},
        {"-5", "%u", 1, -5, 2},
        {"-f", "%x", 1, -15, 2},
        {"-0", "%d", 1, 0, 2},
        {"-", "%d", 0, 99, -1},
        {"+", "%d", 0, 99, -1},
        {"--5", "%d", 0, 99, -1},
        {"- 5", "%d", 0, 99, -1},
    });
}

TEST(Scan, SkipsSpaceBeforeAnInteger) {
    expectIntegers({
        {" \t\n\v\f\r7", "%d", 1, 7, 7},
        {"   ", "%d", 0, 99, -1},
        {"", "%d", 0, 99, -1},
        {"  123", "%2d", 1, 12, 4},
    });
}

TEST(Scan, CountsSignPrefixAndDigitsAgainstTheWidth) {
    expectIntegers({
        {"1234", "%3d", 1, 123, 3},
        {"-123", "%2d", 1, -1, 2},
        {"-123", "%1d", 0, 99, -1},
        {"0x123", "%4x", 1, 0x12, 4},
        {"0x123", "%2x", 1, 0, 1},
        {"0x5", "%1i", 1, 0, 1},
        {"12", "%0d", 0, 99, -1},
        {"12", "%2147483647d", 1, 12, 2},
        {"12", "%99999999999999999999999d", 1, 12, 2},
    });
}

TEST(Scan, TakesTheWidthFromAnArgument) {
    std::int32_t value = 99;
    EXPECT_EQ(scan("1234", "%.d", 2, &value), 1);
    EXPECT_EQ(value, 12);
    char word[8] = "";
    EXPECT_EQ(scan("abcdef", "%.s", 3, word), 1);
    EXPECT_STREQ(word, "abc");
    EXPECT_EQ(scan("1234", "%.d", -1, &value), 0);
    EXPECT_EQ(scan("1234", "%.d", INT_MIN, &value), 0);
    EXPECT_EQ(value, 12);
    EXPECT_EQ(scan("1234", "%*.d%d", 3, &value), 1);
    EXPECT_EQ(value, 4);
}

TEST(Scan, StoresExactlyTheBytesOfTheSize) {
    struct Row {
        const char* format;
        std::size_t bytes;
    };
    const std::vector<Row> rows = {
        {"%hhd", 1}, {"%hhx", 1}, {"%hd", 2},  {"%d", 4},   {"%u", 4},  {"%i", 4},
        {"%o", 4},   {"%b", 4},   {"%ld", 8},  {"%lld", 8}, {"%jd", 8}, {"%td", 8},
        {"%zu", 8},  {"%p", 8},   {"%hhp", 8}, {"%hp", 8},
    };
    for (const Row& row : rows) {
        std::vector<std::uint8_t> destination(8, 0x55);
        EXPECT_EQ(scan("-1", row.format, destination.data()), 1) << row.format;
        std::vector<std::uint8_t> expected(8, 0x55);
        std::fill_n(expected.begin(), row.bytes, std::uint8_t{0xFF});
        EXPECT_EQ(destination, expected) << row.format;
    }
}

TEST(Scan, KeepsIntegersModuloTheirSize) {
    std::uint64_t wide = 0;
    EXPECT_EQ(scan("18446744073709551615", "%llu", &wide), 1);
    EXPECT_EQ(wide, UINT64_MAX);
    EXPECT_EQ(scan("18446744073709551617", "%llu", &wide), 1);
    EXPECT_EQ(wide, 1u);
    EXPECT_EQ(scan("-9223372036854775808", "%lld", &wide), 1);
    EXPECT_EQ(wide, std::uint64_t{1} << 63);
    std::int8_t narrow = 0;
    EXPECT_EQ(scan("300", "%hhd", &narrow), 1);
    EXPECT_EQ(narrow, 44);
    std::uint32_t plain = 0;
    EXPECT_EQ(scan("0x1FFFFFFFF", "%x", &plain), 1);
    EXPECT_EQ(plain, 0xFFFFFFFFu);
}

TEST(Scan, CopiesTextsWithATerminator) {
    struct Row {
        const char* text;
        const char* format;
        int assigned;
        const char* copied;  // over "########"
    };
    const std::vector<Row> rows = {
        {"abc def", "%s", 1, "abc"},       {"  abc", "%s", 1, "abc"},
        {"abcdef", "%3s", 1, "abc"},       {"  abcdef", "%3s", 1, "abc"},
        {"abc", "%ls", 1, "abc"},          {"", "%s", 0, "########"},
        {"  ", "%s", 0, "########"},       {"  ", "%#s", 1, ""},
        {"abc", "%0s", 0, "########"},     {"abc", "%#0s", 1, ""},
        {"abc", "%[ab]", 1, "ab"},         {"abc", "%[^c]", 1, "ab"},
        {"abc", "%1[ab]", 1, "a"},         {" abc", "%[ab]", 0, "########"},
        {" abc", "%#[ab]", 1, ""},         {" ab c", "%[ ab]", 1, " ab "},
        {"]a]b", "%[]a]", 1, "]a]"},       {"ab]c", "%[^]]", 1, "ab"},
        {"a^b", "%[a^]", 1, "a^"},         {"a-c", "%[a-c]", 1, "a-c"},
        {"abc", "%[a-c]", 1, "a"},         {"\xC3\xA9x", "%[\xC3\xA9]", 1, "\xC3\xA9"},
        {"x\xC3", "%[^\xC3]", 1, "x"},     {"abc", "%l[ab]", 0, "########"},
        {"abc", "%hh[ab]", 0, "########"}, {"abc", "%[ab", 0, "########"},
        {"abc", "%[]ab", 0, "########"},   {"abc", "%[", 0, "########"},
        {"abc", "%[^", 0, "########"},     {"abc", "%[^]", 0, "########"},
        {"", "%[ab]", 0, "########"},
    };
    for (const Row& row : rows) {
        char copied[16] = "########";
        EXPECT_EQ(scan(row.text, row.format, copied), row.assigned) << row.text << row.format;
        EXPECT_STREQ(copied, row.copied) << row.text << row.format;
    }
}

TEST(Scan, NeedsRoomForWidthAndTerminatorOnly) {
    const auto destination = std::make_unique<char[]>(4);
    EXPECT_EQ(scan("abcdef", "%3s", destination.get()), 1);
    EXPECT_STREQ(destination.get(), "abc");
    EXPECT_EQ(scan("defabc", "%3[a-f]", destination.get()), 0);
    EXPECT_EQ(scan("defabc", "%3[abcdef]", destination.get()), 1);
    EXPECT_STREQ(destination.get(), "def");
}

TEST(Scan, CopiesCharactersWithoutATerminator) {
    struct Row {
        const char* text;
        const char* format;
        int assigned;
        const char* copied;  // over "########"
    };
    const std::vector<Row> rows = {
        {"abc", "%c", 1, "a#######"},   {" bc", "%c", 1, " #######"},
        {"abc", "%3c", 1, "abc#####"},  {"abc", "%4c", 0, "########"},
        {"", "%c", 0, "########"},      {"", "%#c", 0, "########"},
        {"abc", "%0c", 0, "########"},  {"abc", "%#0c", 1, "########"},
        {"abc", "%hhc", 1, "a#######"}, {"abc", "a%2c", 1, "bc######"},
    };
    for (const Row& row : rows) {
        char copied[16] = "########";
        EXPECT_EQ(scan(row.text, row.format, copied), row.assigned) << row.text << row.format;
        EXPECT_STREQ(copied, row.copied) << row.text << row.format;
    }
}

TEST(Scan, ReturnsTextInPlace) {
    struct Row {
        const char* text;
        const char* format;
        int assigned;
        std::size_t offset;
        std::size_t length;
    };
    constexpr std::size_t kNone = 77;
    const std::vector<Row> rows = {
        {"abc def", "%&s", 1, 0, 3},
        {"  abc", "%&s", 1, 2, 3},
        {"abcdef", "%&4s", 1, 0, 4},
        {"  ", "%&s", 0, kNone, kNone},
        {"  ", "%&#s", 1, 2, 0},
        {"  ", "%#&s", 1, 2, 0},
        {"key=value", "%&[^=]", 1, 0, 3},
        {"abcabc", "%&3[abc]", 1, 0, 3},
        {"abxabc", "%&3[abc]", 1, 0, 2},
        {"xabc", "%&3[abc]", 0, kNone, kNone},
        {"xabc", "%&#3[abc]", 1, 0, 0},
        {"=value", "%&[^=]", 0, kNone, kNone},
        {"=value", "%#&[^=]", 1, 0, 0},
        {"abc def", "%&c", 1, 0, 7},
        {"abc def", "%&5c", 1, 0, 5},
        {"abc", "%&5c", 1, 0, 3},
        {"abc", "a%&c", 1, 1, 2},
        {"", "%&c", 0, kNone, kNone},
        {"", "%&#c", 1, 0, 0},
    };
    for (const Row& row : rows) {
        const ExactText text(row.text);
        const char* start = nullptr;
        std::size_t length = kNone;
        EXPECT_EQ(SNScanF(text.data(), text.size(), row.format, &start, &length), row.assigned)
            << row.text << row.format;
        EXPECT_EQ(length, row.length) << row.text << row.format;
        const char* const expected = row.assigned == 1 ? text.data() + row.offset : nullptr;
        EXPECT_EQ(start, expected) << row.text << row.format;
    }
}

TEST(Scan, SplitsAKeyFromItsValueInPlace) {
    const char* const text = "key=value";
    const char* key = nullptr;
    const char* value = nullptr;
    std::size_t keyLength = 0;
    std::size_t valueLength = 0;
    EXPECT_EQ(SNScanF(text, SIZE_MAX, "%&[^=]=%&s", &key, &keyLength, &value, &valueLength), 2);
    EXPECT_EQ(key, text);
    EXPECT_EQ(keyLength, 3u);
    EXPECT_EQ(value, text + 4);
    EXPECT_EQ(valueLength, 5u);
}

TEST(Scan, SkipsNullDestinationsOfTextInPlace) {
    const char* start = nullptr;
    std::size_t length = 0;
    const auto noStart = static_cast<const char**>(nullptr);
    const auto noLength = static_cast<std::size_t*>(nullptr);
    const char* const text = "ab cd";
    EXPECT_EQ(SNScanF(text, SIZE_MAX, "%&s %&s", &start, noLength, noStart, &length), 2);
    EXPECT_EQ(start, text);
    EXPECT_EQ(length, 2u);
}

TEST(Scan, EndsAtANullDestination) {
    void* const none = nullptr;
    std::int32_t after = 99;
    for (const char* format : {"%d%n", "%1s%n", "%c%n", "%[1]%n", "%n%n"}) {
        EXPECT_EQ(scan("123", format, none, &after), 0) << format;
        EXPECT_EQ(after, 99) << format;
    }
}

TEST(Scan, MatchesLiteralsAndSpace) {
    struct Row {
        const char* text;
        const char* format;
        int consumed;  // -1 where scanning ended before the %n behind
    };
    const std::vector<Row> rows = {
        {"abc", "abc", 3},  {"abc", "abd", -1}, {"ab", "abc", -1},   {"abc", "ab", 2},
        {"a  b", "a b", 4}, {"ab", "a b", 2},   {"a b", "ab", -1},   {"a\n\tb", "a \t b", 4},
        {"  ", " ", 2},     {"", " ", 0},       {"%x", "%%x", 2},    {" %", "%%", -1},
        {"x", "%%", -1},    {"", "%%", -1},     {"\xFF", "\xFF", 1}, {"A", "a", -1},
    };
    for (const Row& row : rows) {
        std::int32_t consumed = -1;
        const std::string format = std::string(row.format) + "%n";
        EXPECT_EQ(scan(row.text, format.c_str(), &consumed), 0) << row.text << row.format;
        EXPECT_EQ(consumed, row.consumed) << row.text << row.format;
    }
}

TEST(Scan, SuppressesAssignment) {
    std::int32_t value = 0;
    EXPECT_EQ(scan("1 two abc x9", "%*d %*s %*[abc] %*c%d", &value), 1);
    EXPECT_EQ(value, 9);
    EXPECT_EQ(scan("ab 9", "%*&s%d", &value), 1);
    EXPECT_EQ(scan("ab 8", "%&*s%d", &value), 1);
    EXPECT_EQ(value, 8);
    EXPECT_EQ(scan("x 7", "%*d%d", &value), 0);
}

TEST(Scan, StoresTheCountConsumedAs32BitsAndNoItem) {
    std::int64_t destination = -1;
    EXPECT_EQ(scan("abc", "ab%n", &destination), 0);
    std::int32_t count = 0;
    std::memcpy(&count, &destination, sizeof count);
    EXPECT_EQ(count, 2);
    EXPECT_EQ(static_cast<std::uint64_t>(destination) >> 32, 0xFFFFFFFFu);
}

TEST(Scan, EndsAtWhatIsNoConversion) {
    for (const char* format : {"%", "%5", "%*", "%&", "%#", "%l", "%hh", "%y", "%f", "%hhhd",
                               "%llld", "%hn", "%lln", "%5n", "%*n", "%jjd", "% d", "%5*d"}) {
        std::int32_t first = 99;
        std::int32_t second = 99;
        EXPECT_EQ(scan("5 6", format, &first, &second), 0) << format;
        EXPECT_EQ(first, 99) << format;
    }
}

TEST(Scan, StopsAtTheFirstMismatch) {
    std::int32_t first = 99;
    std::int32_t second = 99;
    std::int32_t third = 99;
    EXPECT_EQ(scan("1 x 3", "%d %d %d", &first, &second, &third), 1);
    EXPECT_EQ(first, 1);
    EXPECT_EQ(second, 99);
    EXPECT_EQ(third, 99);
}

TEST(Scan, EndsTheInputAtTheLengthOrANul) {
    std::int32_t value = 0;
    EXPECT_EQ(SNScanF("12345", 3, "%d", &value), 1);
    EXPECT_EQ(value, 123);
    EXPECT_EQ(SNScanF("12\0003", 4, "%d", &value), 1);
    EXPECT_EQ(value, 12);
    char copied[8] = "";
    EXPECT_EQ(SNScanF("ab\0cd", 5, "%2c%s", copied, copied + 4), 1);
    EXPECT_EQ(SNScanF("12345", SIZE_MAX, "%d", &value), 1);
    EXPECT_EQ(value, 12345);
    EXPECT_EQ(SNScanF("12", 0, "%d", &value), 0);
    EXPECT_EQ(SNScanF("12", SIZE_MAX - 1, "%d", &value), 1);
}

TEST(Scan, TakesNullTextAndFormatAsEmpty) {
    std::int32_t value = 99;
    EXPECT_EQ(SNScanF(nullptr, SIZE_MAX, "%d", &value), 0);
    EXPECT_EQ(SNScanF(nullptr, 5, "%d", &value), 0);
    EXPECT_EQ(SNScanF("5", SIZE_MAX, nullptr, &value), 0);
    EXPECT_EQ(value, 99);
}

// Compares with the C library. The formats use only what means the same in both.
TEST(Scan, AgreesWithTheStandardLibrary) {
    constexpr std::string_view kAlphabet = "0123456789abcdef+- \t,=";
    const std::vector<const char*> formats = {
        "%ld",     "%lu",      "%3lo",    "%5ld",    "%ld,%ld",
        "%ld %lx", "%2ld%3lu", "%*ld%ld", "%*d,%ld", " %ld =%ld",
    };
    std::mt19937 random(20261121);
    for (int round = 0; round < 20000; ++round) {
        std::string text;
        for (std::size_t i = random() % 12; i > 0; --i) {
            text += kAlphabet[random() % kAlphabet.size()];
        }
        for (const char* format : formats) {
            long ours[2] = {-99, -99};
            long theirs[2] = {-99, -99};
            const int assigned = scan(text, format, &ours[0], &ours[1]);
            const int expected = std::sscanf(text.c_str(), format, &theirs[0], &theirs[1]);
            // libc distinguishes the end of the input before the first item from a mismatch.
            ASSERT_EQ(assigned, std::max(expected, 0)) << "\"" << text << "\" " << format;
            ASSERT_EQ(ours[0], theirs[0]) << "\"" << text << "\" " << format;
            ASSERT_EQ(ours[1], theirs[1]) << "\"" << text << "\" " << format;
        }
    }
}

TEST(Scan, AgreesWithTheStandardLibraryOnTexts) {
    constexpr std::string_view kAlphabet = "ab= \n]^";
    const std::vector<const char*> formats = {"%15s",    "%2s%15s",      "%15[ab]", "%15[^=]=%15s",
                                              "%15[]a]", "%15[^]a]%15s", "%*s%15s", "a%15s b%15s"};
    std::mt19937 random(20261122);
    for (int round = 0; round < 20000; ++round) {
        std::string text;
        for (std::size_t i = random() % 10; i > 0; --i) {
            text += kAlphabet[random() % kAlphabet.size()];
        }
        for (const char* format : formats) {
            char ours[2][16] = {"-", "-"};
            char theirs[2][16] = {"-", "-"};
            const int assigned = scan(text, format, ours[0], ours[1]);
            const int expected = std::sscanf(text.c_str(), format, theirs[0], theirs[1]);
            ASSERT_EQ(assigned, std::max(expected, 0)) << "\"" << text << "\" " << format;
            ASSERT_STREQ(ours[0], theirs[0]) << "\"" << text << "\" " << format;
            ASSERT_STREQ(ours[1], theirs[1]) << "\"" << text << "\" " << format;
        }
    }
}

// Formats of characters with a meaning, against short inputs without a terminator.
TEST(Scan, StaysInBoundsForAnyFormat) {
    constexpr std::string_view kAlphabet = "%%%*&#0123hljtzdxoibcs[]^n ab";
    std::mt19937 random(20261123);
    for (int round = 0; round < 20000; ++round) {
        std::string format;
        for (std::size_t i = random() % 10; i > 0; --i) {
            format += kAlphabet[random() % kAlphabet.size()];
        }
        // Every destination has room for whatever a conversion may store there.
        std::uint64_t room[5][4] = {};
        const int assigned = scan("0x12 ab ]0b1", format.c_str(), room[0], room[1], room[2],
                                  room[3], room[4], room[0], room[1], room[2], room[3], room[4]);
        ASSERT_GE(assigned, 0) << format;
        ASSERT_LE(assigned, 5) << format;
    }
}

}  // namespace

#include <array>
#include <bitset>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <limits>
#include <string>
#include <vector>

#include "tests/utils/printf/test_support.h"

namespace {

using halvane::testing::printed;

template <typename... Values>
void expectSameAsLibc(const std::string& format, Values... values) {
    std::array<char, 512> expected;
    std::array<char, 512> actual;
    const int expectedLength =
        std::snprintf(expected.data(), expected.size(), format.c_str(), values...);
    const int length = SNPrintF(actual.data(), actual.size(), format.c_str(), values...);
    ASSERT_EQ(length, expectedLength) << format;
    ASSERT_STREQ(actual.data(), expected.data()) << format;
}

// Every subset of `flags`.
std::vector<std::string> flagSets(const std::string& flags) {
    std::vector<std::string> sets;
    for (unsigned mask = 0; mask < 1u << flags.size(); ++mask) {
        std::string set;
        for (std::size_t i = 0; i < flags.size(); ++i) {
            if (mask >> i & 1) set += flags[i];
        }
        sets.push_back(set);
    }
    return sets;
}

const std::array<std::string, 5> kWidths = {"", "1", "5", "12", "70"};
const std::array<std::string, 6> kPrecisions = {"", ".", ".0", ".1", ".5", ".25"};

// Calls `check` with every specification made of these parts, without the conversion character.
template <typename Check>
void forEachSpecification(const std::string& flags, Check check) {
    for (const auto& set : flagSets(flags)) {
        for (const auto& width : kWidths) {
            for (const auto& precision : kPrecisions) check("%" + set + width + precision);
        }
    }
}

template <typename Integer>
std::vector<Integer> boundaries() {
    std::vector<Integer> values = {0, 1, 7, 8, 9, 10, 11, 42, 99, 100, 101};
    for (int bit = 3; bit < std::numeric_limits<Integer>::digits; ++bit) {
        const auto power = static_cast<Integer>(Integer{1} << bit);
        values.insert(values.end(), {static_cast<Integer>(power - 1), power});
    }
    values.push_back(std::numeric_limits<Integer>::max());
    values.push_back(std::numeric_limits<Integer>::min());
    if constexpr (std::numeric_limits<Integer>::is_signed)
        values.insert(values.end(), {-1, -10, -99});
    return values;
}

template <typename Integer>
void expectSignedLikeLibc(const std::string& modifier) {
    for (const Integer value : boundaries<Integer>()) {
        forEachSpecification("-+ 0", [&](const std::string& start) {
            expectSameAsLibc("[" + start + modifier + "d]", value);
        });
        expectSameAsLibc("%" + modifier + "i", value);
    }
}

// In C, '+' and ' ' have no meaning for an unsigned conversion, and '#' has none for 'u'.
template <typename Integer>
void expectUnsignedLikeLibc(const std::string& modifier) {
    for (const Integer value : boundaries<Integer>()) {
        forEachSpecification("-0", [&](const std::string& start) {
            for (const char* code : {"u", "o", "x", "X"}) {
                expectSameAsLibc("[" + start + modifier + code + "]", value);
            }
        });
        // This engine also puts the prefix before a zero.
        if (value == 0) continue;
        forEachSpecification("-0#", [&](const std::string& start) {
            expectSameAsLibc("[" + start + modifier + "x]", value);
            expectSameAsLibc("[" + start + modifier + "X]", value);
            // In C the octal prefix is part of the digits that a precision counts.
            if (start.find('.') == start.npos)
                expectSameAsLibc("[" + start + modifier + "o]", value);
        });
    }
}

TEST(PrintFInteger, FormatsSignedLikeLibc) {
    expectSignedLikeLibc<signed char>("hh");
    expectSignedLikeLibc<short>("h");
    expectSignedLikeLibc<int>("");
    expectSignedLikeLibc<long>("l");
    expectSignedLikeLibc<long long>("ll");
}

TEST(PrintFInteger, FormatsUnsignedLikeLibc) {
    expectUnsignedLikeLibc<unsigned char>("hh");
    expectUnsignedLikeLibc<unsigned short>("h");
    expectUnsignedLikeLibc<unsigned>("");
    expectUnsignedLikeLibc<unsigned long>("l");
    expectUnsignedLikeLibc<unsigned long long>("ll");
}

TEST(PrintFInteger, ReadsSizesOfTheStandardTypesLikeLibc) {
    expectSameAsLibc("%jd %ju", std::numeric_limits<std::intmax_t>::min(),
                     std::numeric_limits<std::uintmax_t>::max());
    expectSameAsLibc("%zu %zx", std::numeric_limits<std::size_t>::max(), std::size_t{255});
    expectSameAsLibc("%td %ti", std::numeric_limits<std::ptrdiff_t>::min(), std::ptrdiff_t{-1});
}

TEST(PrintFInteger, DropsBitsBeyondTheSizeModifierLikeLibc) {
    for (const int value : {0x1FF, 0x180, 0x17F, -1, 0x12345678, 0x18000, 0x17FFF}) {
        for (const char* format : {"%hhd", "%hd", "%hhu", "%hu", "%hhx", "%hX", "%ho"}) {
            expectSameAsLibc(format, value);
        }
    }
}

TEST(PrintFInteger, FormatsTextLikeLibc) {
    // In C, '0', '+', ' ' and '#' have no meaning for these.
    forEachSpecification("-", [](const std::string& start) {
        for (const char* text :
             {"", "a", "four", "twelve chars", "a text longer than the widths"}) {
            expectSameAsLibc("[" + start + "s]", text);
        }
        // In C, a precision has no meaning for 'c'.
        if (start.find('.') == start.npos) expectSameAsLibc("[" + start + "c]", 'x');
    });
}

TEST(PrintFInteger, FormatsRealsLikeLibc) {
    // '0', ' ' and '#' do not reach the formatter of reals.
    for (const double value :
         {0.0, -0.0, 1.0, -1.5, 0.1, 1e15, 123456.789, -1e-7, 1e300,
          std::numeric_limits<double>::infinity(), std::numeric_limits<double>::quiet_NaN()}) {
        forEachSpecification("-+", [&](const std::string& start) {
            if (value == 1e300) return;  // longer than the scratch area
            expectSameAsLibc("[" + start + "f]", value);
        });
    }
}

std::string binary(std::uint32_t value) {
    const std::string bits = std::bitset<32>(value).to_string();
    const auto first = bits.find('1');
    return first == bits.npos ? "0" : bits.substr(first);
}

TEST(PrintFInteger, FormatsBinary) {
    for (const auto value : boundaries<std::uint32_t>()) {
        EXPECT_EQ(printed("%b", value), binary(value));
        EXPECT_EQ(printed("%#b", value), "0b" + binary(value));
    }
    EXPECT_EQ(printed("%08b|%#08b|%-8b|", 5u, 5u, 5u), "00000101|0b000101|101     |");
    EXPECT_EQ(printed("%.4b|%8.4b", 5u, 5u), "0101|    0101");
    EXPECT_EQ(printed("%llb", ~0ull), std::string(64, '1'));
    EXPECT_EQ(printed("%hhb", 0x1FFu), "11111111");
}

TEST(PrintFInteger, PutsTheAlternatePrefixBeforeAZeroToo) {
    EXPECT_EQ(printed("%#x %#X %#b %#o", 0u, 0u, 0u, 0u), "0x0 0X0 0b0 00");
    EXPECT_EQ(printed("%#.3o %#o", 8u, 8u), "0010 010");
    EXPECT_EQ(printed("%#d %#u %#i", 5, 5u, -5), "5 5 -5");
}

TEST(PrintFInteger, FillsWithZerosUpToTheWidth) {
    EXPECT_EQ(printed("%+06d|%06d|% 06d|%06d", 42, -42, 42, 42), "+00042|-00042| 00042|000042");
    EXPECT_EQ(printed("%#06x|%#06b|%#06o", 0xABu, 2u, 8u), "0x00ab|0b0010|000010");
    EXPECT_EQ(printed("%#01x|%+01d|%#02x", 1u, 1, 1u), "0x1|+1|0x1");
    EXPECT_EQ(printed("%06.3d|", 5), "   005|");
}

TEST(PrintFInteger, LimitsThePrecisionToTheScratchArea) {
    EXPECT_EQ(printed("%.299d", 1), std::string(298, '0') + "1");
    EXPECT_EQ(printed("%.300d", 1), std::string(298, '0') + "1");
    EXPECT_EQ(printed("%.2147483647u", 7u), std::string(298, '0') + "7");
    EXPECT_EQ(printed("%.400d", -1), "-" + std::string(297, '0') + "1");
    EXPECT_EQ(printed("%#.400x", 0xFu), "0x" + std::string(296, '0') + "f");
    EXPECT_EQ(printed("%0310d", 5), std::string(11, ' ') + std::string(298, '0') + "5");
}

TEST(PrintFInteger, GroupsByThreesFromTheRight) {
    EXPECT_EQ(printed("%'d %'d %'d %'d %'d", 0, 999, 1000, 999999, 1000000),
              "0 999 1,000 999,999 1,000,000");
    EXPECT_EQ(printed("%'d %+'d %'llu", -1234567, 1234, ~0ull),
              "-1,234,567 +1,234 18,446,744,073,709,551,615");
    EXPECT_EQ(printed("%'x %#'x %'o %'b", 0x12345u, 0x1234u, 01234u, 10u),
              "12,345 0x1,234 1,234 1,010");
    EXPECT_EQ(printed("%'12d|%'-12d|", 1234567, 1234567), "   1,234,567|1,234,567   |");
    EXPECT_EQ(printed("%'.5d", 12), "00,012");
    const std::string wide = printed("%'.299d", -7);
    EXPECT_LE(wide.size(), 299u);
    EXPECT_TRUE(wide.starts_with("-0") && wide.ends_with(",000,007")) << wide;
}

TEST(PrintFInteger, PrintsPointersWithSixteenDigits) {
    const auto pointer = [](std::uintptr_t value) { return reinterpret_cast<const void*>(value); };
    EXPECT_EQ(printed("%p", pointer(0)), "0x0000000000000000");
    EXPECT_EQ(printed("%p", pointer(0xABCDEF)), "0x0000000000ABCDEF");
    EXPECT_EQ(printed("%20p|%-20p|", pointer(1), pointer(2)),
              "  0x0000000000000001|0x0000000000000002  |");
    EXPECT_EQ(printed("%p", pointer(UINTPTR_MAX)), "0xFFFFFFFFFFFFFFFF");
}

TEST(PrintFBitList, NumbersBitsFromTheLeastSignificantOne) {
    EXPECT_EQ(printed("%##b", 5u), "2 0");
    EXPECT_EQ(printed("%##b", 0u), "");
    EXPECT_EQ(printed("%##b", 0x80000001u), "31 0");
    EXPECT_EQ(printed("%##hb", 0xFFFF8001u), "15 0");
    EXPECT_EQ(printed("%##hhb", 0xFF81u), "7 0");
    EXPECT_EQ(printed("%##lb", 1ul << 63 | 1ul << 32), "63 32");
    EXPECT_EQ(printed("%##llb", 1ull << 40), "40");
    EXPECT_EQ(printed("%##.4b", 0xFFu), "3 2 1 0");
    for (const char* format : {"%##jb", "%##zb", "%##tb"}) {
        EXPECT_EQ(printed(format, 1ull << 63 | 1), "63 0") << format;
    }
}

TEST(PrintFBitList, NumbersBitsFromTheMostSignificantOne) {
    EXPECT_EQ(printed("%###b", 0x80000001u), "0 31");
    EXPECT_EQ(printed("%###.8b", 0x81u), "0 7");
    EXPECT_EQ(printed("%###hhb", 0x81u), "0 7");
    EXPECT_EQ(printed("%###hb", 0x8000u), "0");
    EXPECT_EQ(printed("%###llb", 1ull), "63");
    EXPECT_EQ(printed("%####.8b|%#####.8b", 0x40u, 0x40u), "1|1");
}

TEST(PrintFBitList, TakesThePrecisionAsBitCount) {
    EXPECT_EQ(printed("%##.0b", 3u), "0");
    EXPECT_EQ(printed("%##.0b", 2u), "");
    EXPECT_EQ(printed("%##.1b", 3u), "0");
    EXPECT_EQ(printed("%##.64llb", 1ull << 63), "63");
    EXPECT_EQ(printed("%##.65b", 1u), "ERROR: << precision must be 0-64 >>");
    EXPECT_EQ(printed("%###.2147483647b", 1u), "ERROR: << precision must be 0-64 >>");
    EXPECT_EQ(printed("%##.*b", -1, 1u << 31), "31");
}

TEST(PrintFBitList, FillsItsField) {
    EXPECT_EQ(printed("[%##5b]", 5u), "[  2 0]");
    EXPECT_EQ(printed("[%-##5b]", 5u), "[2 0  ]");
    std::string all;
    for (int bit = 63; bit >= 0; --bit) all += std::to_string(bit) + (bit > 0 ? " " : "");
    EXPECT_EQ(printed("%##llb", ~0ull), all);
}

TEST(PrintFStoreCount, StoresTheCountSoFarInTheNamedSize) {
    std::int32_t whole = -1;
    EXPECT_EQ(printed("abc%nde", &whole), "abcde");
    EXPECT_EQ(whole, 3);
    std::array<std::int8_t, 2> byte = {-1, -1};
    printed("%300s%hhn", "", byte.data());
    EXPECT_EQ(byte[0], static_cast<std::int8_t>(300 & 0xFF));
    EXPECT_EQ(byte[1], -1);
    std::array<std::int16_t, 2> half = {-1, -1};
    printed("%300s%hn", "", half.data());
    EXPECT_EQ(half[0], 300);
    EXPECT_EQ(half[1], -1);
    std::int64_t wide = -1;
    printed("ab%ln", &wide);
    EXPECT_EQ(wide, 2);
    printed("%lln", &wide);
    EXPECT_EQ(wide, 0);
    for (const char* format : {"abc%jn", "abc%zn", "abc%tn"}) {
        wide = -1;
        printed(format, &wide);
        EXPECT_EQ(wide, 3) << format;
    }
}

TEST(PrintFStoreCount, CountsWhatDidNotFit) {
    char text[2];
    int count = 0;
    EXPECT_EQ(SNPrintF(text, sizeof(text), "%s%n", "12345", &count), 5);
    EXPECT_EQ(count, 5);
}

// "%d" and "%u" have a way of their own through the engine. The same with a width of 1 has not.
TEST(PrintFInteger, PrintsTheSameWithAndWithoutAWidth) {
    std::vector<std::uint32_t> values = {0, 0x7FFFFFFF, 0x80000000, 0x80000001, 0xFFFFFFFF};
    for (std::uint64_t power = 1; power <= 1000000000; power *= 10) {
        for (const std::uint64_t value : {power - 1, power, power + 1, 2 * power + 7}) {
            values.push_back(static_cast<std::uint32_t>(value));
            values.push_back(static_cast<std::uint32_t>(0 - value));
        }
    }
    for (const std::uint32_t value : values) {
        EXPECT_EQ(printed("%u", value), std::to_string(value));
        EXPECT_EQ(printed("%d", value), std::to_string(static_cast<std::int32_t>(value)));
        EXPECT_EQ(printed("<%u|%d>", value, value), printed("<%1u|%1d>", value, value));
    }
}

TEST(PrintFInteger, IsCutInEveryBuffer) {
    for (std::size_t size = 0; size <= 16; ++size) {
        for (const int value : {7, -12, 345678, std::numeric_limits<int>::min()}) {
            std::string cut(size, '#');
            std::string expected(size, '#');
            EXPECT_EQ(SNPrintF(cut.data(), size, "a%d", value),
                      std::snprintf(expected.data(), size, "a%d", value));
            EXPECT_EQ(cut.c_str(), std::string(expected.c_str())) << size;
        }
    }
}

}  // namespace

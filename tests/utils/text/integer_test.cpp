#include "halvane/utils/text/integer.h"

#include <cerrno>
#include <climits>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <gtest/gtest.h>
#include <ostream>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "tests/support/guarded_bytes.h"

namespace {

using halvane::testing::GuardedBytes;

struct Reading {
    int value;
    std::ptrdiff_t consumed;
    int error;

    bool operator==(const Reading&) const = default;
    friend std::ostream& operator<<(std::ostream& out, const Reading& reading) {
        return out << reading.value << " after " << reading.consumed << ", " << reading.error;
    }
};

Reading read(std::string_view text, int base) {
    GuardedBytes guarded(text);
    const char* end = nullptr;
    errno = 0;
    const int value = strtoi(guarded.chars(), guarded.size(), &end, base);
    return {value, end - guarded.chars(), errno};
}

TEST(TextInteger, ReadsEachBase) {
    EXPECT_EQ(read("42", 10), (Reading{42, 2, 0}));
    EXPECT_EQ(read("-42x", 10), (Reading{-42, 3, 0}));
    EXPECT_EQ(read("+7", 10), (Reading{7, 2, 0}));
    EXPECT_EQ(read(" \t\n\v\f\r9", 10), (Reading{9, 7, 0}));
    EXPECT_EQ(read("0xfF", 16), (Reading{255, 4, 0}));
    EXPECT_EQ(read("ff", 16), (Reading{255, 2, 0}));
    EXPECT_EQ(read("-0X10", 0), (Reading{-16, 5, 0}));
    EXPECT_EQ(read("017", 0), (Reading{15, 3, 0}));
    EXPECT_EQ(read("017", 10), (Reading{17, 3, 0}));
    EXPECT_EQ(read("19", 0), (Reading{19, 2, 0}));
    EXPECT_EQ(read("zZ", 36), (Reading{35 * 36 + 35, 2, 0}));
    EXPECT_EQ(read("1012", 2), (Reading{5, 3, 0}));
}

TEST(TextInteger, TakesAPrefixOnlyBeforeADigit) {
    EXPECT_EQ(read("0x", 0), (Reading{0, 1, 0}));
    EXPECT_EQ(read("0x", 16), (Reading{0, 1, 0}));
    EXPECT_EQ(read("0xg", 16), (Reading{0, 1, 0}));
    EXPECT_EQ(read("0x1", 10), (Reading{0, 1, 0}));
    EXPECT_EQ(read("08", 0), (Reading{0, 1, 0}));
}

TEST(TextInteger, StaysAtTheStartWithoutANumber) {
    for (const char* text : {"", " ", "-", "+", "+-1", "-+1", "x", " -x", ".5"}) {
        EXPECT_EQ(read(text, 10), (Reading{0, 0, 0})) << text;
    }
}

TEST(TextInteger, StopsAtTheLengthAndAtANul) {
    EXPECT_EQ(strtoi("12345", 3, nullptr, 10), 123);
    EXPECT_EQ(strtoi("0x1F", 3, nullptr, 16), 1);
    EXPECT_EQ(strtoi("0x1F", 2, nullptr, 16), 0);
    EXPECT_EQ(strtoi("12345", SIZE_MAX, nullptr, 10), 12345);
    EXPECT_EQ(read(std::string_view("12\0003", 4), 10), (Reading{12, 2, 0}));
}

TEST(TextInteger, SaturatesBeyondAnInt) {
    EXPECT_EQ(read("2147483647", 10), (Reading{INT_MAX, 10, 0}));
    EXPECT_EQ(read("2147483648", 10), (Reading{INT_MAX, 10, ERANGE}));
    EXPECT_EQ(read("-2147483648", 10), (Reading{INT_MIN, 11, 0}));
    EXPECT_EQ(read("-2147483649", 10), (Reading{INT_MIN, 11, ERANGE}));
    EXPECT_EQ(read("99999999999999999999999999", 10), (Reading{INT_MAX, 26, ERANGE}));
    EXPECT_EQ(read("18446744073709551616", 10), (Reading{INT_MAX, 20, ERANGE}));  // 2^64
    EXPECT_EQ(read("-zzzzzzzzzzzzzzzzzzzz", 36), (Reading{INT_MIN, 21, ERANGE}));
}

TEST(TextInteger, RefusesOtherBases) {
    for (const int base : {-1, 1, 37, INT_MIN, INT_MAX}) {
        EXPECT_EQ(read("1", base), (Reading{0, 0, EINVAL})) << base;
    }
}

TEST(TextInteger, LeavesErrnoAlone) {
    errno = EDOM;
    EXPECT_EQ(strtoi("12", SIZE_MAX, nullptr, 10), 12);
    EXPECT_EQ(errno, EDOM);
}

// strtol, whose range is wider, gives the expected results, except for "0b" in newer C libraries.
TEST(TextInteger, AgreesWithStrtolOnGeneratedTexts) {
    std::mt19937 random(5);
    const std::string alphabet = "00123789abfxX+- ";
    for (int i = 0; i < 20000; ++i) {
        std::string text(random() % 12, ' ');
        for (char& character : text) character = alphabet[random() % alphabet.size()];
        for (const int base : {0, 2, 8, 10, 16, 36}) {
            char* end = nullptr;
            errno = 0;
            const long value = std::strtol(text.c_str(), &end, base);
            const bool isBinary = base == 0 || base == 2;
            if (isBinary && text.find("0b") != text.npos) continue;
            const bool isBeyond = value > INT_MAX || value < INT_MIN || errno == ERANGE;
            const int expected = value > INT_MAX ? INT_MAX : value < INT_MIN ? INT_MIN : int(value);
            ASSERT_EQ(read(text, base),
                      (Reading{expected, end - text.c_str(), isBeyond ? ERANGE : 0}))
                << "\"" << text << "\" base " << base;
        }
    }
}

}  // namespace

#include "halvane/utils/convert/random.h"

#include <algorithm>
#include <array>
#include <bitset>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <gtest/gtest.h>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "tests/support/guarded_bytes.h"
#include "tests/support/replaced_system.h"

using halvane::testing::GuardedBytes;

namespace {

using Bytes = std::vector<std::uint8_t>;

// While it lives, random values are 0x01020304, 0x05060708, and so on.
class CountingSource {
  public:
    CountingSource() {
        next = 0x01020304;
        halvane::replaceRandomSource(&fill);
    }
    CountingSource(const CountingSource&) = delete;
    CountingSource& operator=(const CountingSource&) = delete;
    ~CountingSource() { halvane::replaceRandomSource(nullptr); }

  private:
    static void fill(std::span<std::uint32_t> values) {
        for (auto& value : values) {
            value = next;
            next += 0x04040404;
        }
    }
    static inline std::uint32_t next = 0;
};

Bytes bytesOf(std::size_t length) {
    GuardedBytes buffer(length, 0xEE);
    EXPECT_EQ(RandomBytes(buffer.data(), length), kStatusOK);
    return {buffer.data(), buffer.data() + length};
}

TEST(RandomBytes, TakesTheUpperBytesOfEachValueFirst) {
    const Bytes expected = {1, 2, 3, 4, 5, 6, 7, 8, 9};
    for (std::size_t length = 0; length <= expected.size(); ++length) {
        const CountingSource source;
        EXPECT_EQ(bytesOf(length),
                  Bytes(expected.begin(), expected.begin() + static_cast<std::ptrdiff_t>(length)));
    }
}

TEST(RandomBytes, TakesNoMoreValuesThanItNeeds) {
    const CountingSource source;
    EXPECT_EQ(bytesOf(5), (Bytes{1, 2, 3, 4, 5}));
    EXPECT_EQ(bytesOf(2), (Bytes{9, 10}));  // the rest of the second value is lost
}

// While it lives, random values are 0, 1, 2 and so on, however many a call asks for.
void fillWithRunningNumbers(std::span<std::uint32_t> values) {
    static std::uint32_t next = 0;
    for (auto& value : values) value = next++;
}

TEST(RandomBytes, FillsBuffersOfAnySize) {
    halvane::replaceRandomSource(&fillWithRunningNumbers);
    const Bytes bytes = bytesOf(1003);
    halvane::replaceRandomSource(nullptr);
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        const std::size_t shift = 24 - i % 4 * 8;
        ASSERT_EQ(bytes[i], static_cast<std::uint8_t>(i / 4 >> shift)) << i;
    }
    EXPECT_EQ(RandomBytes(nullptr, 0), kStatusOK);
}

TEST(RandomBytes, ComeFromTheSystemOtherwise) {
    const Bytes bytes = bytesOf(4096);
    std::bitset<256> seen;
    for (const auto byte : bytes) seen.set(byte);
    EXPECT_GT(seen.count(), 200u);
    EXPECT_NE(bytesOf(4096), bytes);
}

std::string randomText(std::size_t min, std::size_t max) {
    GuardedBytes buffer(max + 1, 0xEE);
    EXPECT_EQ(RandomString(min, max, buffer.chars()), buffer.chars());
    return buffer.chars();
}

TEST(RandomString, DrawsLengthAndCharactersFromRand) {
    constexpr std::string_view kCharacters =
        "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789";
    for (unsigned seed = 1; seed <= 50; ++seed) {
        std::srand(seed);
        std::string expected(3 + static_cast<std::size_t>(std::rand()) % 8, '?');
        for (char& character : expected) {
            character = kCharacters[static_cast<std::size_t>(std::rand()) % 62];
        }
        std::srand(seed);
        EXPECT_EQ(randomText(3, 10), expected);
    }
}

TEST(RandomString, HasEveryLengthOfTheRange) {
    std::srand(1);
    std::set<std::size_t> lengths;
    std::set<char> characters;
    for (int i = 0; i < 1000; ++i) {
        const std::string text = randomText(2, 5);
        lengths.insert(text.size());
        characters.insert(text.begin(), text.end());
    }
    EXPECT_EQ(lengths, (std::set<std::size_t>{2, 3, 4, 5}));
    EXPECT_EQ(characters.size(), 62u);
}

TEST(RandomString, TakesTheMaximumForAMinimumAboveIt) {
    EXPECT_EQ(randomText(4, 4).size(), 4u);
    EXPECT_EQ(randomText(0, 0), "");
    EXPECT_EQ(randomText(4, 2).size(), 2u);
}

}  // namespace

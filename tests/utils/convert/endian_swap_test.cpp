#include "halvane/utils/convert/endian_swap.h"

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <gtest/gtest.h>
#include <limits>
#include <numeric>
#include <vector>

#include "tests/support/guarded_bytes.h"

using halvane::testing::GuardedBytes;

namespace {

using Bytes = std::vector<std::uint8_t>;

Bytes counted(std::size_t size) {
    Bytes bytes(size);
    std::iota(bytes.begin(), bytes.end(), std::uint8_t{1});
    return bytes;
}

// Reverses each whole group of `group` bytes, and leaves the rest.
Bytes reversedIn(Bytes bytes, std::size_t group) {
    for (std::size_t at = 0; at + group <= bytes.size(); at += group) {
        std::reverse(bytes.begin() + static_cast<std::ptrdiff_t>(at),
                     bytes.begin() + static_cast<std::ptrdiff_t>(at + group));
    }
    return bytes;
}

struct Functions {
    void (*inPlace)(void*, std::size_t);
    void (*copy)(const void*, std::size_t, void*);
};

// Tries every length, including those with an odd tail, at every alignment.
void expectReversal(const Functions& functions, std::size_t size, const Bytes& expected) {
    const Bytes original = counted(size);
    GuardedBytes source(original);
    GuardedBytes destination(size);
    functions.copy(source.data(), size, destination.data());
    EXPECT_TRUE(std::ranges::equal(destination.bytes(), expected)) << size;
    EXPECT_TRUE(std::ranges::equal(source.bytes(), original)) << size;
    functions.copy(source.data(), size, source.data());
    EXPECT_TRUE(std::ranges::equal(source.bytes(), expected)) << size;
    GuardedBytes memory(original);
    functions.inPlace(memory.data(), size);
    EXPECT_TRUE(std::ranges::equal(memory.bytes(), expected)) << size;
}

TEST(EndianSwap, ReversesEachIntegerAndLeavesTheTail) {
    const Bytes four = {1, 2, 3, 4, 5};
    Bytes swapped = four;
    EndianSwap16Mem(swapped.data(), swapped.size());
    EXPECT_EQ(swapped, (Bytes{2, 1, 4, 3, 5}));
    swapped = four;
    EndianSwap32Mem(swapped.data(), swapped.size());
    EXPECT_EQ(swapped, (Bytes{4, 3, 2, 1, 5}));
    for (std::size_t size = 0; size < 70; ++size) {
        expectReversal({EndianSwap16Mem, EndianSwap16MemCopy}, size, reversedIn(counted(size), 2));
        expectReversal({EndianSwap32Mem, EndianSwap32MemCopy}, size, reversedIn(counted(size), 4));
    }
}

TEST(MemReverse, ReversesAllBytes) {
    for (std::size_t size = 0; size < 70; ++size) {
        Bytes expected = counted(size);
        std::ranges::reverse(expected);
        expectReversal({MemReverse, MemReverseCopy}, size, expected);
    }
}

TEST(EndianSwap, TakesNothingFromNowhere) {
    EndianSwap16Mem(nullptr, 0);
    EndianSwap32Mem(nullptr, 0);
    EndianSwap16MemCopy(nullptr, 0, nullptr);
    EndianSwap32MemCopy(nullptr, 0, nullptr);
    MemReverse(nullptr, 0);
    MemReverseCopy(nullptr, 0, nullptr);
}

TEST(EndianSwapFloat, ReversesTheRepresentation) {
    const float single = std::bit_cast<float>(std::uint32_t{0x12345678});
    EXPECT_EQ(std::bit_cast<std::uint32_t>(EndianSwapFloat32(single)), 0x78563412u);
    const double wide = std::bit_cast<double>(std::uint64_t{0x0123456789ABCDEF});
    EXPECT_EQ(std::bit_cast<std::uint64_t>(EndianSwapFloat64(wide)), 0xEFCDAB8967452301u);
    EXPECT_EQ(EndianSwapFloat32(EndianSwapFloat32(1.5f)), 1.5f);
    EXPECT_EQ(EndianSwapFloat64(EndianSwapFloat64(-0.1)), -0.1);
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    EXPECT_EQ(EndianSwapFloat64(EndianSwapFloat64(kInfinity)), kInfinity);
}

}  // namespace

#include "halvane/utils/convert/integer_math.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <numeric>

namespace {

// 1, 10, 100, ... up to the limit of the type.
template <typename Integer, std::size_t kCount>
constexpr auto kPowersOf10 = [] {
    std::array<Integer, kCount> powers{1};
    for (std::size_t i = 1; i < kCount; ++i) powers[i] = powers[i - 1] * 10;
    return powers;
}();

template <typename Integer, std::size_t kCount>
Integer powerOf10(std::uint32_t n) {
    return kPowersOf10<Integer, kCount>[std::min<std::size_t>(n, kCount - 1)];
}

// std::bit_ceil is undefined beyond the highest power.
template <typename Integer>
Integer ceil2(Integer x) {
    constexpr Integer kHighest = ~(static_cast<Integer>(~Integer{0}) >> 1);
    return x == 0 || x > kHighest ? 0 : std::bit_ceil(x);
}

}  // namespace

// Gives the result of repeatedly subtracting the smaller number from the larger one, in a number of
// steps proportional to their digits.
std::int64_t gcd64(std::int64_t a, std::int64_t b) {
    if (a <= 0) return b;
    return b <= 0 ? a : std::gcd(a, b);
}

std::uint32_t iceil2(std::uint32_t x) {
    return ceil2(x);
}

std::uint64_t iceil2_64(std::uint64_t x) {
    return ceil2(x);
}

std::uint32_t ifloor2(std::uint32_t x) {
    return std::bit_floor(x);
}

std::uint64_t ifloor2_64(std::uint64_t x) {
    return std::bit_floor(x);
}

int ilog2_64(std::uint64_t x) {
    return x == 0 ? 0 : static_cast<int>(std::bit_width(x)) - 1;
}

std::uint32_t ipow10(std::uint32_t n) {
    return powerOf10<std::uint32_t, 10>(n);
}

std::uint64_t ipow10_64(std::uint32_t n) {
    return powerOf10<std::uint64_t, 20>(n);
}

// Computes the cosine of x, the angle less a quarter turn: 1 - (B - C x^2) x^2 with x in quarter
// turns. Everything fits into 31 bits: the magnitudes of x and y are at most 2^13 and 2^14.
int isin(int angle) {
    constexpr std::int32_t kQuarterTurn = kSineFullTurn / 4;
    constexpr std::uint32_t kHalfTurn = kSineFullTurn / 2;
    constexpr std::int32_t kB = 19900;
    constexpr std::int32_t kC = 3516;
    const auto bits = static_cast<std::uint32_t>(angle);
    const std::int32_t x = static_cast<std::int32_t>(bits & (kHalfTurn - 1)) - kQuarterTurn;
    const std::int32_t y = x * x / 4096;
    const std::int32_t sine = kSineOne - (kB - y * kC / 16384) * y / 65536;
    return (bits & kHalfTurn) != 0 ? -sine : sine;
}

void Multiply64x64(std::uint64_t a, std::uint64_t b, std::uint64_t* high, std::uint64_t* low) {
    __extension__ using Wide = unsigned __int128;
    const Wide product = static_cast<Wide>(a) * b;
    if (high != nullptr) *high = static_cast<std::uint64_t>(product >> 64);
    if (low != nullptr) *low = static_cast<std::uint64_t>(product);
}

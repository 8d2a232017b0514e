// Decimal digits, two at a time.
#ifndef HALVANE_BASE_DECIMAL_INTERNAL_H
#define HALVANE_BASE_DECIMAL_INTERNAL_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace halvane {

// "00" to "99": one division gives two digits.
inline constexpr auto kDecimalPairs = [] {
    std::array<char, 200> pairs{};
    for (std::size_t i = 0; i < 100; ++i) {
        pairs[2 * i] = static_cast<char>('0' + i / 10);
        pairs[2 * i + 1] = static_cast<char>('0' + i % 10);
    }
    return pairs;
}();

// Writes the two digits of a number below 100.
inline void putDecimalPair(char* at, std::uint32_t number) {
    std::memcpy(at, kDecimalPairs.data() + std::size_t{2} * number, 2);
}

// The digits of a 32-bit number; 1 for 0.
constexpr std::size_t decimalSize(std::uint32_t number) {
    std::size_t size = 1;
    for (; number >= 100; number /= 100) size += 2;
    return number >= 10 ? size + 1 : size;
}

// Writes the decimal digits of a number up to `end`. They are as many as decimalSize() tells.
inline void putDecimalBefore(char* end, std::uint32_t number) {
    for (; number >= 100; number /= 100) putDecimalPair(end -= 2, number % 100);
    if (number >= 10) return putDecimalPair(end - 2, number);
    end[-1] = static_cast<char>('0' + number);
}

}  // namespace halvane

#endif

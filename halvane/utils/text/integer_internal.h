// Reads integers of any width at the start of a text, identically on every system.
#ifndef HALVANE_UTILS_TEXT_INTEGER_INTERNAL_H
#define HALVANE_UTILS_TEXT_INTEGER_INTERNAL_H

#include <concepts>
#include <cstdint>
#include <limits>

#include "halvane/utils/text/cursor_internal.h"

namespace halvane {

struct TextInteger {
    bool isThere = false;  // whether there is a number
    bool isNegative = false;
    std::uint64_t magnitude = 0;  // UINT64_MAX if it is greater
};

inline constexpr int kIntegerBaseMax = 36;

constexpr bool isIntegerBase(int base) {
    return base == 0 || (base >= 2 && base <= kIntegerBaseMax);
}

// Consumes white space, a sign, for base 16 a "0x", and digits. In base 0 "0x" means 16, any other
// leading "0" means 8, anything else 10; there is no other prefix. If there is no number, the
// position of the cursor is unspecified.
// REQUIRES: isIntegerBase(base)
TextInteger takeInteger(TextCursor& cursor, int base);

template <std::signed_integral Integer>
struct ClampedInteger {
    Integer value = 0;
    bool isOutOfRange = false;  // the value is then the nearer limit
};

template <std::signed_integral Integer>
ClampedInteger<Integer> clamped(const TextInteger& integer) {
    using Limits = std::numeric_limits<Integer>;
    constexpr auto kMax = static_cast<std::uint64_t>(Limits::max());
    const std::uint64_t most = kMax + (integer.isNegative ? 1 : 0);
    if (integer.magnitude > most) {
        return {integer.isNegative ? Limits::min() : Limits::max(), true};
    }
    const std::uint64_t value = integer.isNegative ? 0 - integer.magnitude : integer.magnitude;
    return {static_cast<Integer>(value), false};
}

}  // namespace halvane

#endif

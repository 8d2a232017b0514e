#include "halvane/utils/text_integer.h"

#include <cerrno>
#include <climits>
#include <cstdint>
#include <cstring>

#include "halvane/utils/ascii_internal.h"
#include "halvane/utils/text_cursor_internal.h"

namespace {

using halvane::TextCursor;

// Consumes the prefix of a base, and tells the base.
unsigned takeBase(TextCursor& cursor, unsigned base) {
    const bool hasHexPrefix = cursor.peek() == '0' &&
                              (cursor.peek(1) == 'x' || cursor.peek(1) == 'X') &&
                              halvane::isHexDigit(cursor.peek(2));
    if (hasHexPrefix && (base == 0 || base == 16)) {
        cursor.skip(2);
        return 16;
    }
    if (base != 0) return base;
    return cursor.peek() == '0' ? 8 : 10;
}

// A magnitude that stays above any that an int has once it is there.
std::uint64_t takeDigits(TextCursor& cursor, unsigned base) {
    constexpr std::uint64_t kEnough = std::uint64_t{1} << 32;
    std::uint64_t magnitude = 0;
    while (halvane::digitValue(cursor.peek()) < base) {
        if (magnitude < kEnough) {
            magnitude = magnitude * base + halvane::digitValue(cursor.peek());
        }
        cursor.skip(1);
    }
    return magnitude;
}

int signedValue(std::uint64_t magnitude, bool isNegative) {
    const std::uint64_t most = isNegative ? std::uint64_t{INT_MAX} + 1 : std::uint64_t{INT_MAX};
    if (magnitude > most) {
        errno = ERANGE;
        return isNegative ? INT_MIN : INT_MAX;
    }
    const auto value = static_cast<std::int64_t>(magnitude);
    return static_cast<int>(isNegative ? -value : value);
}

}  // namespace

int strtoi(const char* text, std::size_t length, const char** end, int base) {
    const char* unused = nullptr;
    if (end == nullptr) end = &unused;
    *end = text;
    if (base < 0 || base == 1 || base > 36) {
        errno = EINVAL;
        return 0;
    }
    TextCursor cursor({text, strnlen(text, length)});
    cursor.skipSpace();
    const bool isNegative = cursor.skipIf('-');
    if (!isNegative) cursor.skipIf('+');
    const unsigned actualBase = takeBase(cursor, static_cast<unsigned>(base));
    if (halvane::digitValue(cursor.peek()) >= actualBase) return 0;
    const std::uint64_t magnitude = takeDigits(cursor, actualBase);
    *end = cursor.position();
    return signedValue(magnitude, isNegative);
}

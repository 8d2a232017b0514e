#include "halvane/utils/text/integer.h"

#include <cerrno>
#include <cstddef>

#include "halvane/base/ascii_internal.h"
#include "halvane/utils/text/integer_internal.h"

namespace halvane {

namespace {

// Consumes the prefix of a base, and returns the base.
unsigned takeBase(TextCursor& cursor, unsigned base) {
    const bool hasHexPrefix = cursor.peek() == '0' &&
                              (cursor.peek(1) == 'x' || cursor.peek(1) == 'X') &&
                              isHexDigit(cursor.peek(2));
    if (hasHexPrefix && (base == 0 || base == 16)) {
        cursor.skip(2);
        return 16;
    }
    if (base != 0) return base;
    return cursor.peek() == '0' ? 8 : 10;
}

std::uint64_t takeDigits(TextCursor& cursor, unsigned base) {
    std::uint64_t magnitude = 0;
    bool isTooLarge = false;
    for (; digitValue(cursor.peek()) < base; cursor.skip(1)) {
        isTooLarge |= __builtin_mul_overflow(magnitude, std::uint64_t{base}, &magnitude);
        isTooLarge |=
            __builtin_add_overflow(magnitude, std::uint64_t{digitValue(cursor.peek())}, &magnitude);
    }
    return isTooLarge ? UINT64_MAX : magnitude;
}

}  // namespace

TextInteger takeInteger(TextCursor& cursor, int base) {
    TextInteger integer;
    cursor.skipSpace();
    integer.isNegative = cursor.skipIf('-');
    if (!integer.isNegative) cursor.skipIf('+');
    const unsigned actualBase = takeBase(cursor, static_cast<unsigned>(base));
    integer.isThere = digitValue(cursor.peek()) < actualBase;
    integer.magnitude = takeDigits(cursor, actualBase);
    return integer;
}

}  // namespace halvane

int strtoi(const char* text, std::size_t length, const char** end, int base) {
    const char* unused = nullptr;
    if (end == nullptr) end = &unused;
    *end = text;
    if (!halvane::isIntegerBase(base)) {
        errno = EINVAL;
        return 0;
    }
    // A NUL is not part of a number, so it ends the number whatever the length is.
    halvane::TextCursor cursor(text, length);
    const halvane::TextInteger integer = halvane::takeInteger(cursor, base);
    if (!integer.isThere) return 0;
    *end = cursor.position();
    const auto [value, isOutOfRange] = halvane::clamped<int>(integer);
    if (isOutOfRange) errno = ERANGE;
    return value;
}

#include "halvane/utils/convert/text_number.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "halvane/base/ascii_internal.h"
#include "halvane/utils/text/cursor_internal.h"

namespace {

using halvane::digitValue;
using halvane::TextCursor;

constexpr int kBaseMax = 36;

struct Prefix {
    char letter;
    unsigned base;
};

constexpr Prefix kPrefixes[] = {{'x', 16}, {'b', 2}};

// Consumes a prefix, and returns the base.
unsigned readBase(TextCursor& text, unsigned defaultBase) {
    for (const Prefix& prefix : kPrefixes) {
        const bool isThere = text.peek() == '0' && (text.peek(1) | 0x20) == prefix.letter &&
                             digitValue(text.peek(2)) < prefix.base;
        if (!isThere || digitValue(prefix.letter) < defaultBase) continue;
        text.skip(2);
        return prefix.base;
    }
    if (defaultBase != 0) return defaultBase;
    return text.peek() == '0' ? 8 : 10;
}

}  // namespace

std::int32_t TextToInt32(const char* text, std::size_t length, int defaultBase) {
    if (defaultBase < 0 || defaultBase == 1 || defaultBase > kBaseMax) return 0;
    TextCursor cursor(text, length);
    cursor.skipSpace();
    const bool isNegative = cursor.skipIf('-');
    if (!isNegative) cursor.skipIf('+');
    const unsigned base = readBase(cursor, static_cast<unsigned>(defaultBase));

    // INT32_MAX + 1, which only a negative number may reach.
    constexpr std::int64_t kMagnitudeMax = -std::int64_t{INT32_MIN};
    std::int64_t magnitude = 0;
    for (; digitValue(cursor.peek()) < base; cursor.skip(1)) {
        magnitude = std::min(magnitude * base + digitValue(cursor.peek()), kMagnitudeMax);
    }
    const std::int64_t value = isNegative ? -magnitude : magnitude;
    return static_cast<std::int32_t>(std::min<std::int64_t>(value, INT32_MAX));
}

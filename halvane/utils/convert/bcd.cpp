#include "halvane/utils/convert/bcd.h"

#include <charconv>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <system_error>

#include "halvane/base/ascii_internal.h"
#include "halvane/utils/text/cursor_internal.h"

namespace {

constexpr int kNibbleBits = 4;
constexpr int kNumberBits = 64;

std::uint64_t decoded(std::uint64_t bcd) {
    std::uint64_t value = 0;
    for (int shift = kNumberBits - kNibbleBits; shift >= 0; shift -= kNibbleBits) {
        value = value * 10 + (bcd >> shift & 0x0F);
    }
    return value;
}

// REQUIRES: value <= kBCDMax
std::uint64_t encoded(std::uint64_t value) {
    std::uint64_t bcd = 0;
    for (int shift = 0; value > 0; shift += kNibbleBits, value /= 10) bcd |= value % 10 << shift;
    return bcd;
}

}  // namespace

std::uint64_t BCDTextToInt(const char* text, std::size_t length, const char** end) {
    halvane::TextCursor cursor(text, length);
    std::uint64_t bcd = 0;
    bool isTooLarge = false;
    for (; halvane::isDigit(cursor.peek()); cursor.skip(1)) {
        const std::uint64_t digit = halvane::digitValue(cursor.peek());
        isTooLarge |= __builtin_mul_overflow(bcd, std::uint64_t{10}, &bcd);
        isTooLarge |= __builtin_add_overflow(bcd, digit, &bcd);
    }
    if (end != nullptr) *end = isTooLarge ? text : cursor.position();
    return isTooLarge ? 0 : decoded(bcd);
}

HalvaneStatus BCDTextFromInt(std::uint64_t value, char* buffer, std::size_t size) {
    if (value > kBCDMax) return kStatusOutOfRange;
    char text[kBCDTextSize];
    char* const end = std::to_chars(text, text + sizeof(text) - 1, encoded(value)).ptr;
    *end = '\0';
    const auto needed = static_cast<std::size_t>(end - text) + 1;
    if (needed > size) return kStatusNoRoom;
    std::memcpy(buffer, text, needed);
    return kStatusOK;
}

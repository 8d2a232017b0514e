#include "halvane/utils/convert/bit_list.h"

#include <bit>
#include <charconv>
#include <cstddef>
#include <cstdint>

#include "halvane/utils/text/cursor_internal.h"

namespace {

constexpr std::uint32_t kLastBit = 31;

}  // namespace

char* BitListString_Make(std::uint32_t bits, char* buffer, std::size_t* length) {
    char* to = buffer;
    for (; bits != 0; bits &= bits - 1) {
        if (to != buffer) *to++ = ',';
        to = std::to_chars(to, to + 2, std::countr_zero(bits)).ptr;
    }
    *to = '\0';
    if (length != nullptr) *length = static_cast<std::size_t>(to - buffer);
    return buffer;
}

HalvaneStatus BitListString_Parse(const char* text, std::size_t length, std::uint32_t* bits) {
    if (text == nullptr) return kStatusUnsupported;
    halvane::TextCursor cursor(text, length);
    std::uint32_t read = 0;
    while (!cursor.atEnd()) {
        std::uint32_t bit = 0;
        const HalvaneStatus status = cursor.decimal(kLastBit, bit);
        if (status != kStatusOK) return status;
        read |= std::uint32_t{1} << bit;
        // Another number must follow a ','.
        if (!cursor.atEnd() && (!cursor.skipIf(',') || cursor.atEnd())) return kStatusMalformed;
    }
    if (bits != nullptr) *bits = read;
    return kStatusOK;
}

#include "halvane/utils/convert/four_char_code.h"

#include <climits>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "halvane/utils/text/cursor_internal.h"

namespace {

constexpr char spaceForNul(char character) {
    return character == '\0' ? ' ' : character;
}

}  // namespace

char* FourCharCodeToCString(std::uint32_t code, char* buffer) {
    char* to = buffer;
    for (int shift = 24; shift >= 0; shift -= CHAR_BIT) {
        *to++ = spaceForNul(static_cast<char>(code >> shift));
    }
    *to = '\0';
    return buffer;
}

std::uint32_t TextToFourCharCode(const char* text, std::size_t length) {
    constexpr std::size_t kCharacters = 4;
    const std::string_view start = halvane::startOf(text, length, kCharacters);
    std::uint32_t code = 0;
    for (std::size_t i = 0; i < kCharacters; ++i) {
        const char character = i < start.size() ? start[i] : ' ';
        code = code << CHAR_BIT | static_cast<unsigned char>(spaceForNul(character));
    }
    return code;
}

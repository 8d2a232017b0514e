// Classes of ASCII characters, independent of the locale.
#ifndef HALVANE_BASE_ASCII_INTERNAL_H
#define HALVANE_BASE_ASCII_INTERNAL_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

#include "halvane/base/hex_digits.h"

namespace halvane {

inline constexpr char kLowerHexDigits[] = kHexDigitsLowercase;
inline constexpr char kUpperHexDigits[] = kHexDigitsUppercase;

// Appends the two digits of an octet. `digits` is one of the tables above.
inline void appendHexOctet(std::string& text, std::uint8_t octet, const char (&digits)[17]) {
    text += digits[octet >> 4];
    text += digits[octet & 0x0F];
}

// Greater than every digit of every base.
inline constexpr std::uint8_t kNoDigit = 0xFF;

// The value of each character as a digit, for bases up to 36.
inline constexpr auto kDigitValues = [] {
    std::array<std::uint8_t, 256> values{};
    values.fill(kNoDigit);
    for (std::uint8_t i = 0; i < 10; ++i) values[std::size_t{'0'} + i] = i;
    for (std::uint8_t i = 0; i < 26; ++i) {
        values[std::size_t{'a'} + i] = static_cast<std::uint8_t>(10 + i);
        values[std::size_t{'A'} + i] = static_cast<std::uint8_t>(10 + i);
    }
    return values;
}();

constexpr unsigned digitValue(char character) {
    return kDigitValues[static_cast<unsigned char>(character)];
}

constexpr bool isDigit(char character) {
    return digitValue(character) < 10;
}

constexpr bool isHexDigit(char character) {
    return digitValue(character) < 16;
}

constexpr bool isSpace(char character) {
    return character == ' ' || (character >= '\t' && character <= '\r');
}

constexpr bool isPrintable(std::uint32_t code) {
    return code >= 32 && code <= 126;
}

}  // namespace halvane

#endif

// Keys of a terminal.
#ifndef TOOLS_HALVANE_INPUT_KEY_H
#define TOOLS_HALVANE_INPUT_KEY_H

namespace halvane::tool {

// A key that types a character is the character. The others stand behind the last of Unicode.
using Key = char32_t;

inline constexpr Key kNamedKeys = 0x110000;
inline constexpr Key kKeyEnter = kNamedKeys;
inline constexpr Key kKeyEscape = kNamedKeys + 1;
inline constexpr Key kKeyBackspace = kNamedKeys + 2;
inline constexpr Key kKeyUp = kNamedKeys + 3;
inline constexpr Key kKeyDown = kNamedKeys + 4;
inline constexpr Key kKeyRight = kNamedKeys + 5;
inline constexpr Key kKeyLeft = kNamedKeys + 6;
inline constexpr Key kKeyHome = kNamedKeys + 7;
inline constexpr Key kKeyEnd = kNamedKeys + 8;
inline constexpr Key kKeyPageUp = kNamedKeys + 9;
inline constexpr Key kKeyPageDown = kNamedKeys + 10;

constexpr bool typesCharacter(Key key) {
    return key < kNamedKeys;
}

}  // namespace halvane::tool

#endif

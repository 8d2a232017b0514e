// ASCII letters without their case, whatever the locale is, and the order of bytes with and without
// case.
#ifndef HALVANE_UTILS_TEXT_IGNORE_CASE_INTERNAL_H
#define HALVANE_UTILS_TEXT_IGNORE_CASE_INTERNAL_H

#include <algorithm>
#include <string_view>

namespace halvane {

constexpr char lowerOf(char character) {
    const bool isUpper = character >= 'A' && character <= 'Z';
    return isUpper ? static_cast<char>(character + ('a' - 'A')) : character;
}

constexpr char upperOf(char character) {
    const bool isLower = character >= 'a' && character <= 'z';
    return isLower ? static_cast<char>(character - ('a' - 'A')) : character;
}

// Returns -1, 0 or 1 if `a` is less than, equal to or greater than `b`.
template <typename Value>
constexpr int orderOf(Value a, Value b) {
    return (a > b) - (a < b);
}

// The same for bytes, which count as unsigned whatever char is.
constexpr int orderOfBytes(char a, char b) {
    return orderOf(static_cast<unsigned char>(a), static_cast<unsigned char>(b));
}

constexpr int orderIgnoringCase(char a, char b) {
    return orderOfBytes(lowerOf(a), lowerOf(b));
}

inline bool equalsIgnoringCase(std::string_view a, std::string_view b) {
    return std::ranges::equal(a, b, {}, lowerOf, lowerOf);
}

}  // namespace halvane

#endif

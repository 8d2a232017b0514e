// Letters without their case: those of ASCII, whatever the locale is.
#ifndef HALVANE_UTILS_IGNORE_CASE_INTERNAL_H
#define HALVANE_UTILS_IGNORE_CASE_INTERNAL_H

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

inline bool equalsIgnoringCase(std::string_view a, std::string_view b) {
    return std::ranges::equal(a, b, {}, lowerOf, lowerOf);
}

}  // namespace halvane

#endif

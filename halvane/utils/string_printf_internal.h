// The formatting engine writing into a std::string, for descriptions and messages.
#ifndef HALVANE_UTILS_STRING_PRINTF_INTERNAL_H
#define HALVANE_UTILS_STRING_PRINTF_INTERNAL_H

#include <string>

namespace halvane {

// The formatted text. The format is the engine's: SNPrintF's conversions and its extensions.
std::string stringPrintF(const char* format, ...);

// Appends the formatted text to `text`.
void appendPrintF(std::string& text, const char* format, ...);

inline const char* yesNo(bool value) {
    return value ? "YES" : "NO";
}

}  // namespace halvane

#endif

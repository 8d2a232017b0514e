// The formatting engine writing into a std::string, for descriptions and messages.
//
// A malformed size modifier ("%hld") ends the text where it stands: what was written before it is
// kept, and nothing tells of the rest. Formats are constants, so that is a slip for tests to find.
// Anything else that is wrong with a format shows in the text. Lack of memory is std::bad_alloc.
#ifndef HALVANE_UTILS_PRINTF_STD_STRING_INTERNAL_H
#define HALVANE_UTILS_PRINTF_STD_STRING_INTERNAL_H

#include <string>

namespace halvane {

// The formatted text. The format is the engine's: SNPrintF's conversions and its extensions.
std::string stringPrintF(const char* format, ...);

// Appends the formatted text to `text`; a part of it where std::bad_alloc is thrown.
void appendPrintF(std::string& text, const char* format, ...);

inline const char* yesNo(bool value) {
    return value ? "YES" : "NO";
}

}  // namespace halvane

#endif

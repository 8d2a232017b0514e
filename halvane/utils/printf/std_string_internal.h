// The formatting engine with a std::string as its output, for descriptions and messages.
//
// A malformed size modifier ("%hld") ends the output: the text before it is kept, and nothing
// reports the rest. Formats are constants, so tests find such errors. Every other fault of a format
// shows in the text. A lack of memory is std::bad_alloc.
#ifndef HALVANE_UTILS_PRINTF_STD_STRING_INTERNAL_H
#define HALVANE_UTILS_PRINTF_STD_STRING_INTERNAL_H

#include <string>

namespace halvane {

// Returns the formatted text. The format is the engine's: SNPrintF's conversions and extensions.
std::string stringPrintF(const char* format, ...);

// Appends the formatted text to `text`. If std::bad_alloc is thrown, a part may have been appended.
void appendPrintF(std::string& text, const char* format, ...);

inline const char* yesNo(bool value) {
    return value ? "YES" : "NO";
}

}  // namespace halvane

#endif

// What the tool's output is shown on: terminal, locale and wishes of the environment. They are read
// here alone and handed on as a value.
#ifndef TOOLS_HALVANE_OUTPUT_SURROUNDINGS_H
#define TOOLS_HALVANE_OUTPUT_SURROUNDINGS_H

#include <cstddef>
#include <cstdio>
#include <functional>
#include <optional>
#include <string>

namespace halvane::tool {

struct Surroundings {
    bool isTerminal = false;                  // the stream is one
    std::optional<std::size_t> columns = {};  // COLUMNS, or else of the terminal
    std::optional<std::size_t> lines = {};    // LINES, or else of the terminal
    bool isUTF8 = false;                      // the locale's characters are UTF-8
    std::string term = {};                    // TERM; empty if it is not set, as all below
    std::string colorTerm = {};               // COLORTERM
    std::string noColor = {};                 // NO_COLOR
};

// Returns the value of a variable of the environment; null if it is not set.
using Variables = std::function<const char*(const char* name)>;

// The locale is the first of LC_ALL, LC_CTYPE and LANG that is not empty. A name with a character
// set says by itself whether that is UTF-8, even where the locale is not installed. COLUMNS and
// LINES count if they are whole numbers from 1 to 65535.
Surroundings surroundingsOf(std::FILE* stream, const Variables& variables);

// The same with the environment of the process.
Surroundings surroundingsOf(std::FILE* stream);

}  // namespace halvane::tool

#endif

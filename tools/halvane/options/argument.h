// The arguments of a command line that are not options.
#ifndef TOOLS_HALVANE_OPTIONS_ARGUMENT_H
#define TOOLS_HALVANE_OPTIONS_ARGUMENT_H

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "halvane/base/number.h"

#include "tools/halvane/output/near_word.h"
#include "tools/halvane/output/shell_word.h"

namespace halvane::tool {

// Why a command line cannot be carried out.
struct UsageError {
    std::string message;
    std::string hint = {};  // what to do, in lines; empty for none
};

// Returns the error with a line that suggests the word of `words` that `typed` was meant to be, if
// there is one: "did you mean --band=2.4?". `before` is what stands before the word.
template <typename Words>
UsageError withSuggestion(UsageError error, std::string_view before, std::string_view typed,
                          const Words& words) {
    const std::vector<std::string_view> known(words.begin(), words.end());
    const auto place = nearWord(typed, known);
    if (place) {
        error.hint.append("did you mean ").append(before);
        error.hint.append(shellWord(known[*place])).append("?");
    }
    return error;
}

// The names of a table of words and their values.
template <typename Value, std::size_t count>
std::vector<std::string_view> namesOf(const std::pair<std::string_view, Value> (&choices)[count]) {
    std::vector<std::string_view> names;
    for (const auto& choice : choices) names.push_back(choice.first);
    return names;
}

// Takes the arguments that the parser left for the command, and marks them as used.
std::vector<std::string> takeArguments();

// A number of decimal digits only, which may have leading zeros. Absent for any other text, and for
// a number beyond 64 bits.
std::optional<std::uint64_t> decimalOf(std::string_view text);

// The same, with an optional minus sign. Absent for a number beyond signed 64 bits.
std::optional<std::int64_t> signedDecimalOf(std::string_view text);

// A WPS PIN: eight decimal digits, including leading zeros. The check digit may be wrong.
std::optional<Number> pinOf(std::string_view text);

}  // namespace halvane::tool

#endif

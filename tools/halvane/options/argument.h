// What stands on a command line besides options.
#ifndef TOOLS_HALVANE_OPTIONS_ARGUMENT_H
#define TOOLS_HALVANE_OPTIONS_ARGUMENT_H

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "halvane/base/number.h"

namespace halvane::tool {

// Why a command line cannot be followed.
struct UsageError {
    std::string message;
};

// The arguments that the parser left to the command, which have been used thereby.
std::vector<std::string> takeArguments();

// A number of decimal digits only, leading zeros or not; absent for any other text, and for one
// beyond 64 bits.
std::optional<std::uint64_t> decimalOf(std::string_view text);

// The same with a minus sign in front or without; absent for a number beyond signed 64 bits.
std::optional<std::int64_t> signedDecimalOf(std::string_view text);

// A WPS PIN: eight decimal digits, leading zeros among them. The last one need not be right.
std::optional<Number> pinOf(std::string_view text);

}  // namespace halvane::tool

#endif

#include "tools/halvane/options/argument.h"

#include <charconv>
#include <cstddef>
#include <system_error>

#include "halvane/utils/cli.h"

namespace halvane::tool {

namespace {

// Reads the whole text as a number of the type. A signed type accepts a minus sign.
template <typename Integer>
std::optional<Integer> integerOf(std::string_view text) {
    Integer value = 0;
    const char* const end = text.data() + text.size();
    const auto result = std::from_chars(text.data(), end, value);
    if (result.ec != std::errc() || result.ptr != end) return std::nullopt;
    return value;
}

}  // namespace

std::vector<std::string> takeArguments() {
    std::vector<std::string> arguments;
    while (gArgI < gArgC) arguments.emplace_back(gArgV[gArgI++]);
    return arguments;
}

std::optional<std::uint64_t> decimalOf(std::string_view text) {
    return integerOf<std::uint64_t>(text);
}

std::optional<std::int64_t> signedDecimalOf(std::string_view text) {
    return integerOf<std::int64_t>(text);
}

std::optional<Number> pinOf(std::string_view text) {
    constexpr std::size_t kDigits = 8;
    const auto value = text.size() == kDigits ? decimalOf(text) : std::nullopt;
    return value ? std::optional(Number(*value)) : std::nullopt;
}

}  // namespace halvane::tool

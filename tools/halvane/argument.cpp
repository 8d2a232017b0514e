#include "tools/halvane/argument.h"

#include <charconv>

#include "halvane/utils/cli.h"

namespace halvane::tool {

std::vector<std::string> takeArguments() {
    std::vector<std::string> arguments;
    while (gArgI < gArgC) arguments.emplace_back(gArgV[gArgI++]);
    return arguments;
}

std::optional<std::uint64_t> decimalOf(std::string_view text) {
    std::uint64_t value = 0;
    const char* const end = text.data() + text.size();
    const auto result = std::from_chars(text.data(), end, value);
    if (result.ec != std::errc() || result.ptr != end) return std::nullopt;
    return value;
}

std::optional<Number> pinOf(std::string_view text) {
    constexpr std::size_t kDigits = 8;
    const auto value = text.size() == kDigits ? decimalOf(text) : std::nullopt;
    return value ? std::optional(Number(*value)) : std::nullopt;
}

}  // namespace halvane::tool

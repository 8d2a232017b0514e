#include "tools/halvane/options/format_option.h"

#include <array>
#include <span>
#include <string>
#include <string_view>
#include <utility>

namespace halvane::tool {

const char* gTypedFormat = nullptr;

namespace {

constexpr auto kNames = std::to_array<std::string_view>({"text", "json", "jsonl", "plist"});
constexpr auto kListNames =
    std::to_array<std::string_view>({"table", "text", "json", "jsonl", "csv", "plist"});

UsageError noFormat(const char* typed, const char* known, std::span<const std::string_view> names) {
    const std::string problem = std::string("--format: '") + typed + "' is not " + known;
    return withSuggestion({problem}, "--format=", typed, names);
}

bool isOfLists(Format format) {
    return format == Format::Table || format == Format::CSV;
}

}  // namespace

Result<Format, UsageError> takeFormat() {
    const char* const typed = std::exchange(gTypedFormat, nullptr);
    if (typed == nullptr) return Format::Text;
    const auto format = formatNamed(typed);
    if (format && !isOfLists(*format)) return *format;
    return Unexpected(noFormat(typed, "text, json, jsonl or plist", kNames));
}

Result<std::optional<Format>, UsageError> takeListFormat() {
    const char* const typed = std::exchange(gTypedFormat, nullptr);
    if (typed == nullptr) return std::optional<Format>();
    if (const auto format = formatNamed(typed)) return format;
    return Unexpected(noFormat(typed, "table, text, json, jsonl, csv or plist", kListNames));
}

}  // namespace halvane::tool

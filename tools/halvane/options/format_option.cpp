#include "tools/halvane/options/format_option.h"

#include <string>
#include <utility>

namespace halvane::tool {

const char* gTypedFormat = nullptr;

namespace {

UsageError noFormat(const char* typed, const char* known) {
    return {std::string("--format: '") + typed + "' is not " + known};
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
    return Unexpected(noFormat(typed, "text, json, jsonl or plist"));
}

Result<std::optional<Format>, UsageError> takeListFormat() {
    const char* const typed = std::exchange(gTypedFormat, nullptr);
    if (typed == nullptr) return std::optional<Format>();
    if (const auto format = formatNamed(typed)) return format;
    return Unexpected(noFormat(typed, "table, text, json, jsonl, csv or plist"));
}

}  // namespace halvane::tool

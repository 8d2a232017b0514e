#include "tools/halvane/output/format.h"

#include <string>
#include <utility>

namespace halvane::tool {

namespace {

constexpr std::pair<std::string_view, Format> kFormats[] = {
    {"text", Format::Text},
    {"json", Format::JSON},
    {"jsonl", Format::JSONLines},
    {"plist", Format::PropertyList},
};

}  // namespace

const char* gTypedFormat = nullptr;

std::optional<Format> formatNamed(std::string_view name) {
    for (const auto& [known, format] : kFormats) {
        if (name == known) return format;
    }
    return std::nullopt;
}

Result<Format, UsageError> takeFormat() {
    const char* const typed = std::exchange(gTypedFormat, nullptr);
    if (typed == nullptr) return Format::Text;
    if (const auto format = formatNamed(typed)) return *format;
    return Unexpected(
        UsageError{std::string("--format: '") + typed + "' is not text, json, jsonl or plist"});
}

}  // namespace halvane::tool

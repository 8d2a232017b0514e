#include "tools/halvane/options/format_option.h"

#include <string>
#include <utility>

namespace halvane::tool {

const char* gTypedFormat = nullptr;

Result<Format, UsageError> takeFormat() {
    const char* const typed = std::exchange(gTypedFormat, nullptr);
    if (typed == nullptr) return Format::Text;
    if (const auto format = formatNamed(typed)) return *format;
    return Unexpected(
        UsageError{std::string("--format: '") + typed + "' is not text, json, jsonl or plist"});
}

}  // namespace halvane::tool

#include "tools/halvane/output/format.h"

#include <utility>

namespace halvane::tool {

namespace {

constexpr std::pair<std::string_view, Format> kFormats[] = {
    {"text", Format::Text},          {"json", Format::JSON},   {"jsonl", Format::JSONLines},
    {"plist", Format::PropertyList}, {"table", Format::Table}, {"csv", Format::CSV},
};

}  // namespace

std::optional<Format> formatNamed(std::string_view name) {
    for (const auto& [known, format] : kFormats) {
        if (name == known) return format;
    }
    return std::nullopt;
}

}  // namespace halvane::tool

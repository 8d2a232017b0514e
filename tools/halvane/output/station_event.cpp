#include "tools/halvane/output/station_event.h"

#include <cstddef>
#include <tuple>

#include "halvane/base/escaped_text.h"
#include "halvane/ie/fancy_formatting.h"

#include "tools/halvane/output/json_record.h"
#include "tools/halvane/output/json_writer.h"
#include "tools/halvane/output/property_table.h"

namespace halvane::tool {

template <>
inline constexpr auto kProperties<StationChange> = std::tuple{
    Property{"event", [](const StationChange& change) { return nameOf(change.kind); }},
    Property{"mac", [](const StationChange& change) { return Address{change.address.octets()}; }},
    Property{"interfaceName", &StationChange::interface},
};

namespace {

// Pads the text with blanks up to `width`.
std::string padded(std::string text, std::size_t width) {
    if (text.size() < width) text.resize(width, ' ');
    return text;
}

// The same as in the tables of lists.
std::string orDash(const std::string& text) {
    return text.empty() ? "-" : text;
}

std::string textOf(const StationChange& change) {
    constexpr std::size_t kEventWidth = 10;
    return padded(nameOf(change.kind), kEventWidth) + "  " +
           FancyFormatting::formattedMAC(change.address.buffer()) + "  " +
           orDash(escapedText(change.interface));
}

}  // namespace

std::string lineOf(const StationChange& change, Format format) {
    if (format == Format::Text) return textOf(change);
    JSONWriter writer;
    writeObject(writer, change);
    return std::string(writer.text());
}

}  // namespace halvane::tool

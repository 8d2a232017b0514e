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
inline constexpr auto kProperties<StationEvent> = std::tuple{
    Property{"event", [](const StationEvent& event) { return event.event; }},
    Property{"mac", [](const StationEvent& event) { return addressIn(event.mac); }},
    Property{"interfaceName", [](const StationEvent& event) -> auto& {return event.interfaceName;
}
}
,
}
;

namespace {

using Delegate = HalvaneXPCClientDelegate;

struct Kind {
    const char* name;
    Delegate::Call Delegate::*call;
};
constexpr Kind kKinds[] = {
    {"authorized", &Delegate::clientAuthorized_forInterface},
    {"joined", &Delegate::clientJoined_forInterface},
    {"kicked", &Delegate::clientKicked_forInterface},
    {"left", &Delegate::clientLeft_forInterface},
};

// What is short of `width` is filled with blanks.
std::string padded(std::string text, std::size_t width) {
    if (text.size() < width) text.resize(width, ' ');
    return text;
}

// As in the tables of lists.
std::string orDash(const std::string& text) {
    return text.empty() ? "-" : text;
}

std::string textOf(const StationEvent& event) {
    constexpr std::size_t kEventWidth = 10, kAddressWidth = 17;
    const std::string address = orDash(FancyFormatting::formattedMAC(event.mac));
    return padded(event.event, kEventWidth) + "  " + padded(address, kAddressWidth) + "  " +
           orDash(escapedText(event.interfaceName));
}

}  // namespace

std::shared_ptr<const Delegate> delegateFor(const std::function<void(const StationEvent&)>& take) {
    auto delegate = std::make_shared<Delegate>();
    for (const auto& [name, call] : kKinds) {
        (*delegate).*
            call = [take, kind = name](const ByteBuffer& mac, const std::string& interfaceName) {
            take({kind, mac, interfaceName});
        };
    }
    return delegate;
}

std::string lineOf(const StationEvent& event, Format format) {
    if (format == Format::Text) return textOf(event);
    JSONWriter writer;
    writeObject(writer, event);
    return std::string(writer.text());
}

}  // namespace halvane::tool

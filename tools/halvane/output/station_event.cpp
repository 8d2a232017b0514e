#include "tools/halvane/output/station_event.h"

#include <cstddef>

#include "halvane/ie/fancy_formatting.h"

#include "halvane/base/escaped_text.h"
#include "tools/halvane/output/json_value.h"
#include "tools/halvane/output/record_json.h"

namespace halvane::tool {

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
    JSON object = JSON::object();
    putMember(object, "event", JSON(event.event));
    putMember(object, "mac", addressOf(event.mac));
    putMember(object, "interfaceName", JSON(event.interfaceName));
    return object.dump();
}

}  // namespace halvane::tool

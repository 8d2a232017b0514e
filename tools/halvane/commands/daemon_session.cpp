#include "tools/halvane/commands/daemon_session.h"

#include <algorithm>
#include <vector>

#include "halvane/model/daemon_service.h"
#include "halvane/platform/plist/xml_property_list.h"

#include "tools/halvane/commands/command.h"
#include "tools/halvane/output/message.h"

namespace halvane::tool {

namespace {

using Kind = DaemonError::Kind;

// Hints for the user, line by line.
std::vector<std::string> hintsFor(Kind kind) {
    if (kind == Kind::Denied) return {"are you root or in the group netdev?"};
    if (kind != Kind::NoDaemon && kind != Kind::BusGone) return {};
    return {"is it running, is DBUS_SYSTEM_BUS_ADDRESS right, are you root or in the group netdev?",
            "'halvaned-sim --private -- halvane interfaces' shows a simulated one at work"};
}

std::string reasonOf(const DaemonError& error) {
    if (error.kind == Kind::Refused) {
        return "the daemon answered with status " + std::to_string(error.status);
    }
    if (error.kind == Kind::DaemonLeft) return "the daemon went away meanwhile";
    if (error.kind != Kind::NoDaemon && error.kind != Kind::BusGone) return error.text();
    return std::string("no answer from the Wi-Fi daemon, ") + kDaemonServiceName +
           " on the system bus";
}

}  // namespace

int failFor(const char* command, const DaemonError& error) {
    const std::string start = std::string(command) + ": ";
    complain(start + reasonOf(error));
    for (const std::string& hint : hintsFor(error.kind)) complain(start + hint);
    return kExitFailed;
}

bool isText(const std::string& text) {
    // A text on the bus may hold control characters, but a property list may not.
    const auto isControl = [](char character) {
        return static_cast<unsigned char>(character) < ' ';
    };
    std::string plain = text;
    std::ranges::replace_if(plain, isControl, ' ');
    return xmlPropertyList(plain).has_value();
}

bool isInterfaceName(const std::string& text) {
    return !text.empty() && isText(text);
}

}  // namespace halvane::tool

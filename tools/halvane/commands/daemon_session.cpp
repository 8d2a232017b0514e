#include "tools/halvane/commands/daemon_session.h"

#include <algorithm>

#include "halvane/platform/plist/xml_property_list.h"
#include "halvane/utils/log.h"

#include "tools/halvane/commands/command.h"
#include "tools/halvane/output/message.h"

namespace halvane::tool {

std::unique_ptr<HalvaneXPCClient> connectToDaemon() {
    LogControl("?^WiFiXPC$:level=off");
    return HalvaneXPCClient::init();
}

int failFor(const char* command, const Error& error) {
    const std::string start = std::string(command) + ": ";
    if (error != noAnswer()) {
        complain(start + "the daemon answered with status " + std::to_string(error.code));
        return kExitFailed;
    }
    complain(start + "no answer from the Wi-Fi daemon, " + kDaemonServiceName +
             " on the system bus");
    complain(start + "is it running, is DBUS_SYSTEM_BUS_ADDRESS right, " +
             "are you root or in the group netdev?");
    complain(start +
             "'halvaned-sim --private -- halvane interfaces' shows a simulated one at work");
    return kExitFailed;
}

int failForLoss(const char* command) {
    complain(std::string(command) + ": the daemon went away meanwhile");
    return kExitFailed;
}

bool DaemonInterfaces::mayHave(const std::string& interfaceName) const {
    return !isListed || std::ranges::any_of(list, [&](const HalvaneInterface& interface) {
        return interface.ifName() == interfaceName;
    });
}

std::optional<DaemonInterfaces> findDaemon(const char* command, HalvaneXPCClient& client) {
    std::optional<Error> error;
    DaemonInterfaces interfaces;
    interfaces.list = client.queryInterfaceList(&error);
    interfaces.isListed = !error;
    if (!error || *error != noAnswer()) return interfaces;
    failFor(command, *error);
    return std::nullopt;
}

bool isText(const std::string& text) {
    // A text of the bus may hold control characters, which property lists do not have.
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

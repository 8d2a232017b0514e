#include "tools/halvane/commands/daemon_session.h"

#include <algorithm>
#include <cstdlib>
#include <string>

#include "halvane/model/daemon_service.h"
#include "halvane/model/interface.h"
#include "halvane/platform/bus/libsystemd_internal.h"
#include "halvane/platform/plist/xml_property_list.h"

#include "tools/halvane/commands/bus_diagnosis.h"
#include "tools/halvane/commands/command.h"
#include "tools/halvane/output/message.h"

namespace halvane::tool {

namespace {

using Kind = DaemonError::Kind;

struct Explanation {
    std::string reason;
    std::string hint = {};  // in lines
};

// The name of the service is long: the sentence ends on the next line.
Explanation missingDaemon() {
    return {std::string("no Wi-Fi daemon: nobody owns ") + kDaemonServiceName + " on the",
            std::string("system bus\n") +
                (isDaemonInstalled()
                     ? "systemctl status halvaned"
                     : "to try without one: halvaned-sim --private -- halvane interfaces")};
}

Explanation missingBus() {
    if (libsystemd().problem) {
        return {std::string("the bus cannot be used: ") + libsystemd().problem,
                "install libsystemd"};
    }
    const bool isChosen = std::getenv("DBUS_SYSTEM_BUS_ADDRESS") != nullptr;
    return {"no system bus: " + unreachableReason(systemBusAddressOf()),
            isChosen ? "is DBUS_SYSTEM_BUS_ADDRESS right?" : "systemctl status dbus"};
}

Explanation explanationOf(const DaemonError& error) {
    switch (error.kind) {
        case Kind::NoDaemon:
            return missingDaemon();
        case Kind::BusGone:
            return missingBus();
        case Kind::Denied:
            return {"the system bus does not let you talk to the Wi-Fi daemon",
                    "be root, or in the group netdev: sudo usermod -aG netdev $USER"};
        case Kind::DaemonLeft:
            return {"the Wi-Fi daemon went away while it was asked"};
        case Kind::Refused:
            return {"the daemon answered with status " + std::to_string(error.status)};
        default:
            return {error.text()};
    }
}

// "there is no interface 'wlan7'; there are: wlan0 (AP), wlan1 (STA)". Empty if the daemon has the
// interface, or does not tell which there are.
std::string missingInterface(DaemonClient& daemon, const std::string& name) {
    const auto interfaces = daemon.interfaces();
    if (!interfaces) return {};
    std::string known;
    for (const HalvaneInterface& interface : *interfaces) {
        if (interface.ifName() == name) return {};
        known.append(known.empty() ? "" : ", ").append(interface.ifName().value_or("-"));
        const auto& role = interface.ifRole();
        if (role && !role->empty()) known += " (" + *role + ")";
    }
    return "there is no interface '" + name + "'" +
           (known.empty() ? ", nor any other" : "; there are: " + known);
}

}  // namespace

int failFor(const char* command, const DaemonError& error) {
    const Explanation explanation = explanationOf(error);
    complain(std::string(command) + ": " + explanation.reason, explanation.hint);
    return kExitFailed;
}

int failFor(const char* command, const DaemonError& error, DaemonClient& daemon,
            const std::string& interface) {
    if (error.kind != Kind::Refused) return failFor(command, error);
    complain(std::string(command) + ": " + explanationOf(error).reason,
             missingInterface(daemon, interface));
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

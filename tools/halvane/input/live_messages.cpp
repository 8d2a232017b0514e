#include "tools/halvane/input/live_messages.h"

#include "tools/halvane/input/link_type_name.h"

namespace halvane::tool {

namespace {

using Interfaces = std::span<const WirelessInterface>;
using Lines = std::vector<std::string>;

Lines monitorAdvice(const std::string& name) {
    return {"sudo ip link set " + name + " down && sudo iw dev " + name + " set type monitor &&",
            "sudo ip link set " + name + " up", "or, without monitor mode: halvane scan " + name};
}

}  // namespace

std::string headline(const LiveFault& fault) {
    return headline(fault, {});
}

std::string headline(const LiveFault& fault, Interfaces interfaces) {
    const std::string start = fault.interface + ": ";
    switch (fault.problem) {
        case LiveProblem::NoSuchInterface:
            return "no interface '" + fault.interface + "'";
        case LiveProblem::NotPermitted:
            return start + "not permitted to capture";
        case LiveProblem::NotMonitor: {
            const auto* const interface = findInterface(interfaces, fault.interface);
            if (!interface) return start + notWiFiText(fault.linkType);
            return start + "is in " + modeName(interface->mode) +
                   " mode and hears its own network alone";
        }
        case LiveProblem::Down:
            return start + "is down";
        case LiveProblem::WentAway:
            return start + "went away while it was listened to";
        case LiveProblem::LeftMonitor:
            return start + "left monitor mode while it was listened to";
        case LiveProblem::Other:
            break;
    }
    return start + "cannot be listened to: " + fault.text;
}

Lines advice(const LiveFault& fault, Interfaces interfaces, const std::string& program) {
    const std::string& name = fault.interface;
    switch (fault.problem) {
        case LiveProblem::NoSuchInterface:
            return {thereAre(interfaces)};
        case LiveProblem::NotPermitted:
            return {"sudo halvane watch " + name,
                    "or once and for all: sudo setcap cap_net_raw,cap_net_admin=ep " + program};
        case LiveProblem::NotMonitor:
            if (!findInterface(interfaces, name)) return {thereAre(interfaces)};
            return monitorAdvice(name);
        case LiveProblem::LeftMonitor:
            return monitorAdvice(name);
        case LiveProblem::Down:
            return {"sudo ip link set " + name + " up"};
        case LiveProblem::WentAway:
        case LiveProblem::Other:
            break;
    }
    return {};
}

}  // namespace halvane::tool

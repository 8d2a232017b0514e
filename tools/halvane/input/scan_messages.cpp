#include "tools/halvane/input/scan_messages.h"

namespace halvane::tool {

namespace {

// What is wrong, without the interface.
std::string problemText(const ScanFault& fault) {
    switch (fault.problem) {
        case ScanProblem::NoNl80211:
            return "this kernel has no Wi-Fi (nl80211)";
        case ScanProblem::NoWirelessInterface:
            return "this machine has no Wi-Fi interface";
        case ScanProblem::NoSuchInterface:
            return "no interface '" + fault.interface + "'";
        case ScanProblem::NotWireless:
            return "is no Wi-Fi interface";
        case ScanProblem::NotPermitted:
            return "not permitted to scan";
        case ScanProblem::Busy:
            return "another scan is under way";
        case ScanProblem::Down:
            return "is down";
        case ScanProblem::NotSupported:
            return "cannot scan in its mode";
        case ScanProblem::Aborted:
            return "the scan was broken off";
        case ScanProblem::TimedOut:
            return "the scan did not end in time";
        case ScanProblem::Interrupted:
            return "the scan was interrupted";
        case ScanProblem::Other:
            break;
    }
    return "cannot scan: " + fault.text;
}

// Whether the text stands without the name of the interface before it.
bool namesNoInterface(ScanProblem problem) {
    return problem == ScanProblem::NoNl80211 || problem == ScanProblem::NoWirelessInterface ||
           problem == ScanProblem::NoSuchInterface;
}

}  // namespace

std::string headline(const ScanFault& fault) {
    std::string text = problemText(fault);
    if (fault.interface.empty() || namesNoInterface(fault.problem)) return text;
    return fault.interface + ": " + text;
}

std::vector<std::string> advice(const ScanFault& fault,
                                std::span<const WirelessInterface> interfaces) {
    const std::string& name = fault.interface;
    switch (fault.problem) {
        case ScanProblem::NoNl80211:
        case ScanProblem::NoWirelessInterface:
            return {"captures of other machines: halvane decode FILE"};
        case ScanProblem::NoSuchInterface:
        case ScanProblem::NotWireless:
            return {thereAre(interfaces)};
        case ScanProblem::NotPermitted:
            return {"sudo halvane scan --trigger " + name,
                    "or, the list that the kernel has: halvane scan " + name};
        case ScanProblem::Busy:
        case ScanProblem::Aborted:
        case ScanProblem::TimedOut:
            return {"the list that the kernel has: halvane scan " + name};
        case ScanProblem::Down:
            return {"sudo ip link set " + name + " up"};
        case ScanProblem::NotSupported:
            if (const auto* const interface = findInterface(interfaces, name)) {
                return {"it is in " + modeName(interface->mode) + " mode: sudo iw dev " + name +
                        " set type managed"};
            }
            return {};
        case ScanProblem::Interrupted:
        case ScanProblem::Other:
            break;
    }
    return {};
}

}  // namespace halvane::tool

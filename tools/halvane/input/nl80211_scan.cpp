#include "tools/halvane/input/nl80211_scan.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstdint>
#include <linux/nl80211.h>
#include <system_error>
#include <utility>

#include "tools/halvane/input/interface_facts.h"
#include "tools/halvane/input/netlink_attributes.h"

namespace halvane::tool {

namespace {

// A list that changes all the time is taken as it is.
constexpr int kMostAttempts = 4;

ScanProblem problemOf(int error) {
    switch (error) {
        case EPERM:
        case EACCES:
            return ScanProblem::NotPermitted;
        case EBUSY:
            return ScanProblem::Busy;
        case ENETDOWN:
            return ScanProblem::Down;
        case ENODEV:
            return ScanProblem::NoSuchInterface;
        case EOPNOTSUPP:
            return ScanProblem::NotSupported;
        default:
            return ScanProblem::Other;
    }
}

Nl80211Request requestFor(std::uint8_t command, const WirelessInterface& interface) {
    Nl80211Request request{.command = command};
    request.attributes.add(NL80211_ATTR_IFINDEX, std::uint32_t{interface.index});
    return request;
}

// The empty SSID stands for every network: they are asked, and those heard are listed.
Nl80211Request triggerRequest(const WirelessInterface& interface) {
    NetlinkAttributeList ssids;
    ssids.add(1, std::span<const std::uint8_t>());
    Nl80211Request request = requestFor(NL80211_CMD_TRIGGER_SCAN, interface);
    request.attributes.add(NL80211_ATTR_SCAN_SSIDS, ssids);
    return request;
}

ScanList listOf(const Nl80211Answer& answer) {
    ScanList list;
    for (const auto& message : answer.messages) {
        auto network = readScannedNetwork(message);
        if (!network) {
            if (list.unreadable++ == 0) list.fault = network.error();
        } else if (*network) {
            list.networks.push_back(std::move(**network));
        }
    }
    return list;
}

}  // namespace

ScanFault scanFaultOf(const Nl80211Fault& fault, const std::string& interface) {
    switch (fault.kind) {
        case Nl80211Fault::Kind::NoFamily:
            return {.problem = ScanProblem::NoNl80211, .interface = interface};
        case Nl80211Fault::Kind::Lost:
            return {.interface = interface, .text = fault.text};
        case Nl80211Fault::Kind::Refused:
            break;
    }
    const ScanProblem problem = problemOf(fault.error);
    return {.problem = problem,
            .interface = interface,
            .text = problem == ScanProblem::Other ? std::generic_category().message(fault.error)
                                                  : std::string()};
}

Result<WirelessInterface, ScanFault> chooseScanInterface(
    std::span<const WirelessInterface> interfaces, const std::optional<std::string>& name) {
    if (name) {
        if (const auto* const found = findInterface(interfaces, *name)) return *found;
        const bool isThere = interfaceFacts(*name).has_value();
        return Unexpected(
            ScanFault{.problem = isThere ? ScanProblem::NotWireless : ScanProblem::NoSuchInterface,
                      .interface = *name});
    }
    if (interfaces.empty()) {
        return Unexpected(ScanFault{.problem = ScanProblem::NoWirelessInterface});
    }
    const auto managed =
        std::ranges::find(interfaces, InterfaceMode::Managed, &WirelessInterface::mode);
    return managed != interfaces.end() ? *managed : interfaces.front();
}

Result<ScanList, ScanFault> scanList(Nl80211Channel& channel, const WirelessInterface& interface) {
    Nl80211Request request = requestFor(NL80211_CMD_GET_SCAN, interface);
    request.isList = true;
    for (int attempt = 1;; ++attempt) {
        const auto answer = channel.ask(request);
        if (!answer) return Unexpected(scanFaultOf(answer.error(), interface.name));
        if (!answer->isInterrupted || attempt == kMostAttempts) return listOf(*answer);
    }
}

std::optional<ScanFault> triggerScan(Nl80211Channel& channel, const WirelessInterface& interface,
                                     Nl80211Channel::Clock::time_point deadline, int interrupt) {
    // Before the scan, so that its end is not missed.
    if (const auto fault = channel.subscribe(NL80211_MULTICAST_GROUP_SCAN)) {
        return scanFaultOf(*fault, interface.name);
    }
    const auto answer = channel.ask(triggerRequest(interface));
    if (!answer) return scanFaultOf(answer.error(), interface.name);
    for (;;) {
        const auto message = channel.nextEvent(deadline, interrupt);
        if (!message) return scanFaultOf(message.error(), interface.name);
        if (!*message) break;
        const auto event = readScanEvent(**message, interface.index);
        if (!event || !*event) continue;
        if (**event == ScanEvent::Done) return std::nullopt;
        return ScanFault{.problem = ScanProblem::Aborted, .interface = interface.name};
    }
    const bool isLate = Nl80211Channel::Clock::now() >= deadline;
    return ScanFault{.problem = isLate ? ScanProblem::TimedOut : ScanProblem::Interrupted,
                     .interface = interface.name};
}

}  // namespace halvane::tool

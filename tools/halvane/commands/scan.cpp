#include "tools/halvane/commands/scan.h"

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <ctime>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "halvane/base/mac_address.h"
#include "halvane/capture/beacon_frame.h"
#include "halvane/capture/captured_frame.h"
#include "halvane/capture/frame_record.h"

#include "tools/halvane/commands/command.h"
#include "tools/halvane/commands/list_output.h"
#include "tools/halvane/input/nl80211_interfaces.h"
#include "tools/halvane/input/nl80211_message.h"
#include "tools/halvane/input/nl80211_scan.h"
#include "tools/halvane/input/scan_messages.h"
#include "tools/halvane/input/scanned_frames.h"
#include "tools/halvane/input/wireless_interface.h"
#include "tools/halvane/networks/network_columns.h"
#include "tools/halvane/output/age_text.h"
#include "tools/halvane/output/format.h"
#include "tools/halvane/output/message.h"
#include "tools/halvane/output/record_writer.h"
#include "tools/halvane/survey/cut_elements.h"
#include "tools/halvane/survey/network.h"
#include "tools/halvane/survey/network_moment.h"
#include "tools/halvane/survey/survey.h"

namespace halvane::tool {

namespace {

// All channels of three bands, also those on which an interface only listens.
constexpr std::chrono::seconds kLongestScan{30};

int fail(const ScanFault& fault, std::span<const WirelessInterface> interfaces) {
    complain("scan: " + headline(fault), hintOf(advice(fault, interfaces)));
    return kExitFailed;
}

// The networks of the kernel's list. The kernel has an entry for each name and channel that an
// address had.
class ScannedSurvey {
  public:
    ScannedSurvey(const ScanList& list, std::size_t most, std::chrono::nanoseconds now)
        : survey_(most) {
        for (const ScannedNetwork& network : list.networks) {
            for (const capture::CapturedFrame& frame : framesOf(network)) add(frame);
            note(network, now);
        }
    }

    const Survey& survey() const { return survey_; }

    // They borrow from this object.
    std::vector<Network> networks() const {
        auto networks = survey_.networks();
        const NetworkMoment* sender = nullptr;
        for (Network& network : networks) {
            const auto own = moments_.find(network.bssid);
            if (network.heard != nullptr && own != moments_.end()) sender = &own->second;
            network.moment = sender;
        }
        return networks;
    }

    // Of the network that was not heard for the longest time.
    std::optional<std::int64_t> greatestAge() const {
        std::optional<std::int64_t> greatest;
        for (const auto& [address, moment] : moments_) {
            if (moment.age) greatest = std::max(greatest.value_or(0), *moment.age);
        }
        return greatest;
    }

  private:
    void add(const capture::CapturedFrame& frame) {
        const capture::BeaconFrame& beacon = *frame.beacon();
        survey_.add(capture::sightingOf(beacon, frame.radio), {.subtype = beacon.subtype,
                                                               .signal = frame.radio.signalDBm,
                                                               .isCut = isCutFrame(beacon)});
    }

    void note(const ScannedNetwork& network, std::chrono::nanoseconds now) {
        NetworkMoment& moment = moments_[network.bssid];
        if (network.status == ScannedStatus::Associated ||
            network.status == ScannedStatus::JoinedAdHoc) {
            moment.state = NetworkMoment::State::InUse;
        }
        const auto age = network.age(now);
        if (!age) return;
        const std::int64_t own = std::chrono::nanoseconds(*age).count();
        moment.age = std::min(moment.age.value_or(own), own);
    }

    Survey survey_;
    std::map<MacAddress, NetworkMoment> moments_;
};

// "12 s", "3 m".
std::string spacedAge(std::int64_t nanoseconds) {
    std::string text = ageText(nanoseconds);
    return text.insert(text.size() - 1, " ");
}

std::string listLine(const std::string& interface, const ScannedSurvey& scanned, bool isTriggered) {
    std::string line = interface;
    if (isTriggered) return line + ", fresh list";
    const auto age = scanned.greatestAge();
    if (age) line += ", list of " + spacedAge(*age) + " ago";
    return line + "; 'sudo halvane scan --trigger' takes a fresh one";
}

void printRecords(std::span<const Network> networks, Format format) {
    const auto writer = RecordWriter::create(format, stdout, listedMaker);
    for (const Network& network : networks) {
        // The record of the sender tells of the others.
        if (network.heard == nullptr) continue;
        writer->writeScanned(network.heard->sighting(), *network.moment);
    }
    writer->finish();
}

void print(const ScannedSurvey& scanned, const ScanOptions& options, const std::string& interface) {
    auto all = scanned.networks();
    const CellSurroundings surroundings = cellSurroundings(options.list, {});
    const auto networks = listed(all, options.list, options.format, surroundings);
    if (options.isFindingsList) {
        printFindings(networks, options.list);
    } else if (isList(options.format)) {
        printList(networks, options.list, options.format, surroundings);
    } else {
        printRecords(networks, options.format);
    }
    // The summary is the line above the prompt.
    std::fflush(stdout);
    if (options.list.isQuiet) return;
    auto lines = summaryOfNetworks(scanned.survey(), options.list, all, networks);
    lines.push_back(listLine(interface, scanned, options.isTriggered));
    printSummary(lines, options.list);
}

void complainOfUnreadable(const ScanList& list, const std::string& interface) {
    if (list.unreadable == 0) return;
    const std::string subject =
        list.unreadable == 1 ? "1 network" : std::to_string(list.unreadable) + " networks";
    complain("scan: " + interface + ": " + subject + " of the list cannot be read: " + list.fault);
}

std::chrono::nanoseconds bootTime() {
    timespec now{};
    ::clock_gettime(CLOCK_BOOTTIME, &now);
    return std::chrono::seconds(now.tv_sec) + std::chrono::nanoseconds(now.tv_nsec);
}

}  // namespace

int scan(Nl80211Channel& channel, const ScanOptions& options, std::chrono::nanoseconds (*now)()) {
    const auto interfaces = interfacesOf(channel);
    if (!interfaces) return fail(scanFaultOf(interfaces.error(), ""), {});
    const auto interface = chooseScanInterface(*interfaces, options.interface);
    if (!interface) return fail(interface.error(), *interfaces);
    if (options.isTriggered) {
        const auto deadline = Nl80211Channel::Clock::now() + kLongestScan;
        if (const auto fault = triggerScan(channel, *interface, deadline)) {
            return fail(*fault, *interfaces);
        }
    }
    const auto list = scanList(channel, *interface);
    if (!list) return fail(list.error(), *interfaces);
    print(ScannedSurvey(*list, options.list.mostNetworks, now()), options, interface->name);
    complainOfUnreadable(*list, interface->name);
    return kExitDone;
}

int scanCommand() {
    const auto options = takeScanOptions();
    if (!options) return refuse("scan", options.error());
    if (options->list.isColumnsHelp) {
        printColumnsHelp(ListKind::Scan);
        return kExitDone;
    }
    const auto channel = Nl80211Channel::open();
    if (!channel) return fail(scanFaultOf(channel.error(), ""), {});
    return scan(**channel, *options, bootTime);
}

}  // namespace halvane::tool

// What a survey amounts to, in at most three lines.
//
// Pure functions; any thread may call them.
#ifndef TOOLS_HALVANE_NETWORKS_NETWORK_SUMMARY_H
#define TOOLS_HALVANE_NETWORKS_NETWORK_SUMMARY_H

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "halvane/air/finding.h"

#include "tools/halvane/input/capture_reader.h"
#include "tools/halvane/networks/group_table.h"
#include "tools/halvane/networks/network_filter.h"
#include "tools/halvane/survey/network.h"

namespace halvane::tool {

// "18 networks: 16 on 2.4 GHz, 1 on 5 GHz, 1 on no known band; 1 hidden". `all` counts the networks
// before a filter: with one it is "6 of 74 networks: ...". Networks that had to go are told at the
// end. With a grouping it begins with "74 networks of 22 names: ..." or "33 radios with 74
// networks:
// ...", which counts the radios of each band.
struct NetworkCounts {
    std::span<const Network> networks;
    Grouping grouping = Grouping::None;
    std::optional<std::size_t> all{};
    std::uint64_t letGo = 0;
    std::size_t most = 0;
};
std::string networksLine(const NetworkCounts& counts);

// "3 errors, 10 warnings, 11 notes (--findings)"; empty if there are none. If the networks have no
// finding of the severity that was asked for, it begins with that: "no errors found; 10 warnings,
// 11 notes (--findings)".
std::string findingsLine(std::span<const Network> networks,
                         std::optional<air::Severity> asked = std::nullopt);

// "1934 frames in 5.8 s: 130 beacons, 20 probe responses, 1783 others, 1 damaged; 2 are cut". The
// kinds add up to the frames. A beacon or probe response that is cut counts as what it is.
std::string framesLine(const CaptureSummary& frames, std::uint64_t cutFrames,
                       std::optional<std::int64_t> nanoseconds);

// "no network of 74 passes the filter", and what each option alone lets through. An SSID or a BSSID
// that is not there is followed by the nearest one that is.
std::vector<std::string> emptyFilterLines(const NetworkFilter& filter,
                                          std::span<const Network> networks);

// The line, broken behind a comma or a semicolon where it is wider than `width`. What follows is
// indented by two blanks.
// REQUIRES: the line is ASCII.
std::string brokenLine(const std::string& line, std::optional<std::size_t> width);

}  // namespace halvane::tool

#endif

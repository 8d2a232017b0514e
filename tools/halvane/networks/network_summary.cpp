#include "tools/halvane/networks/network_summary.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <map>
#include <string_view>
#include <utility>

#include "halvane/air/channel.h"
#include "halvane/air/finding.h"
#include "halvane/capture/beacon_frame.h"

#include "tools/halvane/networks/filter_suggestion.h"
#include "tools/halvane/networks/network_groups.h"

namespace halvane::tool {

namespace {

// "1 network", "2 networks".
std::string counted(std::uint64_t count, std::string_view one, std::string_view many) {
    return std::to_string(count) + ' ' + std::string(count == 1 ? one : many);
}

// Parts with a separator between them.
class Enumeration {
  public:
    void add(std::uint64_t count, std::string_view one, std::string_view many) {
        if (count == 0) return;
        if (!text_.empty()) text_ += ", ";
        text_ += counted(count, one, many);
    }
    const std::string& text() const { return text_; }

  private:
    std::string text_;
};

std::string bandText(air::Band band) {
    const std::string name(air::bandName(band));
    return band == air::Band::SubOneGhz ? "on " + name : "on " + name + " GHz";
}

// How many networks there are on each band; with radios, how many of these.
std::string bandsText(const NetworkCounts& networks) {
    std::map<air::Band, std::uint64_t> counts;
    std::uint64_t unknown = 0;
    const auto note = [&](const Network& network) {
        const auto& band = network.profile.channel.band;
        ++(band ? counts[band->value] : unknown);
    };
    if (networks.grouping == Grouping::Radio) {
        for (const auto& radio : groupsByRadio(networks.networks)) note(*radio.front());
    } else {
        std::ranges::for_each(networks.networks, note);
    }
    Enumeration text;
    for (const auto& [band, count] : counts) text.add(count, bandText(band), bandText(band));
    text.add(unknown, "on no known band", "on no known band");
    return text.text();
}

std::uint64_t skippedFor(const CaptureSummary& frames, capture::SkipReason reason) {
    return frames.skipped[static_cast<std::size_t>(reason)];
}

}  // namespace

namespace {

// "6 of 74 networks", "33 radios with 74 networks", "74 networks of 22 names".
std::string subjectOf(const NetworkCounts& counts) {
    const std::size_t shown = counts.networks.size();
    const std::size_t all = counts.all.value_or(shown);
    std::string text = counts.all ? std::to_string(shown) + " of " : "";
    text += all == 0 ? "no networks" : counted(all, "network", "networks");
    if (shown == 0) return text;
    if (counts.grouping == Grouping::Radio) {
        return counted(groupsByRadio(counts.networks).size(), "radio", "radios") + " with " + text;
    }
    if (counts.grouping == Grouping::Name) {
        const std::size_t names = nameCount(counts.networks);
        if (names > 0) text += " of " + counted(names, "name", "names");
    }
    return text;
}

}  // namespace

std::string networksLine(const NetworkCounts& counts) {
    std::string line = subjectOf(counts);
    const std::string bands = bandsText(counts);
    if (!bands.empty()) line += ": " + bands;
    const auto hidden = std::ranges::count_if(counts.networks, isHidden);
    if (hidden > 0) line += "; " + std::to_string(hidden) + " hidden";
    if (counts.letGo == 0) return line;
    return line + "; " + std::to_string(counts.letGo) +
           " let go (--max-networks=" + std::to_string(counts.most) + ')';
}

namespace {

using SeverityCounts = std::array<std::uint64_t, 3>;  // by severity

constexpr std::string_view kNoFindings[] = {"no findings", "no errors or warnings found",
                                            "no errors found"};  // by the least severity

bool hasNone(const SeverityCounts& counts, air::Severity least) {
    return std::all_of(counts.begin() + static_cast<std::ptrdiff_t>(least), counts.end(),
                       [](std::uint64_t count) { return count == 0; });
}

}  // namespace

std::string findingsLine(std::span<const Network> networks, std::optional<air::Severity> asked) {
    SeverityCounts counts{};
    for (const Network& network : networks) {
        for (const air::Finding& finding : network.profile.findings) {
            ++counts[static_cast<std::size_t>(finding.info().severity)];
        }
    }
    Enumeration text;
    text.add(counts[static_cast<std::size_t>(air::Severity::Error)], "error", "errors");
    text.add(counts[static_cast<std::size_t>(air::Severity::Warning)], "warning", "warnings");
    text.add(counts[static_cast<std::size_t>(air::Severity::Note)], "note", "notes");
    std::string told = text.text().empty() ? "" : text.text() + " (--findings)";
    if (!asked || networks.empty() || !hasNone(counts, *asked)) return told;
    const std::string none(kNoFindings[static_cast<std::size_t>(*asked)]);
    return told.empty() ? none : none + "; " + told;
}

std::string framesLine(const CaptureSummary& frames, std::uint64_t cutFrames,
                       std::optional<std::int64_t> nanoseconds) {
    using capture::SkipReason;
    constexpr double kSecond = 1e9;
    std::string line = counted(frames.frames, "frame", "frames");
    if (nanoseconds) {
        std::array<char, 32> seconds{};
        std::snprintf(seconds.data(), seconds.size(), " in %.1f s",
                      static_cast<double>(*nanoseconds) / kSecond);
        line += seconds.data();
    }
    Enumeration kinds;
    kinds.add(frames.beacons, "beacon", "beacons");
    kinds.add(frames.probeResponses, "probe response", "probe responses");
    kinds.add(skippedFor(frames, SkipReason::OtherFrame) +
                  skippedFor(frames, SkipReason::Fragment) +
                  skippedFor(frames, SkipReason::Encrypted),
              "other", "others");
    kinds.add(skippedFor(frames, SkipReason::Short) + skippedFor(frames, SkipReason::Damaged) +
                  skippedFor(frames, SkipReason::MalformedHeader),
              "damaged", "damaged");
    if (!kinds.text().empty()) line += ": " + kinds.text();
    return cutFrames == 0 ? line : line + "; " + counted(cutFrames, "is cut", "are cut");
}

std::vector<std::string> emptyFilterLines(const NetworkFilter& filter,
                                          std::span<const Network> networks) {
    std::vector<std::string> lines = {"no network of " + std::to_string(networks.size()) +
                                      " passes the filter"};
    const auto shares = filter.sharesOf(networks);
    std::size_t widest = 0;
    for (const auto& share : shares) widest = std::max(widest, share.typed.size());
    for (const auto& share : shares) {
        const std::string count = share.count == 0 ? "none" : std::to_string(share.count);
        std::string line = "  " + share.typed + std::string(widest - share.typed.size(), ' ') +
                           " alone lets " + count + " through";
        const std::string meant =
            share.count == 0 ? filterSuggestion(share, networks) : std::string();
        if (!meant.empty()) line.append("; ").append(meant);
        lines.push_back(std::move(line));
    }
    return lines;
}

std::string brokenLine(const std::string& line, std::optional<std::size_t> width) {
    constexpr std::string_view kIndent = "  ";
    std::string text;
    std::string_view rest = line;
    std::string_view indent;
    while (width && indent.size() + rest.size() > *width) {
        const std::size_t room = *width - std::min(*width, indent.size());
        std::size_t end = rest.substr(0, room).find_last_of(",;");
        if (end == std::string_view::npos) end = rest.find_first_of(",;");
        if (end == std::string_view::npos || end + 2 >= rest.size()) break;
        text.append(indent).append(rest.substr(0, end + 1)).append("\n");
        rest.remove_prefix(end + 2);  // the sign and the blank behind it
        indent = kIndent;
    }
    return text.append(indent).append(rest);
}

}  // namespace halvane::tool

// What the page tells of: networks, the radios that send them, and captures.
//
// Plain values. Threads: as for a standard container.
#ifndef TOOLS_HALVANE_REPORT_REPORT_DATA_H
#define TOOLS_HALVANE_REPORT_REPORT_DATA_H

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "halvane/air/channel.h"
#include "halvane/air/security.h"

#include "tools/halvane/input/maker_list.h"
#include "tools/halvane/networks/survey_reader.h"
#include "tools/halvane/output/shown_text.h"
#include "tools/halvane/survey/network.h"

namespace halvane::tool {

// Which networks have the octets of their elements on the page.
enum class ReportDetails {
    Auto,  // all of a small survey, as Own of a large one, within ReportLimits
    All,
    Own,  // own networks, and those with errors or warnings
    None,
};

struct ReportOptions {
    std::string title{};  // empty: "N networks in M captures"
    // Whether a network is the reader's own; empty if nothing is known of that.
    std::function<bool(const Network& network)> isOwn{};
    std::vector<std::string> own{};  // how own networks were typed
    ReportDetails details = ReportDetails::Auto;
    const MakerList* makers = nullptr;  // null: none
};

// The bounds of the page. What is beyond is counted, and a line says so.
struct ReportLimits {
    std::size_t rows = 1500;            // networks in the table
    std::size_t rowOctets = 1'000'000;  // of elements of these networks, which details explain
    std::size_t briefRows = 6000;       // further networks, a line each
    std::size_t withOctets = 500;       // networks whose elements have octets, and how many of
    std::size_t octets = 500'000;       // them, unless others are asked for
    std::size_t shapes = 300;           // radios in a chart
    std::size_t untoldRows = 12;        // rows of radios without a signal below a chart
    std::size_t pictures = 48;          // of the signal over time, for each stretch of time
    std::size_t morePictures = 152;     // further ones, closed
    std::size_t stretches = 24;         // of time
    std::size_t findingNames = 200;     // networks of one finding
};

struct ReportNetwork {
    // Where the network stands on the page.
    enum class Place { Row, BriefRow, Nowhere };

    Network network{};
    std::string id{};  // of its element
    ShownText name{};
    bool isOwn = false;
    bool isNameless = false;
    std::optional<int> signal{};  // median, dBm
    std::size_t radio = 0;        // index
    Place place = Place::Row;
    bool hasOctets = false;  // of its elements, in its row
};

// One access point's channel.
struct Radio {
    std::vector<std::size_t> networks{};  // indexes, the strongest first; at least one
    bool isOwn = false;                   // sends a network of the reader's own
    std::optional<int> signal{};          // of the strongest network
};

struct ReportData {
    std::vector<ReportNetwork> networks{};  // the strongest first; own ones have rows before others
    std::vector<Radio> radios{};            // the strongest first
    bool hasOwn = false;                    // own networks are told from others
    std::vector<std::string> files{};
    std::span<const SurveyedCapture> captures{};  // of the files
    std::size_t all = 0;                          // networks before a filter
    std::uint64_t letGo = 0;                      // networks that were forgotten
    ReportOptions options{};
    ReportLimits limits{};

    // The networks there.
    std::size_t countOf(ReportNetwork::Place place) const;

    const ReportNetwork& strongestOf(const Radio& radio) const {
        return networks[radio.networks.front()];
    }
    const air::ChannelUse& channelOf(const Radio& radio) const {
        return strongestOf(radio).network.profile.channel;
    }
    std::optional<air::Band> bandOf(const Radio& radio) const;

    // "AP#45" or the strongest network's name, without what stands for further names.
    ShownText nameOf(const Radio& radio) const;
};

struct ReportSource {
    std::vector<Network> networks{};  // they borrow from their survey
    std::vector<std::string> files{};
    std::span<const SurveyedCapture> captures{};
    std::size_t all = 0;
    std::uint64_t letGo = 0;
};

ReportData reportData(ReportSource source, ReportOptions options, ReportLimits limits = {});

// "own" for the reader's own networks and for all where nothing tells them apart, otherwise "oth".
enum class Tint { Own, Other };
inline Tint tintOf(const ReportData& data, bool isOwn) {
    return isOwn || !data.hasOwn ? Tint::Own : Tint::Other;
}

// The place of a kind of security between the weakest, 0, and the strongest.
int rankOf(air::Security security);

}  // namespace halvane::tool

#endif

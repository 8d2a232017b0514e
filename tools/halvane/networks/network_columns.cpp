#include "tools/halvane/networks/network_columns.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "halvane/air/channel.h"
#include "halvane/air/channel_use.h"
#include "halvane/air/feature.h"
#include "halvane/air/finding.h"
#include "halvane/air/max_rates.h"
#include "halvane/air/rule.h"
#include "halvane/air/security.h"
#include "halvane/ie/fancy_formatting.h"

#include "tools/halvane/networks/generation_label.h"
#include "tools/halvane/networks/security_label.h"
#include "tools/halvane/output/age_text.h"
#include "tools/halvane/output/network_name.h"
#include "tools/halvane/output/rounded.h"
#include "tools/halvane/output/signal_bar.h"
#include "tools/halvane/output/text_table.h"
#include "tools/halvane/output/theme.h"
#include "tools/halvane/output/time_text.h"
#include "tools/halvane/survey/network_moment.h"
#include "tools/halvane/survey/network_statistics.h"
#include "tools/halvane/survey/saturated.h"

namespace halvane::tool {

namespace {

using Around = CellSurroundings;

FittedCell own(std::string_view text, Meaning meaning = Meaning::Plain) {
    return {ownText(text, {}), meaning};
}

constexpr std::string_view kUntold = "-";

// --- Values ---

PlainValue number(double value) {
    return {.number = value};
}

template <typename T>
PlainValue numberIf(const std::optional<T>& value) {
    return value ? number(static_cast<double>(*value)) : PlainValue();
}

PlainValue text(std::string_view value) {
    return {.text = std::string(value)};
}

// --- The parts of a network ---

std::string addressText(const Network& network) {
    return FancyFormatting::formattedMAC(network.bssid.buffer());
}

// Mbit/s of the latest generation, or of the rates from before there were any.
std::optional<double> rateOf(const Network& network) {
    if (network.profile.generation.rule == air::Rule::FrameCut) return std::nullopt;
    if (const auto* const rate = network.profile.rates.latest()) return rate->value.mbps();
    if (network.profile.isCut) return std::nullopt;
    const int legacy = network.details.highestRate;
    return legacy > 0 ? std::optional(legacy / 2.0) : std::nullopt;
}

bool hasError(const Network& network) {
    const auto& findings = network.profile.findings;
    return std::ranges::any_of(findings, [](const air::Finding& finding) {
        return finding.info().severity == air::Severity::Error;
    });
}

bool isIn(const Network& network, NetworkMoment::State state) {
    return network.moment != nullptr && network.moment->state == state;
}

// Nanoseconds from the last frame of the network to the end of its capture, or to now.
std::optional<std::int64_t> silenceOf(const Network& network, const Around& around) {
    if (network.moment != nullptr) return network.moment->age;
    const NetworkStatistics& heard = *network.statistics;
    if (!heard.lastTimeInCapture || heard.lastCapture >= around.captureEnds.size()) return {};
    const auto& end = around.captureEnds[heard.lastCapture];
    if (!end) return std::nullopt;
    return saturatedDifference(*end, *heard.lastTimeInCapture);
}

std::string featuresText(const Network& network) {
    std::string names;
    for (const air::Feature feature : network.profile.features) {
        if (!names.empty()) names += ' ';
        names += air::featureName(feature);
    }
    return names;
}

std::string findingsText(const Network& network) {
    std::string names;
    for (const air::Finding& finding : network.profile.findings) {
        if (!names.empty()) names += ' ';
        names += finding.info().id;
    }
    return names;
}

// "2E 1W 3N": how many findings there are of each severity, the worst first.
std::string findingCounts(const Network& network) {
    constexpr std::pair<air::Severity, char> kSeverities[] = {
        {air::Severity::Error, 'E'}, {air::Severity::Warning, 'W'}, {air::Severity::Note, 'N'}};
    std::string counts;
    for (const auto& [severity, letter] : kSeverities) {
        const auto count =
            std::ranges::count(network.profile.findings, severity,
                               [](const air::Finding& finding) { return finding.info().severity; });
        if (count == 0) continue;
        if (!counts.empty()) counts += ' ';
        counts += std::to_string(count) + letter;
    }
    return counts;
}

// --- Cells ---

template <typename T>
FittedCell numberCell(const std::optional<T>& value) {
    return own(value ? std::to_string(*value) : std::string(kUntold));
}

FittedCell textCell(const std::string& value, const Around& around) {
    return value.empty() ? own(kUntold) : FittedCell{shownText(value, around.rules)};
}

FittedCell markCell(const Network& network, const Around&) {
    if (hasError(network)) return own("!", Meaning::Danger);
    if (network.statistics->cutFrames > 0) return own("x", Meaning::Caution);
    return own("");
}

PlainValue markValue(const Network& network, const Around&) {
    if (hasError(network)) return text("error");
    return network.statistics->cutFrames > 0 ? text("cut") : PlainValue();
}

FittedCell stateCell(const Network& network, const Around&) {
    if (isIn(network, NetworkMoment::State::InUse)) return own("*", Meaning::Current);
    if (isIn(network, NetworkMoment::State::New)) return own("+", Meaning::Current);
    if (isIn(network, NetworkMoment::State::Lost)) return own("-", Meaning::Secondary);
    return own("");
}

PlainValue stateValue(const Network& network, const Around&) {
    if (isIn(network, NetworkMoment::State::InUse)) return text("in use");
    if (isIn(network, NetworkMoment::State::New)) return text("new");
    if (isIn(network, NetworkMoment::State::Lost)) return text("lost");
    return {};
}

Meaning meaningOfName(const Network& network) {
    const bool isCurrent =
        isIn(network, NetworkMoment::State::InUse) || isIn(network, NetworkMoment::State::New);
    return isCurrent ? Meaning::Current : Meaning::Plain;
}

FittedCell ssidCell(const Network& network, const Around& around) {
    const Meaning meaning = meaningOfName(network);
    if (!isNamed(network) && !around.hasAddress) return {shownHidden(network.bssid), meaning};
    return {networkName(network, around.rules), meaning};
}

PlainValue ssidValue(const Network& network, const Around&) {
    return isNamed(network) ? text(nameOf(network)) : PlainValue();
}

FittedCell signalCell(const Network& network, const Around&) {
    const auto signal = signalOf(network);
    if (!signal) return own(kUntold);
    return own(std::to_string(*signal), meaningOfSignal(*signal));
}

FittedCell barCell(const Network& network, const Around& around) {
    const auto signal = signalOf(network);
    if (!signal) return own("");
    return {ownText(signalBar(*signal, around.glyphs), around.rules), meaningOfBar(*signal)};
}

FittedCell trendCell(const Network& network, const Around& around) {
    if (network.moment == nullptr) return own("");
    switch (network.moment->trend) {
        case NetworkMoment::Trend::Steady:
            break;
        case NetworkMoment::Trend::Rising:
            return {ownText(around.glyphs.rising, around.rules)};
        case NetworkMoment::Trend::Falling:
            return {ownText(around.glyphs.falling, around.rules)};
    }
    return own("");
}

FittedCell historyCell(const Network& network, const Around& around) {
    std::string levels;
    if (network.moment == nullptr) return own(levels);
    for (const auto& signal : network.moment->history) {
        levels += signal ? signalLevel(*signal, around.glyphs) : " ";
    }
    return {ownText(levels, around.rules)};
}

FittedCell widthCell(const Network& network, const Around& around) {
    const air::ChannelUse& channel = network.profile.channel;
    if (!widthOf(network)) return own("- ");
    if (channel.span->center2) return {ownText(around.glyphs.twice80, around.rules)};
    const bool isPunctured = channel.punctured && channel.punctured->value != 0;
    return own(std::to_string(channel.span->width) + (isPunctured ? 'p' : ' '));
}

FittedCell bandCell(const Network& network, const Around&) {
    const auto& band = network.profile.channel.band;
    return own(band ? air::bandName(band->value) : kUntold);
}

FittedCell channelCell(const Network& network, const Around&) {
    const auto& channel = network.profile.channel.primaryChannel;
    return own(channel ? std::to_string(channel->value) : std::string(kUntold));
}

FittedCell rateCell(const Network& network, const Around&) {
    const auto rate = rateOf(network);
    return own(rate ? std::to_string(rounded(*rate)) : std::string(kUntold));
}

FittedCell securityCell(const Network& network, const Around& around) {
    const air::Security security = network.profile.security.name.value;
    return own(around.hasFullSecurity ? air::securityName(security) : shortSecurityName(security),
               meaningOfSecurity(security));
}

FittedCell loadCell(const Network& network, const Around&) {
    constexpr int kWhole = 255;
    const auto& load = network.profile.load;
    if (!load) return own(kUntold);
    return own(std::to_string((load->value.utilization * 100 + kWhole / 2) / kWhole) + '%');
}

FittedCell stationsCell(const Network& network, const Around&) {
    const auto& load = network.profile.load;
    return own(load ? std::to_string(load->value.stations) : std::string(kUntold));
}

FittedCell silenceCell(const Network& network, const Around& around) {
    const auto silence = silenceOf(network, around);
    return own(silence ? ageText(*silence) : std::string(kUntold));
}

// A list of half a minute ago is not one of now.
FittedCell ageCell(const Network& network, const Around& around) {
    constexpr std::int64_t kOld = 30'000'000'000;
    FittedCell cell = silenceCell(network, around);
    if (silenceOf(network, around).value_or(0) > kOld) cell.meaning = Meaning::Caution;
    return cell;
}

PlainValue ageValue(const Network& network, const Around& around) {
    constexpr double kSecond = 1e9;
    const auto age = silenceOf(network, around);
    return age ? number(static_cast<double>(*age) / kSecond) : PlainValue();
}

FittedCell makerCell(const Network& network, const Around& around) {
    const std::string name = around.makers().cell(network.bssid, around.makerCells);
    const bool isOwn = name.starts_with('(') || name == kUntold;
    return isOwn ? own(name, Meaning::Secondary) : FittedCell{shownText(name, around.rules)};
}

PlainValue makerValue(const Network& network, const Around& around) {
    return text(around.makers().find(network.bssid).value_or(""));
}

PlainValue timeValue(const std::optional<std::int64_t>& time) {
    return time ? text(utcTimeText(*time)) : PlainValue();
}

FittedCell centerCell(const Network& network, const Around&) {
    const air::ChannelSpan& span = *network.profile.channel.span;
    if (!span.center1 || !widthOf(network)) return own(kUntold);
    const std::string first = std::to_string(*span.center1);
    return own(span.center2 ? first + '+' + std::to_string(*span.center2) : first);
}

std::optional<int> dtimOf(const Network& network) {
    const auto& period = network.profile.dtimPeriod;
    return period ? std::optional(period->value) : std::nullopt;
}

std::optional<std::int64_t> intervalOf(const Network& network) {
    return network.beaconInterval ? network.beaconInterval->exactInt64() : std::nullopt;
}

std::string mldText(const Network& network) {
    const auto& mld = network.profile.mld;
    return mld ? FancyFormatting::formattedMAC(mld->address.buffer()) : std::string();
}

std::string countryText(const Network& network) {
    const auto& country = network.profile.country;
    return country ? country->value.code : std::string();
}

constexpr std::size_t kNever = kAnyWidth;  // stands without a width, or where it is asked for

// In the order on the line, of all lists.
constexpr NetworkColumn kColumns[] = {
    {{.name = "state",
      .header = "",
      .align = Align::Left,
      .least = 1,
      .most = kAnyWidth,
      .isJoinedToNext = true},
     stateCell,
     stateValue,
     "* in use, + new, - lost"},
    {{.name = "mark", .header = "", .align = Align::Left, .least = 1, .most = kAnyWidth},
     markCell,
     markValue,
     "! an error among the findings, x a frame was cut"},
    {{.name = "ssid", .header = "SSID", .align = Align::Left, .least = 12, .most = 32},
     ssidCell,
     ssidValue,
     "the name, or that of the mesh"},
    {{.name = "signal", .header = "dBm", .align = Align::Right, .least = 3, .most = kAnyWidth},
     signalCell,
     [](const Network& network, const Around&) { return numberIf(signalOf(network)); },
     "median of the signals of its frames, dBm"},
    {{.name = "trend", .header = "", .align = Align::Left, .least = 1, .most = 1},
     trendCell,
     nullptr,
     "whether the signal rises or falls by 4 dB or more"},
    {{.name = "bar", .header = "", .align = Align::Left, .least = 4, .most = 4, .from = 55},
     barCell,
     nullptr,
     "the signal as a bar, from -95 to -35 dBm"},
    {{.name = "history",
      .header = "60 s",
      .align = Align::Left,
      .least = NetworkMoment::kHistory,
      .most = NetworkMoment::kHistory},
     historyCell,
     nullptr,
     "the signals of the last minute, each of 5 s"},
    {{.name = "band", .header = "GHz", .align = Align::Right, .least = 3, .most = kAnyWidth},
     bandCell,
     [](const Network& network, const Around&) {
         const auto& band = network.profile.channel.band;
         return band ? text(air::bandName(band->value)) : PlainValue();
     },
     "band, GHz"},
    {{.name = "channel", .header = "CH", .align = Align::Right, .least = 3, .most = kAnyWidth},
     channelCell,
     [](const Network& network, const Around&) {
         const auto& channel = network.profile.channel.primaryChannel;
         return channel ? number(channel->value) : PlainValue();
     },
     "primary channel"},
    {{.name = "width",
      .header = "MHz",
      .align = Align::Right,
      .least = 4,
      .most = kAnyWidth,
      .from = 40},
     widthCell,
     [](const Network& network, const Around&) { return numberIf(widthOf(network)); },
     "width, MHz; p: punctured"},
    {{.name = "generation",
      .header = "GEN",
      .align = Align::Left,
      .least = 3,
      .most = kAnyWidth,
      .from = 59},
     [](const Network& network, const Around&) { return own(generationLabel(network)); },
     [](const Network& network, const Around&) {
         return tellsGeneration(network) ? text(generationLabel(network)) : PlainValue();
     },
     "7, 6E, 6, 5 or 4; before these g, a or b"},
    {{.name = "rate",
      .header = "Mbit/s",
      .align = Align::Right,
      .least = 6,
      .most = kAnyWidth,
      .from = 89},
     rateCell,
     [](const Network& network, const Around&) { return numberIf(rateOf(network)); },
     "highest rate, Mbit/s"},
    {{.name = "security",
      .header = "SECURITY",
      .align = Align::Left,
      .least = 8,
      .most = kAnyWidth},
     securityCell,
     [](const Network& network, const Around&) {
         return text(air::securityName(network.profile.security.name.value));
     },
     "security"},
    {{.name = "pmf", .header = "PMF", .align = Align::Left, .least = 3, .most = 3, .from = 63},
     [](const Network& network, const Around&) {
         return own(shortPmfName(network.profile.security.pmf.value));
     },
     [](const Network& network, const Around&) {
         const auto& pmf = network.profile.security.pmf;
         return pmf.rule == air::Rule::FrameCut ? PlainValue() : text(air::pmfName(*pmf));
     },
     "protection of management frames: capable or required"},
    {{.name = "load",
      .header = "LOAD",
      .align = Align::Right,
      .least = 4,
      .most = kAnyWidth,
      .from = 115,
      .isLeftOutUntold = true},
     loadCell,
     [](const Network& network, const Around&) {
         const auto& load = network.profile.load;
         return load ? number(load->value.utilization / 255.0) : PlainValue();
     },
     "share of the time that the channel is busy, as the network tells"},
    {{.name = "stations",
      .header = "STA",
      .align = Align::Right,
      .least = 3,
      .most = kAnyWidth,
      .from = 115,
      .isLeftOutUntold = true},
     stationsCell,
     [](const Network& network, const Around&) {
         const auto& load = network.profile.load;
         return load ? number(load->value.stations) : PlainValue();
     },
     "associated stations, as the network tells"},
    {{.name = "last",
      .header = "LAST",
      .align = Align::Right,
      .least = 4,
      .most = kAnyWidth,
      .from = 120},
     silenceCell,
     [](const Network& network, const Around&) { return timeValue(network.statistics->lastTime); },
     "last frame before the end of its capture, or before now"},
    {{.name = "age",
      .header = "AGE",
      .align = Align::Right,
      .least = 4,
      .most = kAnyWidth,
      .from = 120},
     ageCell,
     ageValue,
     "time since its last frame, s"},
    {{.name = "bssid",
      .header = "BSSID",
      .align = Align::Left,
      .least = 8,
      .most = kAnyWidth,
      .from = 50,
      .below = 74},
     [](const Network& network, const Around&) { return own(addressText(network).substr(9)); },
     nullptr,
     ""},
    {{.name = "bssid",
      .header = "BSSID",
      .align = Align::Left,
      .least = 17,
      .most = kAnyWidth,
      .from = 74},
     [](const Network& network, const Around&) { return own(addressText(network)); },
     [](const Network& network, const Around&) { return text(addressText(network)); },
     "address"},
    {{.name = "maker",
      .header = "MAKER",
      .align = Align::Left,
      .least = 5,
      .most = kMakerCells,
      .from = 106},
     makerCell,
     makerValue,
     "who the IEEE assigned the address to"},
    {{.name = "beacons",
      .header = "BEACONS",
      .align = Align::Right,
      .least = 7,
      .most = kAnyWidth,
      .from = 128},
     [](const Network& network, const Around&) {
         return own(std::to_string(network.statistics->beacons));
     },
     [](const Network& network, const Around&) {
         return number(static_cast<double>(network.statistics->beacons));
     },
     "beacons"},
    {{.name = "country",
      .header = "CC",
      .align = Align::Left,
      .least = 2,
      .most = kAnyWidth,
      .from = kNever},
     [](const Network& network, const Around& around) {
         return textCell(countryText(network), around);
     },
     [](const Network& network, const Around&) { return text(countryText(network)); },
     "country"},
    {{.name = "streams",
      .header = "STREAMS",
      .align = Align::Right,
      .least = 7,
      .most = kAnyWidth,
      .from = kNever},
     [](const Network& network, const Around&) {
         const int streams = network.profile.streams();
         return own(streams > 0 ? std::to_string(streams) : std::string(kUntold));
     },
     [](const Network& network, const Around&) {
         const int streams = network.profile.streams();
         return streams > 0 ? number(streams) : PlainValue();
     },
     "spatial streams"},
    {{.name = "dtim",
      .header = "DTIM",
      .align = Align::Right,
      .least = 4,
      .most = kAnyWidth,
      .from = kNever},
     [](const Network& network, const Around&) { return numberCell(dtimOf(network)); },
     [](const Network& network, const Around&) { return numberIf(dtimOf(network)); },
     "DTIM period, beacons"},
    {{.name = "interval",
      .header = "TU",
      .align = Align::Right,
      .least = 3,
      .most = kAnyWidth,
      .from = kNever},
     [](const Network& network, const Around&) { return numberCell(intervalOf(network)); },
     [](const Network& network, const Around&) { return numberIf(intervalOf(network)); },
     "beacon interval, TU (1.024 ms)"},
    {{.name = "frequency",
      .header = "FREQ",
      .align = Align::Right,
      .least = 4,
      .most = kAnyWidth,
      .from = kNever},
     [](const Network& network, const Around&) {
         return numberCell(network.profile.channel.primaryFrequency);
     },
     [](const Network& network, const Around&) {
         return numberIf(network.profile.channel.primaryFrequency);
     },
     "frequency of the primary channel, MHz"},
    {{.name = "center",
      .header = "CENTER",
      .align = Align::Right,
      .least = 6,
      .most = kAnyWidth,
      .from = kNever},
     centerCell,
     [](const Network& network, const Around& around) {
         const std::string centers = centerCell(network, around).text.octets();
         return centers == kUntold ? PlainValue() : text(centers);
     },
     "centre frequencies, MHz"},
    {{.name = "first",
      .header = "FIRST (UTC)",
      .align = Align::Left,
      .least = 19,
      .most = kAnyWidth,
      .from = kNever},
     [](const Network& network, const Around& around) {
         const auto& time = network.statistics->firstTime;
         return textCell(time ? utcSecondText(*time) : std::string(), around);
     },
     [](const Network& network, const Around&) { return timeValue(network.statistics->firstTime); },
     "first frame, UTC"},
    {{.name = "frames",
      .header = "FRAMES",
      .align = Align::Right,
      .least = 6,
      .most = kAnyWidth,
      .from = kNever},
     [](const Network& network, const Around&) {
         return own(std::to_string(network.statistics->frames()));
     },
     [](const Network& network, const Around&) {
         return number(static_cast<double>(network.statistics->frames()));
     },
     "beacons and probe responses"},
    {{.name = "best",
      .header = "BEST",
      .align = Align::Right,
      .least = 4,
      .most = kAnyWidth,
      .from = kNever},
     [](const Network& network, const Around&) {
         return numberCell(network.statistics->signal.greatest());
     },
     [](const Network& network, const Around&) {
         return numberIf(network.statistics->signal.greatest());
     },
     "greatest signal, dBm"},
    {{.name = "worst",
      .header = "WORST",
      .align = Align::Right,
      .least = 5,
      .most = kAnyWidth,
      .from = kNever},
     [](const Network& network, const Around&) {
         return numberCell(network.statistics->signal.least());
     },
     [](const Network& network, const Around&) {
         return numberIf(network.statistics->signal.least());
     },
     "least signal, dBm"},
    {{.name = "mld",
      .header = "MLD",
      .align = Align::Left,
      .least = 17,
      .most = kAnyWidth,
      .from = kNever},
     [](const Network& network, const Around& around) {
         return textCell(mldText(network), around);
     },
     [](const Network& network, const Around&) { return text(mldText(network)); },
     "address of the multi-link device"},
    {{.name = "ap",
      .header = "AP",
      .align = Align::Left,
      .least = 4,
      .most = kAnyWidth,
      .from = kNever},
     [](const Network& network, const Around& around) {
         return textCell(network.details.accessPoint, around);
     },
     [](const Network& network, const Around&) { return text(network.details.accessPoint); },
     "name that the access point tells of itself"},
    {{.name = "features",
      .header = "FEATURES",
      .align = Align::Left,
      .least = 8,
      .most = kAnyWidth,
      .from = kNever},
     [](const Network& network, const Around& around) {
         return textCell(featuresText(network), around);
     },
     [](const Network& network, const Around&) { return text(featuresText(network)); },
     "what it offers"},
    {{.name = "findings",
      .header = "FINDINGS",
      .align = Align::Left,
      .least = 8,
      .most = kAnyWidth,
      .from = kNever},
     [](const Network& network, const Around& around) {
         return textCell(findingCounts(network), around);
     },
     [](const Network& network, const Around&) { return text(findingsText(network)); },
     "how many errors, warnings and notes there are about it"},
};

// Columns that are not in all lists.
struct Absence {
    std::string_view column;
    ListKind list;
};
constexpr Absence kAbsences[] = {
    {"state", ListKind::Captures}, {"trend", ListKind::Captures}, {"history", ListKind::Captures},
    {"age", ListKind::Captures},   {"trend", ListKind::Scan},     {"history", ListKind::Scan},
    {"last", ListKind::Scan},      {"beacons", ListKind::Scan},   {"first", ListKind::Scan},
    {"frames", ListKind::Scan},    {"age", ListKind::Watch},
};

// Where columns stand while networks are watched.
struct WatchedPlace {
    std::string_view column;
    std::size_t least;  // tells the two forms of the BSSID
    std::size_t from;
    std::size_t below = kAnyWidth;
};
constexpr WatchedPlace kWatchedPlaces[] = {
    {"bar", 4, 63},         {"history", NetworkMoment::kHistory, 113},
    {"width", 4, 49},       {"generation", 3, 67},
    {"rate", 6, kNever},    {"pmf", 3, 85},
    {"load", 4, 120},       {"stations", 3, 120},
    {"last", 4, 44},        {"bssid", 8, 58, 76},
    {"bssid", 17, 76},      {"maker", 5, 100},
    {"beacons", 7, kNever},
};

void placeForWatching(NetworkColumn& column) {
    for (const WatchedPlace& place : kWatchedPlaces) {
        if (place.column != column.layout.name || place.least != column.layout.least) continue;
        column.layout.from = place.from;
        column.layout.below = place.below;
    }
}

std::vector<NetworkColumn> columnsOf(ListKind list) {
    std::vector<NetworkColumn> columns;
    for (const NetworkColumn& column : kColumns) {
        const bool isAbsent = std::ranges::any_of(kAbsences, [&](const Absence& absence) {
            return absence.list == list && absence.column == column.layout.name;
        });
        if (!isAbsent) columns.push_back(column);
    }
    if (list == ListKind::Watch) std::ranges::for_each(columns, placeForWatching);
    return columns;
}

}  // namespace

std::span<const NetworkColumn> networkColumns(ListKind list) {
    static const std::vector<NetworkColumn> captures = columnsOf(ListKind::Captures);
    static const std::vector<NetworkColumn> scan = columnsOf(ListKind::Scan);
    static const std::vector<NetworkColumn> watch = columnsOf(ListKind::Watch);
    switch (list) {
        case ListKind::Captures:
            return captures;
        case ListKind::Scan:
            return scan;
        case ListKind::Watch:
            return watch;
    }
    return captures;
}

const NetworkColumn* networkColumnNamed(std::string_view name, ListKind list) {
    const auto columns = networkColumns(list);
    const auto found = std::ranges::find_if(columns, [&](const NetworkColumn& column) {
        return column.layout.name == name && column.value != nullptr;
    });
    return found == columns.end() ? nullptr : &*found;
}

}  // namespace halvane::tool

#include "tools/halvane/options/list_options.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "tools/halvane/options/format_option.h"
#include "tools/halvane/options/network_conditions.h"
#include "tools/halvane/output/unicode.h"
#include "tools/halvane/survey/survey.h"

namespace halvane::tool {

namespace {

// Texts of an option that may be repeated.
struct Texts {
    char** texts = nullptr;
    std::size_t count = 0;
};

// The options as typed; null or 0 means not typed.
struct Typed {
    Texts ssids, bssids, bands, channels, securities, generations;
    const char* minSignal = nullptr;
    std::int32_t hidden = 0;
    const char* findings = nullptr;
    const char* columns = nullptr;
    const char* sort = nullptr;
    std::int32_t reverse = 0;
    const char* group = nullptr;
    std::int32_t verbose = 0;
    const char* limit = nullptr;
    std::int32_t wide = 0;
    const char* width = nullptr;
    const char* color = nullptr;
    std::int32_t ascii = 0;
    const char* widthAmbiguous = nullptr;
    const char* maxNetworks = nullptr;
    std::int32_t quiet = 0;
};
Typed gTyped;

constexpr CLIOption heading(const char* title) {
    return {.type = kCLIGroup, .shortHelp = title};
}

constexpr CLIOption repeatable(const char* name, Texts& texts, const char* argument,
                               const char* help) {
    return {.type = kCLIStringArray,
            .longName = name,
            .valuePtr = &texts.texts,
            .countPtr = &texts.count,
            .argName = argument,
            .flags = kCLIBareName,
            .shortHelp = help};
}

constexpr CLIOption valued(const char* name, const char*& value, const char* argument,
                           const char* help) {
    return {.type = kCLIString,
            .longName = name,
            .valuePtr = &value,
            .argName = argument,
            .flags = kCLIBareName,
            .shortHelp = help};
}

constexpr CLIOption flag(const char* name, std::int32_t& value, const char* help) {
    return {.type = kCLIBoolean,
            .longName = name,
            .valuePtr = &value,
            .flags = kCLINoValue,
            .shortHelp = help};
}

const CLIOption kFilterOptions[] = {
    heading("Which networks"),
    repeatable("ssid", gTyped.ssids, "NAME", "this name ('*' and '?' for others); repeatable"),
    repeatable("bssid", gTyped.bssids, "ADDRESS[/MASK]", "this address; repeatable"),
    repeatable("band", gTyped.bands, "2.4|5|6", "this band; repeatable"),
    repeatable("channel", gTyped.channels, "N", "this primary channel; repeatable"),
    repeatable("security", gTyped.securities, "NAME",
               "Open, OWE, WEP, WPA, WPA2, WPA3, Enterprise"),
    repeatable("generation", gTyped.generations, "4|5|6|6E|7",
               "this one; '6+' this one or newer; repeatable"),
    valued("min-signal", gTyped.minSignal, "DBM", "this signal (dBm) or stronger: -70"),
    flag("hidden", gTyped.hidden, "networks without a name"),
};

CLIOption findingsOption(const char* help) {
    return {.type = kCLIString,
            .longName = "findings",
            .valuePtr = &gTyped.findings,
            .defaultValue = CLI_DEFAULT_TEXT("note"),
            .argName = "SEVERITY",
            .flags = kCLIBareName | kCLIOptionalValue,
            .shortHelp = help};
}

const CLIOption kFindingsFilter[] = {
    findingsOption("with an error, a warning or a note (default)")};

const CLIOption kShowOptions[] = {
    heading("What to show"),
    formatOption("json: one document; jsonl: one line per record; csv: columns for\n"
                 "programs; plist: skeletons.",
                 "table (default), text, json, jsonl, csv, plist"),
    valued("columns", gTyped.columns, "NAMES", "these, in this order ('help' lists them)"),
    valued("sort", gTyped.sort, "NAMES", "by these columns, '-' before one turns it round"),
    flag("reverse", gTyped.reverse, "turn the whole order round"),
    valued("group", gTyped.group, "ssid|radio", "one row a name, or a radio"),
    {.type = kCLIBoolean,
     .shortName = 'v',
     .longName = "verbose",
     .valuePtr = &gTyped.verbose,
     .flags = kCLINoValue,
     .shortHelp = "with --group: the addresses below each row"},
    valued("limit", gTyped.limit, "N", "at most N rows of the table"),
    findingsOption("what is wrong: error, warning or note (default)"),
};

const CLIOption kMannerOptions[] = {
    heading("How"),
    flag("wide", gTyped.wide, "drop and cut nothing"),
    valued("width", gTyped.width, "N", "fit N columns"),
    valued("color", gTyped.color, "auto|always|never", "colours: on a terminal (default auto)"),
    flag("ascii", gTyped.ascii, "no character beyond ASCII"),
    valued("width-ambiguous", gTyped.widthAmbiguous, "1|2",
           "cells of what Unicode calls ambiguous"),
    valued("max-networks", gTyped.maxNetworks, "N", "forget the oldest beyond N (default 65536)"),
    flag("quiet", gTyped.quiet, "no summary and no progress"),
};

UsageError badValue(std::string_view name, std::string_view value, std::string_view expected) {
    return {"--" + std::string(name) + ": '" + std::string(value) + "' is not " +
            std::string(expected)};
}

struct Condition {
    const char* name;
    Texts Typed::*texts;
    ConditionReader read;
    const char* expected;
    std::vector<std::string_view> (*words)() = nullptr;  // null where any word may be right
    NetworkFilter::Subject subject = NetworkFilter::Subject::All;
};
constexpr Condition kConditions[] = {
    {"ssid", &Typed::ssids, ssidCondition, ""},
    {"bssid", &Typed::bssids, bssidCondition,
     "an address of six octets (02:1a:2b:3c:4d:5e), with or without a mask (/24)", nullptr,
     NetworkFilter::Subject::Address},
    {"band", &Typed::bands, bandCondition, "2.4, 5 or 6", bandWords},
    {"channel", &Typed::channels, channelCondition, "a channel number"},
    {"security", &Typed::securities, securityCondition,
     "Open, OWE, WEP, WPA, WPA2, WPA3, Personal, Enterprise or a name of the table", securityWords},
    {"generation", &Typed::generations, generationCondition, "4, 5, 6, 6E, 7, a, b or g",
     generationWords},
};

UsageError unreadable(const Condition& condition, const char* text) {
    UsageError error = badValue(condition.name, text, condition.expected);
    if (condition.words == nullptr) return error;
    return withSuggestion(std::move(error), "--" + std::string(condition.name) + '=', text,
                          condition.words());
}

// Signals are below 0 dBm, and the sign is easily forgotten.
UsageError noSignal(std::string_view typed) {
    UsageError error = badValue("min-signal", typed, "a signal of dBm (-70)");
    if (signalCondition('-' + std::string(typed))) {
        error.hint = "did you mean --min-signal=-" + std::string(typed) + "?";
    }
    return error;
}

std::optional<UsageError> readConditions(NetworkFilter& filter, const Typed& typed) {
    for (const Condition& condition : kConditions) {
        const Texts& texts = typed.*condition.texts;
        for (const char* const text : std::span(texts.texts, texts.count)) {
            auto holds = condition.read(text);
            if (!holds) return unreadable(condition, text);
            filter.add(std::string("--") + condition.name, text, std::move(*holds),
                       condition.subject);
        }
    }
    if (typed.minSignal != nullptr) {
        auto holds = signalCondition(typed.minSignal);
        if (!holds) return noSignal(typed.minSignal);
        filter.add("--min-signal", typed.minSignal, std::move(*holds));
    }
    if (typed.hidden != 0) filter.add("--hidden", {}, hiddenCondition());
    return std::nullopt;
}

// A number from `least` on, if one was typed.
template <typename Place>
std::optional<UsageError> readNumber(const char* name, const char* text, std::uint64_t least,
                                     Place& place) {
    constexpr std::uint64_t kMost = 1'000'000'000;
    if (text == nullptr) return std::nullopt;
    const auto number = decimalOf(text);
    if (!number || *number < least || *number > kMost) {
        return badValue(name, text, "a number from " + std::to_string(least) + " on");
    }
    place = static_cast<std::size_t>(*number);
    return std::nullopt;
}

// A name that is none of the columns of the list.
UsageError noColumn(std::string_view option, std::string_view typed, ListKind list) {
    std::vector<std::string_view> names;
    for (const NetworkColumn& column : networkColumns(list)) {
        if (column.value != nullptr) names.emplace_back(column.layout.name);
    }
    UsageError error =
        withSuggestion({"--" + std::string(option) + ": '" + std::string(typed) + "' is no column"},
                       "", typed, names);
    error.hint += std::string(error.hint.empty() ? "" : "\n") + "--columns=help lists them";
    return error;
}

std::optional<UsageError> readColumns(ListOptions& options, const Typed& typed) {
    if (typed.columns == nullptr) return std::nullopt;
    options.isColumnsHelp = std::string_view(typed.columns) == "help";
    if (options.isColumnsHelp) return std::nullopt;
    const auto keys = orderKeysOf(typed.columns, options.list);
    if (!keys) return noColumn("columns", keys.error(), options.list);
    for (const OrderKey& key : *keys) {
        if (key.isFalling) return badValue("columns", typed.columns, "names of columns");
        options.columns.push_back(key.column);
    }
    return std::nullopt;
}

std::optional<UsageError> readOrder(ListOptions& options, const Typed& typed) {
    options.order.isReversed = typed.reverse != 0;
    if (typed.sort == nullptr) return std::nullopt;
    auto keys = orderKeysOf(typed.sort, options.list);
    if (!keys) return noColumn("sort", keys.error(), options.list);
    options.isSorted = true;
    options.order.keys = std::move(*keys);
    return std::nullopt;
}

std::optional<UsageError> readColor(ListOptions& options, const Typed& typed) {
    if (typed.color == nullptr) return std::nullopt;
    constexpr std::pair<std::string_view, ColorChoice> kChoices[] = {
        {"auto", ColorChoice::Auto},
        {"always", ColorChoice::Always},
        {"never", ColorChoice::Never}};
    for (const auto& [name, choice] : kChoices) {
        if (name != typed.color) continue;
        options.color = choice;
        return std::nullopt;
    }
    return withSuggestion(badValue("color", typed.color, "auto, always or never"),
                          "--color=", typed.color, namesOf(kChoices));
}

std::optional<UsageError> readGrouping(ListOptions& options, const Typed& typed) {
    options.areAddressesShown = typed.verbose != 0;
    if (typed.group == nullptr) return std::nullopt;
    const std::string_view group = typed.group;
    if (group != "ssid" && group != "radio") {
        return withSuggestion(badValue("group", group, "ssid or radio"), "--group=", group,
                              std::array<std::string_view, 2>{"ssid", "radio"});
    }
    options.grouping = group == "ssid" ? Grouping::Name : Grouping::Radio;
    if (!options.columns.empty()) return UsageError{"--group and --columns do not go together"};
    if (!options.format || *options.format == Format::Table) return std::nullopt;
    return UsageError{"--group goes with --format=table alone"};
}

std::optional<UsageError> readAmbiguousWidth(ListOptions& options, const Typed& typed) {
    if (typed.widthAmbiguous == nullptr) return std::nullopt;
    const std::string_view width = typed.widthAmbiguous;
    if (width != "1" && width != "2") return badValue("width-ambiguous", width, "1 or 2");
    options.text.ambiguous = width == "2" ? AmbiguousWidth::Two : AmbiguousWidth::One;
    return std::nullopt;
}

std::optional<UsageError> readFindings(ListOptions& options, const Typed& typed) {
    if (typed.findings == nullptr) return std::nullopt;
    options.findings = severityNamed(typed.findings);
    if (options.findings) return std::nullopt;
    return withSuggestion(badValue("findings", typed.findings, "error, warning or note"),
                          "--findings=", typed.findings, severityWords());
}

struct TableOption {
    const char* name;
    bool isOrder;
    bool (*isTyped)(const ListOptions&);
};
constexpr TableOption kTableOptions[] = {
    {"--group", false, [](const ListOptions& o) { return o.grouping != Grouping::None; }},
    {"--columns", false, [](const ListOptions& o) { return !o.columns.empty(); }},
    {"--limit", false, [](const ListOptions& o) { return o.limit != 0; }},
    {"--sort", true, [](const ListOptions& o) { return o.isSorted; }},
    {"--reverse", true, [](const ListOptions& o) { return o.order.isReversed; }},
};

std::optional<UsageError> conflictIn(const ListOptions& options) {
    if (!options.format || *options.format == Format::Table) return std::nullopt;
    if (options.limit != 0) return UsageError{"--limit goes with --format=table alone"};
    if (!options.columns.empty() && *options.format != Format::CSV) {
        return UsageError{"--columns goes with --format=table or csv"};
    }
    return std::nullopt;
}

std::optional<UsageError> readInto(ListOptions& options, const Typed& typed) {
    const auto format = takeListFormat();
    if (!format) return format.error();
    options.format = *format;
    options.isWide = typed.wide != 0;
    options.text.isASCII = typed.ascii != 0;
    options.isQuiet = typed.quiet != 0;
    for (const char* const text : std::span(typed.bssids.texts, typed.bssids.count)) {
        if (!options.bssid) options.bssid = addressOf(text);
    }
    if (auto error = readConditions(options.filter, typed)) return error;
    if (auto error = readFindings(options, typed)) return error;
    if (auto error = readColumns(options, typed)) return error;
    if (auto error = readOrder(options, typed)) return error;
    if (auto error = readGrouping(options, typed)) return error;
    if (auto error = readColor(options, typed)) return error;
    if (auto error = readAmbiguousWidth(options, typed)) return error;
    if (auto error = readNumber("limit", typed.limit, 0, options.limit)) return error;
    if (auto error = readNumber("width", typed.width, 1, options.width)) return error;
    if (auto error = readNumber("max-networks", typed.maxNetworks, 1, options.mostNetworks)) {
        return error;
    }
    return conflictIn(options);
}

void freeTexts(Typed& typed) {
    for (const Condition& condition : kConditions) {
        Texts& texts = typed.*condition.texts;
        StringArray_Free(texts.texts, texts.count);
    }
}

}  // namespace

std::span<const CLIOption> filterOptions() {
    return kFilterOptions;
}

std::span<const CLIOption> findingsFilterOption() {
    return kFindingsFilter;
}

std::span<const CLIOption> showOptions() {
    return kShowOptions;
}

std::span<const CLIOption> mannerOptions() {
    return kMannerOptions;
}

Result<ListOptions, UsageError> takeListOptions() {
    return takeListOptions(ListKind::Captures);
}

Result<ListOptions, UsageError> takeListOptions(ListKind list) {
    Typed typed = std::exchange(gTyped, Typed());
    ListOptions options;
    options.list = list;
    options.mostNetworks = Survey::kDefaultMost;
    const auto error = readInto(options, typed);
    freeTexts(typed);
    if (error) return Unexpected(*error);
    return options;
}

std::optional<UsageError> tableOptionBeside(std::string_view other, const ListOptions& options,
                                            bool hasOrder) {
    for (const TableOption& option : kTableOptions) {
        if (!option.isTyped(options) || (option.isOrder && hasOrder)) continue;
        return UsageError{std::string(other) + " and " + option.name + " do not go together"};
    }
    return std::nullopt;
}

bool takeFindings(ListOptions& options) {
    if (options.findings && !options.format) return true;
    filterByFindings(options);
    return false;
}

void filterByFindings(ListOptions& options) {
    const auto& findings = options.findings;
    if (!findings) return;
    options.filter.add("--findings", air::severityName(*findings), findingsCondition(*findings));
}

}  // namespace halvane::tool

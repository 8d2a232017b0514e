#include "tools/halvane/options/report_options.h"

#include <algorithm>
#include <cstdint>
#include <functional>
#include <span>
#include <string_view>
#include <thread>
#include <utility>

#include "tools/halvane/options/list_options.h"
#include "tools/halvane/options/network_conditions.h"

namespace halvane::tool {

namespace {

// The options as typed; null or 0 means not typed.
struct Typed {
    const char* output = nullptr;
    std::int32_t force = 0;
    char** own = nullptr;
    std::size_t ownCount = 0;
    const char* title = nullptr;
    const char* details = nullptr;
    const char* jobs = nullptr;
    const char* maxNetworks = nullptr;
    std::int32_t quiet = 0;
};
Typed gTyped;

constexpr CLIOption valued(std::uint32_t letter, const char* name, const char*& value,
                           const char* argument, const char* help) {
    return {.type = kCLIString,
            .shortName = letter,
            .longName = name,
            .valuePtr = &value,
            .argName = argument,
            .flags = kCLIBareName,
            .shortHelp = help};
}

constexpr CLIOption flag(std::uint32_t letter, const char* name, std::int32_t& value,
                         const char* help) {
    return {.type = kCLIBoolean,
            .shortName = letter,
            .longName = name,
            .valuePtr = &value,
            .flags = kCLINoValue,
            .shortHelp = help};
}

const CLIOption kPageRows[] = {
    {.type = kCLIGroup, .shortHelp = "The page"},
    valued('o', "output", gTyped.output, "FILE", "write it there; '-' is standard output"),
    flag(0, "force", gTyped.force, "overwrite FILE"),
    {.type = kCLIStringArray,
     .longName = "own",
     .valuePtr = &gTyped.own,
     .countPtr = &gTyped.ownCount,
     .argName = "NAME|ADDRESS[/MASK]",
     .flags = kCLIBareName,
     .shortHelp = "yours: a name or addresses; repeatable"},
    valued(0, "title", gTyped.title, "TEXT", "the heading"),
    valued(0, "details", gTyped.details, "all|own|none",
           "octets of elements (all up to 500 networks)"),
};

const CLIOption kMannerRows[] = {
    {.type = kCLIGroup, .shortHelp = "How"},
    valued(0, "jobs", gTyped.jobs, "N", "files read at once (default: all cores)"),
    valued(0, "max-networks", gTyped.maxNetworks, "N",
           "forget the oldest beyond N (default 65536)"),
    flag(0, "quiet", gTyped.quiet, "no summary"),
};

const CLIOption kLastRows[] = {
    {.type = kCLIArgument,
     .longName = "FILE...",
     .shortHelp = "a capture or a folder; '-' is standard input"},
    {.type = kCLISection,
     .shortHelp = "EXAMPLES",
     .longHelp = "halvane report walk.pcapng -o survey.html\n"
                 "halvane report --own='office*' --title='Floor 1' captures/ -o survey.html\n"
                 "halvane report --band=5 walk.pcapng -o - | gzip > survey.html.gz"},
    {.type = kCLISection,
     .shortHelp = "EXIT STATUS",
     .longHelp = "0 done; 1 a file could not be read to its end, or the page could not be\n"
                 "written; 2 usage."},
    {.type = kCLIEnd},
};

std::vector<CLIOption> allOptions() {
    std::vector<CLIOption> options;
    for (const std::span<const CLIOption> rows :
         {std::span<const CLIOption>(kPageRows), filterOptions(), findingsFilterOption(),
          std::span<const CLIOption>(kMannerRows), std::span<const CLIOption>(kLastRows)}) {
        options.insert(options.end(), rows.begin(), rows.end());
    }
    return options;
}

UsageError badValue(std::string_view name, std::string_view value, std::string_view expected) {
    return {"--" + std::string(name) + ": '" + std::string(value) + "' is not " +
            std::string(expected)};
}

// A number from 1 to `most`, if one was typed.
std::optional<UsageError> readNumber(std::string_view name, const char* typed, std::uint64_t most,
                                     std::size_t& place) {
    if (typed == nullptr) return std::nullopt;
    const auto number = decimalOf(typed);
    if (!number || *number < 1 || *number > most) {
        return badValue(name, typed, "a number from 1 to " + std::to_string(most));
    }
    place = static_cast<std::size_t>(*number);
    return std::nullopt;
}

std::optional<UsageError> readDetails(ReportOptions& page, const char* typed) {
    if (typed == nullptr) return std::nullopt;
    constexpr std::pair<std::string_view, ReportDetails> kChoices[] = {
        {"all", ReportDetails::All}, {"own", ReportDetails::Own}, {"none", ReportDetails::None}};
    for (const auto& [name, details] : kChoices) {
        if (name != typed) continue;
        page.details = details;
        return std::nullopt;
    }
    return withSuggestion(badValue("details", typed, "all, own or none"), "--details=", typed,
                          namesOf(kChoices));
}

// An address, with or without a mask, or else a name.
void readOwn(ReportOptions& page, std::span<char* const> texts) {
    std::vector<NetworkCondition> conditions;
    for (const char* const text : texts) {
        auto condition = bssidCondition(text);
        if (!condition) condition = ssidCondition(text);
        if (!condition) continue;
        conditions.push_back(std::move(*condition));
        page.own.emplace_back(text);
    }
    if (conditions.empty()) return;
    page.isOwn = [conditions = std::move(conditions)](const Network& network) {
        return std::ranges::any_of(conditions,
                                   [&](const NetworkCondition& holds) { return holds(network); });
    };
}

std::optional<UsageError> readInto(ReportCommandOptions& options, const Typed& typed) {
    constexpr std::uint64_t kMostJobs = 1024;
    constexpr std::uint64_t kMostNetworks = 1'000'000'000;
    auto list = takeListOptions();
    if (!list) return list.error();
    filterByFindings(*list);
    options.filter = std::move(list->filter);
    options.mostNetworks = list->mostNetworks;
    options.jobs = std::max(1u, std::thread::hardware_concurrency());
    options.isQuiet = typed.quiet != 0;
    options.ifThere = typed.force != 0 ? IfThere::Replace : IfThere::Keep;
    if (typed.output != nullptr && std::string_view(typed.output) != "-") {
        options.output = typed.output;
    }
    if (typed.title != nullptr) options.page.title = typed.title;
    readOwn(options.page, std::span(typed.own, typed.ownCount));
    if (auto error = readDetails(options.page, typed.details)) return error;
    if (auto error = readNumber("jobs", typed.jobs, kMostJobs, options.jobs)) return error;
    return readNumber("max-networks", typed.maxNetworks, kMostNetworks, options.mostNetworks);
}

std::optional<UsageError> conflictIn(const ReportCommandOptions& options) {
    if (options.files.empty()) return UsageError{"no file to read ('-' is standard input)"};
    if (std::ranges::count(options.files, "-") > 1) return UsageError{"'-' can be read once only"};
    if (options.output && options.output->empty()) return UsageError{"--output: '' is no file"};
    return std::nullopt;
}

}  // namespace

CLIOption* reportOptions() {
    static std::vector<CLIOption> options = allOptions();
    return options.data();
}

Result<ReportCommandOptions, UsageError> takeReportOptions() {
    const Typed typed = std::exchange(gTyped, Typed());
    ReportCommandOptions options;
    options.files = takeArguments();
    const auto error = readInto(options, typed);
    StringArray_Free(typed.own, typed.ownCount);
    if (error) return Unexpected(*error);
    if (auto conflict = conflictIn(options)) return Unexpected(*conflict);
    return options;
}

}  // namespace halvane::tool

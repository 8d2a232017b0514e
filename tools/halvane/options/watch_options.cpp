#include "tools/halvane/options/watch_options.h"

#include <algorithm>
#include <cstddef>
#include <span>
#include <string_view>
#include <utility>

#include "tools/halvane/networks/network_columns.h"

namespace halvane::tool {

namespace {

// The options as typed; null means not typed.
struct Typed {
    const char* duration = nullptr;
    const char* count = nullptr;
    const char* file = nullptr;
};
Typed gTyped;

constexpr CLIOption valued(const char* name, const char*& value, const char* argument,
                           const char* help) {
    return {.type = kCLIString,
            .longName = name,
            .valuePtr = &value,
            .argName = argument,
            .flags = kCLIBareName,
            .shortHelp = help};
}

const CLIOption kOwnRows[] = {
    {.type = kCLIGroup, .shortHelp = "How long"},
    valued("duration", gTyped.duration, "SECONDS", "end after this time (s)"),
    valued("count", gTyped.count, "N", "end after N frames"),
    valued("write", gTyped.file, "FILE", "keep the frames in this file, as pcapng"),
};

const CLIOption kLastRows[] = {
    {.type = kCLIArgument, .longName = "INTERFACE...", .shortHelp = "an interface in monitor mode"},
    {.type = kCLISection,
     .shortHelp = "KEYS",
     .longHelp = "q quit; / filter by the beginning of names or addresses; s and S sort by\n"
                 "the next or previous column, r reverse; b band; g group; f freeze the rows;\n"
                 "arrows or j and k choose a row, Enter shows it alone, Escape goes back;\n"
                 "? lists the keys. Control-Z stops for a while."},
    {.type = kCLISection,
     .shortHelp = "EXAMPLES",
     .longHelp = "halvane watch wlan1mon\n"
                 "halvane watch --duration=60 --write=walk.pcapng wlan1mon\n"
                 "halvane watch --format=jsonl wlan1mon | jq -r .mac"},
    {.type = kCLISection,
     .shortHelp = "EXIT STATUS",
     .longHelp = "0 done; 1 an interface could not be listened to, or not any longer, or the\n"
                 "output could not be written; 2 usage."},
    {.type = kCLIEnd},
};

std::vector<CLIOption> allOptions() {
    std::vector<CLIOption> options;
    for (const std::span<const CLIOption> rows :
         {std::span<const CLIOption>(kOwnRows), filterOptions(), showOptions(), mannerOptions(),
          std::span<const CLIOption>(kLastRows)}) {
        options.insert(options.end(), rows.begin(), rows.end());
    }
    return options;
}

// A number from 1 on, if one was typed.
Result<std::optional<std::uint64_t>, UsageError> numberOf(const char* name, const char* typed) {
    constexpr std::uint64_t kMost = 1'000'000'000;
    if (typed == nullptr) return std::optional<std::uint64_t>();
    const auto number = decimalOf(typed);
    if (number && *number >= 1 && *number <= kMost) return number;
    return Unexpected(
        UsageError{std::string("--") + name + ": '" + typed + "' is not a number from 1 on"});
}

// A time with at most three digits of a fraction, if one was typed.
Result<std::optional<std::chrono::milliseconds>, UsageError> durationOf(const char* typed) {
    constexpr std::uint64_t kMost = 1'000'000'000;  // s
    constexpr std::size_t kDigits = 3;
    using Duration = std::optional<std::chrono::milliseconds>;
    if (typed == nullptr) return Duration();
    const std::string_view text = typed;
    const std::size_t point = text.find('.');
    std::string fraction(point == std::string_view::npos ? "0" : text.substr(point + 1));
    const bool isExact = !fraction.empty() && fraction.size() <= kDigits;
    fraction.resize(kDigits, '0');
    const auto seconds = decimalOf(text.substr(0, point));
    const auto thousandths = decimalOf(fraction);
    if (isExact && seconds && thousandths && *seconds <= kMost) {
        const std::uint64_t all = *seconds * 1000 + *thousandths;
        if (all > 0) return Duration(all);
    }
    return Unexpected(UsageError{std::string("--duration: '") + typed +
                                 "' is not a number of seconds from 0.001 on"});
}

std::optional<UsageError> conflictIn(const WatchOptions& options) {
    if (options.list.isColumnsHelp) return std::nullopt;
    if (options.interfaces.empty()) {
        return UsageError{
            "no interface to watch",
            "name one in monitor mode: 'halvane watch wlan1'; 'halvane scan' needs none"};
    }
    for (const std::string& name : options.interfaces) {
        if (std::ranges::count(options.interfaces, name) > 1) {
            return UsageError{"interface '" + name + "' is given twice"};
        }
    }
    if (options.file == "-" || options.file == "") {
        return UsageError{"--write: '" + *options.file + "' is no file"};
    }
    if (options.isFindingsList) return tableOptionBeside("--findings", options.list, false);
    return std::nullopt;
}

}  // namespace

CLIOption* watchOptions() {
    static std::vector<CLIOption> options = allOptions();
    return options.data();
}

Result<WatchOptions, UsageError> takeWatchOptions() {
    const Typed typed = std::exchange(gTyped, Typed());
    WatchOptions options;
    options.interfaces = takeArguments();
    auto list = takeListOptions(ListKind::Watch);
    if (!list) return Unexpected(list.error());
    options.list = std::move(*list);
    options.format = options.list.format.value_or(Format::Table);
    options.isFindingsList = takeFindings(options.list);
    const auto duration = durationOf(typed.duration);
    if (!duration) return Unexpected(duration.error());
    options.duration = *duration;
    const auto count = numberOf("count", typed.count);
    if (!count) return Unexpected(count.error());
    options.count = *count;
    if (typed.file != nullptr) options.file = typed.file;
    if (auto error = conflictIn(options)) return Unexpected(*error);
    return options;
}

}  // namespace halvane::tool

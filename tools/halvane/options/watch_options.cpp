#include "tools/halvane/options/watch_options.h"

#include <algorithm>
#include <span>
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
     .longHelp = "q ends, f freezes the order of the rows, Control-Z stops for a while."},
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

std::optional<UsageError> conflictIn(const WatchOptions& options) {
    if (options.list.isColumnsHelp) return std::nullopt;
    if (options.interfaces.empty()) return UsageError{"no interface to watch"};
    for (const std::string& name : options.interfaces) {
        if (std::ranges::count(options.interfaces, name) > 1) {
            return UsageError{"interface '" + name + "' is given twice"};
        }
    }
    if (options.file == "-") return UsageError{"--write: '-' is no file"};
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
    const auto duration = numberOf("duration", typed.duration);
    if (!duration) return Unexpected(duration.error());
    if (*duration) options.duration = std::chrono::seconds(**duration);
    const auto count = numberOf("count", typed.count);
    if (!count) return Unexpected(count.error());
    options.count = *count;
    if (typed.file != nullptr) options.file = typed.file;
    if (auto error = conflictIn(options)) return Unexpected(*error);
    return options;
}

}  // namespace halvane::tool

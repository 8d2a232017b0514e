#include "tools/halvane/options/decode_options.h"

#include <algorithm>
#include <charconv>
#include <span>
#include <string_view>
#include <system_error>
#include <thread>
#include <utility>

namespace halvane::tool {

namespace {

// The options as typed; null or 0 means not typed.
struct Typed {
    const char* capabilities = nullptr;
    const char* jobs = nullptr;
    std::int32_t perFrame = 0;
    std::int32_t hex = 0;
    std::int32_t explain = 0;
};
Typed gTyped;

const CLIOption kShowRows[] = {
    {.type = kCLIBoolean,
     .longName = "explain",
     .valuePtr = &gTyped.explain,
     .flags = kCLINoValue,
     .shortHelp = "where each value comes from"},
    {.type = kCLIBoolean,
     .longName = "per-frame",
     .valuePtr = &gTyped.perFrame,
     .flags = kCLINoValue,
     .shortHelp = "one record a frame, not folded"},
};

const CLIOption kMannerRows[] = {
    {.type = kCLIString,
     .longName = "jobs",
     .valuePtr = &gTyped.jobs,
     .argName = "N",
     .flags = kCLIBareName,
     .shortHelp = "files read at once (default: all cores)"},
    {.type = kCLIBoolean,
     .longName = "hex",
     .valuePtr = &gTyped.hex,
     .flags = kCLINoValue,
     .shortHelp = "FILE is hexadecimal text of one element buffer"},
    {.type = kCLIString,
     .longName = "capabilities",
     .valuePtr = &gTyped.capabilities,
     .argName = "FIELD",
     .flags = kCLIBareName,
     .shortHelp = "with --hex: the capability field (default 0)"},
};

const CLIOption kLastRows[] = {
    {.type = kCLIArgument,
     .longName = "FILE...",
     .shortHelp = "a capture or a folder; '-' is standard input"},
    {.type = kCLISection,
     .shortHelp = "EXAMPLES",
     .longHelp = "halvane decode walk.pcapng\n"
                 "halvane decode --band=6 --sort=channel walk.pcapng\n"
                 "halvane decode --explain --ssid=home walk.pcapng\n"
                 "halvane decode --findings=warning captures/\n"
                 "halvane decode --format=jsonl walk.pcapng | jq -r .mac"},
    {.type = kCLISection,
     .shortHelp = "EXIT STATUS",
     .longHelp = "0 done, also where no network passes the filter; 1 a file could not be read\n"
                 "to its end, the output could not be written, or, in all formats but table\n"
                 "and csv, a frame is cut; 2 usage."},
    {.type = kCLIEnd},
};

std::vector<CLIOption> allOptions() {
    std::vector<CLIOption> options;
    for (const std::span<const CLIOption> rows :
         {filterOptions(), showOptions(), std::span<const CLIOption>(kShowRows), mannerOptions(),
          std::span<const CLIOption>(kMannerRows), std::span<const CLIOption>(kLastRows)}) {
        options.insert(options.end(), rows.begin(), rows.end());
    }
    return options;
}

}  // namespace

CLIOption* decodeOptions() {
    static std::vector<CLIOption> options = allOptions();
    return options.data();
}

namespace {

// A 16-bit number, hexadecimal after "0x".
std::optional<std::uint16_t> fieldOf(std::string_view text) {
    const bool isHex = text.starts_with("0x") || text.starts_with("0X");
    if (isHex) text.remove_prefix(2);
    std::uint16_t value = 0;
    const char* end = text.data() + text.size();
    const auto result = std::from_chars(text.data(), end, value, isHex ? 16 : 10);
    if (result.ec != std::errc() || result.ptr != end) return std::nullopt;
    return value;
}

UsageError badValue(const char* name, const char* value, const char* expected) {
    return {std::string("--") + name + ": '" + value + "' is not " + expected};
}

std::optional<UsageError> readJobs(DecodeOptions& options, const char* typed) {
    constexpr std::uint64_t kMost = 1024;
    options.jobs = std::max(1u, std::thread::hardware_concurrency());
    if (typed == nullptr) return std::nullopt;
    const auto jobs = decimalOf(typed);
    if (!jobs || *jobs < 1 || *jobs > kMost)
        return badValue("jobs", typed, "a number from 1 to 1024");
    options.jobs = static_cast<std::size_t>(*jobs);
    return std::nullopt;
}

// A table has one row a network: single frames and single records are shown as text.
Format usualFormat(const DecodeOptions& options) {
    return options.isPerFrame || options.isHex || options.isExplained ? Format::Text
                                                                      : Format::Table;
}

std::optional<UsageError> readInto(DecodeOptions& options, const Typed& typed) {
    auto list = takeListOptions();
    if (!list) return list.error();
    options.list = std::move(*list);
    if (typed.capabilities != nullptr) {
        options.capabilities = fieldOf(typed.capabilities);
        if (!options.capabilities) {
            return badValue("capabilities", typed.capabilities, "a 16-bit number (0x0411)");
        }
    }
    options.isPerFrame = typed.perFrame != 0;
    options.isHex = typed.hex != 0;
    options.isExplained = typed.explain != 0;
    options.format = options.list.format.value_or(usualFormat(options));
    options.isFindingsList =
        options.list.findings && !options.list.format && options.format == Format::Table;
    if (!options.isFindingsList) filterByFindings(options.list);
    return readJobs(options, typed.jobs);
}

bool isList(Format format) {
    return format == Format::Table || format == Format::CSV;
}

std::optional<UsageError> conflictIn(const DecodeOptions& options) {
    if (options.list.isColumnsHelp) return std::nullopt;
    if (options.files.empty()) {
        return UsageError{
            "no file to decode ('-' is standard input)",
            "live: 'halvane scan' lists the networks around, 'halvane watch wlan1' follows"};
    }
    if (std::ranges::count(options.files, "-") > 1) return UsageError{"'-' can be read once only"};
    if (!options.isHex && options.capabilities) return UsageError{"--capabilities is for --hex"};
    if (options.isHex && options.files.size() > 1) return UsageError{"--hex takes one file"};
    if (options.isExplained && options.format != Format::Text) {
        return UsageError{"--explain goes with --format=text alone"};
    }
    if (options.isHex && options.isPerFrame) {
        return UsageError{"--hex and --per-frame do not go together"};
    }
    if (options.isPerFrame && isList(options.format)) {
        return UsageError{"--per-frame goes with --format=text, json, jsonl or plist"};
    }
    if (options.isHex && isList(options.format)) {
        return UsageError{"--hex goes with --format=text, json, jsonl or plist"};
    }
    if (options.isHex) return tableOptionBeside("--hex", options.list, false);
    if (options.isPerFrame) return tableOptionBeside("--per-frame", options.list, false);
    if (options.isFindingsList) return tableOptionBeside("--findings", options.list, false);
    if (options.isExplained) return tableOptionBeside("--explain", options.list, true);
    return std::nullopt;
}

}  // namespace

Result<DecodeOptions, UsageError> takeDecodeOptions() {
    const Typed typed = std::exchange(gTyped, Typed());
    DecodeOptions options;
    options.files = takeArguments();
    if (auto error = readInto(options, typed)) return Unexpected(*error);
    if (auto error = conflictIn(options)) return Unexpected(*error);
    return options;
}

}  // namespace halvane::tool

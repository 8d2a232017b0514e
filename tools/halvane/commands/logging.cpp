// Prints and sets the daemon's log categories.
#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "halvane/base/escaped_text.h"
#include "halvane/base/result.h"
#include "halvane/daemon/daemon_client.h"
#include "halvane/daemon/daemon_log_controls.h"
#include "halvane/daemon/daemon_result.h"
#include "halvane/utils/cli.h"

#include "tools/halvane/commands/command.h"
#include "tools/halvane/commands/daemon_session.h"
#include "tools/halvane/options/argument.h"
#include "tools/halvane/output/message.h"
#include "tools/halvane/output/standard_output.h"

namespace halvane::tool {

namespace {

constexpr const char* kName = "logging";
constexpr std::array<std::string_view, 2> kWords = {"show", "set"};

std::optional<UsageError> readControl(DaemonLogControls& controls, const std::string& word) {
    const auto equals = word.find('=');
    if (equals == word.npos) return UsageError{"'" + word + "' is not CATEGORY=CONTROL"};
    const std::string name = word.substr(0, equals);
    const auto category = std::ranges::find(kDaemonLogCategories, name);
    if (category == kDaemonLogCategories.end()) {
        std::string known;
        for (const auto each : kDaemonLogCategories)
            known += (known.empty() ? "" : ", ") + std::string(each);
        return withSuggestion({"no category '" + name + "'; there are " + known}, "", name,
                              kDaemonLogCategories);
    }
    auto& control = controls[static_cast<std::size_t>(category - kDaemonLogCategories.begin())];
    if (control) return UsageError{"'" + name + "' is set twice"};
    control = word.substr(equals + 1);
    if (!isText(*control)) return UsageError{"'" + *control + "' is no text of a control string"};
    return std::nullopt;
}

// Absent for "show".
Result<std::optional<DaemonLogControls>, UsageError> controlsOf(
    const std::vector<std::string>& words) {
    if (words.empty() || words == std::vector<std::string>{"show"}) {
        return std::optional<DaemonLogControls>();
    }
    if (words[0] == "show") return Unexpected(UsageError{"'show' takes nothing else"});
    if (words[0] != "set") {
        return Unexpected(
            withSuggestion({"'" + words[0] + "' is not 'show' or 'set'"}, "", words[0], kWords));
    }
    if (words.size() == 1) return Unexpected(UsageError{"'set' takes CATEGORY=CONTROL"});
    DaemonLogControls controls;
    for (std::size_t i = 1; i < words.size(); ++i) {
        if (auto problem = readControl(controls, words[i])) return Unexpected(*problem);
    }
    return controls;
}

// Prints the text line by line, each safe to show.
void printLines(std::string_view text) {
    while (!text.empty()) {
        const auto line = text.substr(0, text.find('\n'));
        put(escapedText(line) + '\n');
        text.remove_prefix(std::min(text.size(), line.size() + 1));
    }
}

int show(DaemonClient& daemon) {
    const auto settings = daemon.logging();
    if (settings) {
        printLines(*settings);
        return kExitDone;
    }
    if (settings.error().kind != DaemonError::Kind::Undecodable) {
        return failFor(kName, settings.error());
    }
    complain(std::string(kName) + ": the daemon does not tell its settings");
    return kExitFailed;
}

int set(DaemonClient& daemon, const DaemonLogControls& controls) {
    const auto done = daemon.setLogging(controls);
    return done ? kExitDone : failFor(kName, done.error());
}

int run() {
    const auto controls = controlsOf(takeArguments());
    if (!controls) return refuse(kName, controls.error());
    DaemonClient daemon;
    return *controls ? set(daemon, **controls) : show(daemon);
}

CLIOption gOptions[] = {
    {.type = kCLIArgument,
     .longName = "show | set CATEGORY=CONTROL...",
     .flags = kCLIOptionalValue,
     .shortHelp = "print (default) or set"},
    {.type = kCLISection,
     .shortHelp = "COMMANDS",
     .longHelp = "show                       print the settings (default)\n"
                 "set CATEGORY=CONTROL...    send control strings for these categories"},
    {.type = kCLISection,
     .shortHelp = "EXIT STATUS",
     .longHelp = "0 success; 1 there is no daemon, it refused, it went away before it replied,\n"
                 "its reply holds no settings ('show'), or writing failed; 2 usage error."},
    {.type = kCLIEnd},
};

constexpr CLIOption kCommands[] = {
    {.type = kCLICommand,
     .longName = kName,
     .handler = handle<run>,
     .subOptions = gOptions,
     .shortHelp = "print or set the daemon's logging",
     .longHelp = "Prints the Wi-Fi daemon's logging settings in its own words, or sends it\n"
                 "control strings for its categories: WiFi, WiFiBPF, WiFiEAPOL, WiFiIE,\n"
                 "WiFiIO80211, WiFiJoin, WiFiScan, WiFiWPS, WiFiXPC. The other categories stay\n"
                 "as they are."},
};

}  // namespace

std::span<const CLIOption> loggingCommands() {
    return kCommands;
}

}  // namespace halvane::tool

// The daemon's log categories: what they are set to, and setting them.
#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "halvane/base/error.h"
#include "halvane/daemon/xpc_client.h"
#include "halvane/utils/cli.h"
#include "halvane/utils/log.h"

#include "tools/halvane/commands/command.h"
#include "tools/halvane/commands/daemon_session.h"
#include "tools/halvane/commands/daemon_watch.h"
#include "tools/halvane/options/argument.h"
#include "halvane/base/escaped_text.h"
#include "tools/halvane/output/message.h"
#include "tools/halvane/output/standard_output.h"

namespace halvane::tool {

namespace {

constexpr const char* kName = "logging";

#define HALVANE_CATEGORY_NAME(name) std::string_view(#name),
constexpr std::array kCategories = {HALVANE_WIFI_LOG_CATEGORIES(HALVANE_CATEGORY_NAME)};
#undef HALVANE_CATEGORY_NAME

// By category.
using Controls = std::array<std::optional<std::string>, kCategories.size()>;

std::optional<UsageError> readControl(Controls& controls, const std::string& word) {
    const auto equals = word.find('=');
    if (equals == word.npos) return UsageError{"'" + word + "' is not CATEGORY=CONTROL"};
    const std::string name = word.substr(0, equals);
    const auto category = std::ranges::find(kCategories, name);
    if (category == kCategories.end()) {
        std::string known;
        for (const auto each : kCategories)
            known += (known.empty() ? "" : ", ") + std::string(each);
        return UsageError{"no category '" + name + "'; there are " + known};
    }
    auto& control = controls[static_cast<std::size_t>(category - kCategories.begin())];
    if (control) return UsageError{"'" + name + "' is set twice"};
    control = word.substr(equals + 1);
    if (!isText(*control)) return UsageError{"'" + *control + "' is no text of a control string"};
    return std::nullopt;
}

// Absent for "show".
std::variant<std::optional<Controls>, UsageError> controlsOf(
    const std::vector<std::string>& words) {
    if (words.empty() || words == std::vector<std::string>{"show"}) return std::nullopt;
    if (words[0] == "show") return UsageError{"'show' takes nothing else"};
    if (words[0] != "set") return UsageError{"'" + words[0] + "' is not 'show' or 'set'"};
    if (words.size() == 1) return UsageError{"'set' takes CATEGORY=CONTROL"};
    Controls controls;
    for (std::size_t i = 1; i < words.size(); ++i) {
        if (auto problem = readControl(controls, words[i])) return *problem;
    }
    return controls;
}

// Line by line, each safe to show.
void printLines(std::string_view text) {
    while (!text.empty()) {
        const auto line = text.substr(0, text.find('\n'));
        put(escapedText(line) + '\n');
        text.remove_prefix(std::min(text.size(), line.size() + 1));
    }
}

int show(HalvaneXPCClient& client) {
    if (!findDaemon(kName, client)) return kExitFailed;
    DaemonWatch watch;
    if (const auto settings = client.queryLogging()) {
        printLines(*settings);
        return kExitDone;
    }
    if (watch.hasDaemonLeft()) return failForLoss(kName);
    complain(std::string(kName) + ": the daemon does not tell its settings");
    return kExitFailed;
}

int set(HalvaneXPCClient& client, const Controls& controls) {
    const auto& [wifi, bpf, eapol, ie, io80211, join, scan, wps, xpc] = controls;
    std::optional<Error> error;
    if (client.setLogging_inBPF_inEAPOL_inIE_inIO80211_inJoin_inScan_inWPS_inXPC_error(
            wifi, bpf, eapol, ie, io80211, join, scan, wps, xpc, &error)) {
        return kExitDone;
    }
    return failFor(kName, error.value_or(noAnswer()));
}

int run() {
    const auto controls = controlsOf(takeArguments());
    if (const auto* error = std::get_if<UsageError>(&controls)) return refuse(kName, *error);
    const auto client = connectToDaemon();
    const auto& given = std::get<std::optional<Controls>>(controls);
    return given ? set(*client, *given) : show(*client);
}

CLIOption gOptions[] = {
    {.type = kCLIArgument,
     .longName = "show | set CATEGORY=CONTROL...",
     .flags = kCLIOptionalValue,
     .shortHelp = "print the settings (default), or change these"},
    {.type = kCLISection,
     .shortHelp = "EXIT STATUS",
     .longHelp =
         "0 done; 1 there is no daemon, it went away, it answered with a status other than 0\n"
         "('set'), it does not tell its settings ('show'), or the output could not be written;\n"
         "2 usage."},
    {.type = kCLIEnd},
};

constexpr CLIOption kCommands[] = {
    {.type = kCLICommand,
     .longName = kName,
     .handler = handle<run>,
     .subOptions = gOptions,
     .shortHelp = "print or set the daemon's logging",
     .longHelp =
         "Prints the Wi-Fi daemon's logging settings in its own words, or gives its categories\n"
         "control strings: WiFi, WiFiBPF, WiFiEAPOL, WiFiIE, WiFiIO80211, WiFiJoin, WiFiScan,\n"
         "WiFiWPS, WiFiXPC. One that is not named stays as it is."},
};

}  // namespace

std::span<const CLIOption> loggingCommands() {
    return kCommands;
}

}  // namespace halvane::tool

// The actions of the Wi-Fi daemon. Each command sends one request, and reports the daemon's status.
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "halvane/base/mac_address.h"
#include "halvane/base/result.h"
#include "halvane/daemon/daemon_client.h"
#include "halvane/daemon/daemon_result.h"
#include "halvane/model/bss_config.h"
#include "halvane/utils/cli.h"

#include "tools/halvane/commands/command.h"
#include "tools/halvane/commands/daemon_session.h"
#include "tools/halvane/options/argument.h"
#include "tools/halvane/options/config_options.h"
#include "tools/halvane/options/security_check.h"
#include "tools/halvane/output/message.h"

namespace halvane::tool {

namespace {

struct ActionInput {
    std::string interface = {};
    std::string role = {};
    MacAddress station = {};
    HalvaneBSSConfig configuration = HalvaneBSSConfig::init();
};

// The last ones take a configuration.
enum class Needs { Nothing, Role, Station, Configuration, SafeConfiguration };

std::int32_t gIsForced = 0;

struct Action {
    const char* name;
    Needs needs;  // besides an interface
    DaemonResult<void> (*send)(DaemonClient&, const ActionInput&);
};

constexpr Action kAdd = {"add", Needs::SafeConfiguration, [](auto& daemon, const auto& input) {
                             return daemon.add(input.interface, input.configuration);
                         }};
constexpr Action kRemove = {"remove", Needs::Configuration, [](auto& daemon, const auto& input) {
                                return daemon.remove(input.interface, input.configuration);
                            }};
constexpr Action kEnable = {"enable", Needs::Nothing, [](auto& daemon, const auto& input) {
                                return daemon.enable(input.interface);
                            }};
constexpr Action kDisable = {"disable", Needs::Nothing, [](auto& daemon, const auto& input) {
                                 return daemon.disable(input.interface);
                             }};
constexpr Action kRole = {"role", Needs::Role, [](auto& daemon, const auto& input) {
                              return daemon.setRole(input.interface, input.role);
                          }};
constexpr Action kStart = {"start", Needs::Nothing, [](auto& daemon, const auto& input) {
                               return daemon.start(input.interface);
                           }};
constexpr Action kStop = {"stop", Needs::Nothing, [](auto& daemon, const auto& input) {
                              return daemon.stop(input.interface);
                          }};
constexpr Action kKick = {"kick", Needs::Station, [](auto& daemon, const auto& input) {
                              return daemon.kick(input.interface, input.station);
                          }};

// Reads the operand behind the interface. Returns what is wrong with it.
using ReadOperand = std::optional<UsageError> (*)(ActionInput& input, const std::string& word);

std::optional<UsageError> readRole(ActionInput& input, const std::string& word) {
    if (word.empty() || !isText(word)) return UsageError{"'" + word + "' is no text of a role"};
    input.role = word;
    return std::nullopt;
}

std::optional<UsageError> readStation(ActionInput& input, const std::string& word) {
    const auto address = MacAddress::fromText(word);
    if (!address) return UsageError{"'" + word + "' is no address of a station"};
    input.station = *address;
    return std::nullopt;
}

struct Operands {
    const char* message;  // for another number of them
    ReadOperand readSecond;
};

constexpr Operands operandsOf(Needs needs) {
    switch (needs) {
        case Needs::Role:
            return {"takes an interface and a role", readRole};
        case Needs::Station:
            return {"takes an interface and the address of a station", readStation};
        case Needs::Nothing:
        case Needs::Configuration:
        case Needs::SafeConfiguration:
            break;
    }
    return {"takes one interface", nullptr};
}

Result<ActionInput, UsageError> takeOperands(const Action& action) {
    const std::vector<std::string> words = takeArguments();
    const auto [message, readSecond] = operandsOf(action.needs);
    // The message does not repeat the arguments, because one may be the passphrase.
    if (words.size() != (readSecond != nullptr ? 2u : 1u)) return Unexpected(UsageError{message});
    if (!isInterfaceName(words[0])) {
        return Unexpected(UsageError{"'" + words[0] + "' is no name of an interface"});
    }
    ActionInput input = {.interface = words[0]};
    if (readSecond != nullptr) {
        if (auto problem = readSecond(input, words[1])) return Unexpected(*std::move(problem));
    }
    return input;
}

// The request to send. If there is none, the exit status; the reason has been printed.
Result<ActionInput, int> takeInput(const Action& action) {
    auto operands = takeOperands(action);
    auto options = takeConfigOptions();
    const bool isForced = std::exchange(gIsForced, 0) != 0;
    if (!operands) return Unexpected(refuse(action.name, operands.error()));
    if (!options) return Unexpected(refuse(action.name, options.error()));
    if (action.needs < Needs::Configuration) return *operands;
    if (!options->configuration.ssid()) {
        return Unexpected(refuse(action.name, "needs --ssid or --ssid-hex"));
    }
    if (!isForced) {
        auto problem = action.needs == Needs::SafeConfiguration ? unprotectedBy(*options)
                                                                : std::optional<UsageError>();
        if (!problem) problem = missingPart(*options);
        if (problem) return Unexpected(refuse(action.name, *problem));
    }
    options->checksPassphrase = !isForced && action.needs == Needs::SafeConfiguration;
    const auto configuration = configurationOf(*options);
    if (!configuration) {
        complain(std::string(action.name) + ": " + configuration.error());
        return Unexpected(kExitFailed);
    }
    operands->configuration = *configuration;
    return *operands;
}

template <const Action& action>
int act() {
    const auto input = takeInput(action);
    if (!input) return input.error();
    DaemonClient daemon;
    if (const auto done = action.send(daemon, *input); !done) {
        return failFor(action.name, done.error(), daemon, input->interface);
    }
    return kExitDone;
}

// --- Their options ---

constexpr CLIOption kInterface = {.type = kCLIArgument,
                                  .longName = "INTERFACE",
                                  .shortHelp = "the name of the interface, such as wlan0"};

constexpr CLIOption exitStatus(const char* text) {
    return {.type = kCLISection, .shortHelp = "EXIT STATUS", .longHelp = text};
}

constexpr CLIOption kActionExitStatus = exitStatus(
    "0 the daemon has done it; 1 there is no daemon, it refused, or it went away\n"
    "before it replied; 2 usage error.");

constexpr CLIOption kConfigExitStatus = exitStatus(
    "0 the daemon has done it; 1 there is no daemon, it refused, or it went away\n"
    "before it replied, or the passphrase cannot be read, is not valid, or makes\n"
    "no key; 2 usage error.");

CLIOption gInterfaceOptions[][3] = {
    {kInterface, kActionExitStatus, {.type = kCLIEnd}},
    {kInterface, kActionExitStatus, {.type = kCLIEnd}},
    {kInterface, kActionExitStatus, {.type = kCLIEnd}},
    {kInterface, kActionExitStatus, {.type = kCLIEnd}},
};

CLIOption gRoleOptions[] = {
    kInterface,
    {.type = kCLIArgument,
     .longName = "ROLE",
     .shortHelp = "a role that the daemon knows, such as AP"},
    kActionExitStatus,
    {.type = kCLIEnd},
};

CLIOption gKickOptions[] = {
    kInterface,
    {.type = kCLIArgument,
     .longName = "ADDRESS",
     .shortHelp = "of the station, such as 02:00:00:00:01:01"},
    kActionExitStatus,
    {.type = kCLIEnd},
};

CLIOption gAddOptions[] = {
    HALVANE_CONFIG_PRESETS,
    HALVANE_CONFIG_OPTIONS,
    configFlag("force", &gIsForced, "send what cannot work, or protects nothing"),
    kInterface,
    kConfigExitStatus,
    {.type = kCLIEnd}};

CLIOption gRemoveOptions[] = {
    HALVANE_CONFIG_OPTIONS, kInterface, kConfigExitStatus, {.type = kCLIEnd}};

constexpr CLIOption kCommands[] = {
    {.type = kCLICommand,
     .longName = kAdd.name,
     .handler = handle<act<kAdd>>,
     .subOptions = gAddOptions,
     .shortHelp = "add a BSS configuration to an interface",
     .longHelp = "Asks the Wi-Fi daemon to add a configuration to those of an interface. The\n"
                 "options make the configuration; 'halvane config' prints it."},
    {.type = kCLICommand,
     .longName = kRemove.name,
     .handler = handle<act<kRemove>>,
     .subOptions = gRemoveOptions,
     .shortHelp = "remove a BSS configuration from an interface",
     .longHelp = "Asks the Wi-Fi daemon to remove a configuration from those of an interface.\n"
                 "The daemon receives the whole configuration that the options make, and\n"
                 "decides which of its own matches. 'halvaned-sim' compares the SSID alone."},
    {.type = kCLICommand,
     .longName = kEnable.name,
     .handler = handle<act<kEnable>>,
     .subOptions = gInterfaceOptions[0],
     .shortHelp = "enable an interface",
     .longHelp = "Asks the Wi-Fi daemon to enable an interface."},
    {.type = kCLICommand,
     .longName = kDisable.name,
     .handler = handle<act<kDisable>>,
     .subOptions = gInterfaceOptions[1],
     .shortHelp = "disable an interface",
     .longHelp = "Asks the Wi-Fi daemon to disable an interface."},
    {.type = kCLICommand,
     .longName = kRole.name,
     .handler = handle<act<kRole>>,
     .subOptions = gRoleOptions,
     .shortHelp = "change the role of an interface",
     .longHelp = "Asks the Wi-Fi daemon to give an interface another role."},
    {.type = kCLICommand,
     .longName = kStart.name,
     .handler = handle<act<kStart>>,
     .subOptions = gInterfaceOptions[2],
     .shortHelp = "start the network of an interface",
     .longHelp = "Asks the Wi-Fi daemon to start the network configured for an interface."},
    {.type = kCLICommand,
     .longName = kStop.name,
     .handler = handle<act<kStop>>,
     .subOptions = gInterfaceOptions[3],
     .shortHelp = "stop the network of an interface",
     .longHelp = "Asks the Wi-Fi daemon to stop the network of an interface."},
    {.type = kCLICommand,
     .longName = kKick.name,
     .handler = handle<act<kKick>>,
     .subOptions = gKickOptions,
     .shortHelp = "send a station away",
     .longHelp = "Asks the Wi-Fi daemon to send a station away from the networks of an\n"
                 "interface. The station may come back at once. 'halvane clients' lists the\n"
                 "stations. A daemon that does not know the request refuses it."},
};

}  // namespace

std::span<const CLIOption> daemonActionCommands() {
    return kCommands;
}

}  // namespace halvane::tool

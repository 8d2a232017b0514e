// What the Wi-Fi daemon is asked to do. The library answers true to each request, whatever the
// daemon says, so that the commands cannot tell whether it was done; they can tell that the daemon
// went away over it.
#include <optional>
#include <span>
#include <string>
#include <variant>
#include <vector>

#include "halvane/model/bss_config.h"
#include "halvane/utils/cli.h"

#include "tools/halvane/commands/command.h"
#include "tools/halvane/commands/daemon_session.h"
#include "tools/halvane/commands/daemon_watch.h"
#include "tools/halvane/options/argument.h"
#include "tools/halvane/options/config_options.h"
#include "tools/halvane/output/message.h"

namespace halvane::tool {

namespace {

struct ActionInput {
    std::string interface = {};
    std::string role = {};
    HalvaneBSSConfig configuration = HalvaneBSSConfig::init();
};

enum class Needs { Nothing, Role, Configuration };

struct Action {
    const char* name;
    Needs needs;  // besides an interface
    bool (*send)(HalvaneXPCClient&, const ActionInput&);
};

constexpr Action kAdd = {"add", Needs::Configuration, [](auto& client, const auto& input) {
                             return client.bssConfigAdd_forInterface_error(input.configuration,
                                                                           input.interface);
                         }};
constexpr Action kRemove = {"remove", Needs::Configuration, [](auto& client, const auto& input) {
                                return client.bssConfigRemove_forInterface_error(
                                    input.configuration, input.interface);
                            }};
constexpr Action kEnable = {"enable", Needs::Nothing, [](auto& client, const auto& input) {
                                return client.enableInterface_error(input.interface);
                            }};
constexpr Action kDisable = {"disable", Needs::Nothing, [](auto& client, const auto& input) {
                                 return client.disableInterface_error(input.interface);
                             }};
constexpr Action kRole = {"role", Needs::Role, [](auto& client, const auto& input) {
                              return client.changeInterfaceRole_role_error(input.interface,
                                                                           input.role);
                          }};
constexpr Action kStart = {"start", Needs::Nothing, [](auto& client, const auto& input) {
                               return client.bssStart_error(input.interface);
                           }};
constexpr Action kStop = {"stop", Needs::Nothing, [](auto& client, const auto& input) {
                              return client.bssStop_error(input.interface);
                          }};

// The operands, in their order.
std::variant<ActionInput, UsageError> takeOperands(const Action& action) {
    const std::vector<std::string> words = takeArguments();
    const bool hasRole = action.needs == Needs::Role;
    if (words.size() != (hasRole ? 2u : 1u)) {
        // Not repeated, for one of them may be the passphrase.
        return UsageError{hasRole ? "takes an interface and a role" : "takes one interface"};
    }
    if (!isInterfaceName(words[0])) {
        return UsageError{"'" + words[0] + "' is no name of an interface"};
    }
    ActionInput input = {.interface = words[0]};
    if (hasRole) {
        const std::string& role = words[1];
        if (role.empty() || !isText(role)) return UsageError{"'" + role + "' is no text of a role"};
        input.role = role;
    }
    return input;
}

// What is to be sent; where that cannot be had, an exit status, and it has been told why.
std::variant<ActionInput, int> takeInput(const Action& action) {
    auto operands = takeOperands(action);
    const auto options = takeConfigOptions();
    if (const auto* error = std::get_if<UsageError>(&operands)) return refuse(action.name, *error);
    if (!options) return refuse(action.name, options.error());
    if (action.needs != Needs::Configuration) return std::get<ActionInput>(operands);
    if (!options->configuration.ssid()) {
        return refuse(action.name, "needs --ssid or --ssid-hex");
    }
    const auto configuration = configurationOf(*options);
    if (!configuration) {
        complain(std::string(action.name) + ": " + configuration.error());
        return kExitFailed;
    }
    auto& input = std::get<ActionInput>(operands);
    input.configuration = *configuration;
    return input;
}

template <const Action& action>
int act() {
    const auto taken = takeInput(action);
    if (const int* status = std::get_if<int>(&taken)) return *status;
    const auto& input = std::get<ActionInput>(taken);
    const auto client = connectToDaemon();
    const auto interfaces = findDaemon(action.name, *client);
    if (!interfaces) return kExitFailed;
    if (!interfaces->mayHave(input.interface)) {
        complain(std::string(action.name) + ": the daemon lists no interface '" + input.interface +
                 "' ('halvane interfaces' prints its list)");
        return kExitFailed;
    }
    DaemonWatch watch;
    action.send(*client, input);
    return watch.hasDaemonLeft() ? failForLoss(action.name) : kExitDone;
}

// --- Their options ---

constexpr CLIOption kInterface = {
    .type = kCLIArgument, .longName = "INTERFACE", .shortHelp = "its name: wlan0"};

constexpr CLIOption exitStatus(const char* text) {
    return {.type = kCLISection, .shortHelp = "EXIT STATUS", .longHelp = text};
}

constexpr CLIOption kEnabledExitStatus = exitStatus(
    "0 the request was sent, which is all that is known: no list tells which interfaces are\n"
    "enabled; 1 there is no daemon, it lists no such interface, or it went away meanwhile;\n"
    "2 usage.");

constexpr CLIOption kRoleExitStatus = exitStatus(
    "0 the request was sent, which is all that is known: 'halvane interfaces' tells whether\n"
    "the daemon did it; 1 there is no daemon, it lists no such interface, or it went away\n"
    "meanwhile; 2 usage.");

constexpr CLIOption kNetworkExitStatus = exitStatus(
    "0 the request was sent, which is all that is known: only the stations that come and go,\n"
    "in 'halvane clients', show whether the daemon did it; 1 there is no daemon, it lists no\n"
    "such interface, or it went away meanwhile; 2 usage.");

constexpr CLIOption kConfigExitStatus = exitStatus(
    "0 the request was sent, which is all that is known: 'halvane configs' tells whether the\n"
    "daemon did it; 1 there is no daemon, it lists no such interface, it went away\n"
    "meanwhile, the passphrase could not be read, it is too long, or no key is made of it;\n"
    "2 usage.");

CLIOption gInterfaceOptions[][3] = {
    {kInterface, kEnabledExitStatus, {.type = kCLIEnd}},
    {kInterface, kEnabledExitStatus, {.type = kCLIEnd}},
    {kInterface, kNetworkExitStatus, {.type = kCLIEnd}},
    {kInterface, kNetworkExitStatus, {.type = kCLIEnd}},
};

CLIOption gRoleOptions[] = {
    kInterface,
    {.type = kCLIArgument, .longName = "ROLE", .shortHelp = "a word of the daemon's: AP"},
    kRoleExitStatus,
    {.type = kCLIEnd},
};

CLIOption gAddOptions[] = {
    HALVANE_CONFIG_OPTIONS, kInterface, kConfigExitStatus, {.type = kCLIEnd}};

CLIOption gRemoveOptions[] = {
    HALVANE_CONFIG_OPTIONS, kInterface, kConfigExitStatus, {.type = kCLIEnd}};

constexpr CLIOption kCommands[] = {
    {.type = kCLICommand,
     .longName = kAdd.name,
     .handler = handle<act<kAdd>>,
     .subOptions = gAddOptions,
     .shortHelp = "add a BSS configuration to an interface",
     .longHelp = "Asks the Wi-Fi daemon to add the configuration that the options make, which\n"
                 "'halvane config' prints, to those of an interface."},
    {.type = kCLICommand,
     .longName = kRemove.name,
     .handler = handle<act<kRemove>>,
     .subOptions = gRemoveOptions,
     .shortHelp = "remove a BSS configuration from an interface",
     .longHelp =
         "Asks the Wi-Fi daemon to remove a configuration from those of an interface. It is given\n"
         "the whole configuration that the options make; by what it finds its own is its affair.\n"
         "To 'halvaned-sim' the SSID is enough."},
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
     .longHelp = "Asks the Wi-Fi daemon to start the network that an interface is configured for."},
    {.type = kCLICommand,
     .longName = kStop.name,
     .handler = handle<act<kStop>>,
     .subOptions = gInterfaceOptions[3],
     .shortHelp = "stop the network of an interface",
     .longHelp = "Asks the Wi-Fi daemon to stop the network of an interface."},
};

}  // namespace

std::span<const CLIOption> daemonActionCommands() {
    return kCommands;
}

}  // namespace halvane::tool

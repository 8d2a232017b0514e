// Prints the lists of the Wi-Fi daemon.
#include <algorithm>
#include <cstdio>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "halvane/daemon/daemon_client.h"
#include "halvane/daemon/daemon_result.h"
#include "halvane/model/bss_config.h"
#include "halvane/model/client.h"
#include "halvane/model/device.h"
#include "halvane/model/interface.h"
#include "halvane/regulatory/channel.h"
#include "halvane/utils/cli.h"

#include "tools/halvane/commands/command.h"
#include "tools/halvane/commands/daemon_session.h"
#include "tools/halvane/commands/daemon_tables.h"
#include "tools/halvane/options/argument.h"
#include "tools/halvane/options/format_option.h"
#include "tools/halvane/output/channel_table.h"
#include "tools/halvane/output/config_json.h"
#include "tools/halvane/output/format.h"
#include "tools/halvane/output/list_table.h"
#include "tools/halvane/output/message.h"
#include "tools/halvane/output/model_json.h"
#include "tools/halvane/output/print_records.h"
#include "tools/halvane/output/regulatory_json.h"
#include "tools/halvane/output/surroundings.h"

namespace halvane::tool {

namespace {

// --- The commands ---

enum class Operand { None, Optional, Required };

using InterfaceName = std::optional<std::string>;

template <typename Record>
struct List {
    const char* name;
    Operand interface;
    const char* emptiness;  // what to say of an empty list
    DaemonResult<std::vector<Record>> (*query)(DaemonClient&, const InterfaceName&);
    void (*printText)(const std::vector<Record>&, DaemonClient&, const InterfaceName&);
};

ListLook lookOfOutput() {
    return ListLook(surroundingsOf(stdout));
}

template <typename Record>
void printPlainTable(const std::vector<Record>& records, DaemonClient&, const InterfaceName&) {
    printTableOf(records, lookOfOutput());
}

// Moves the configurations that the daemon has for the interface to the end of `rows`.
void takeConfigsOf(const std::string& interface, DaemonClient& daemon,
                   std::vector<HalvaneBSSConfig>& configs, std::vector<HostedConfig>& rows) {
    const auto own = daemon.configurations(interface);
    if (!own) return;
    for (const HalvaneBSSConfig& config : *own) {
        const auto found = std::ranges::find(configs, config);
        if (found == configs.end()) continue;
        configs.erase(found);
        rows.push_back({interface, config});
    }
}

// A configuration does not tell its interface, so the daemon is asked for those of each.
std::vector<HostedConfig> withInterfaces(std::vector<HalvaneBSSConfig> configs,
                                         DaemonClient& daemon) {
    std::vector<HostedConfig> rows;
    const auto interfaces = daemon.interfaces();
    if (interfaces && !configs.empty()) {
        for (const HalvaneInterface& interface : *interfaces) {
            if (!interface.ifName()) continue;
            takeConfigsOf(*interface.ifName(), daemon, configs, rows);
        }
    }
    for (const HalvaneBSSConfig& config : configs) rows.push_back({"", config});
    return rows;
}

void printConfigs(const std::vector<HalvaneBSSConfig>& configs, DaemonClient& daemon,
                  const InterfaceName& interface) {
    std::vector<HostedConfig> rows;
    if (interface) {
        for (const HalvaneBSSConfig& config : configs) rows.push_back({*interface, config});
    } else {
        rows = withInterfaces(configs, daemon);
    }
    printTableOf(rows, lookOfOutput());
}

constexpr List<HalvaneDevice> kDevices = {
    "devices", Operand::None, "the daemon has no device",
    [](auto& daemon, const auto&) { return daemon.devices(); }, printPlainTable};

constexpr List<HalvaneInterface> kInterfaces = {
    "interfaces", Operand::None, "the daemon has no interface",
    [](auto& daemon, const auto&) { return daemon.interfaces(); }, printPlainTable};

constexpr List<HalvaneChannel> kChannelList = {
    "channel-list", Operand::Required, "the interface has no channel",
    [](auto& daemon, const auto& interface) { return daemon.channels(*interface); },
    [](const auto& channels, auto&, const auto&) { printChannelTable(channels); }};

constexpr List<HalvaneBSSConfig> kConfigs = {
    "configs", Operand::Optional, "there is no configuration",
    [](auto& daemon, const auto& interface) { return daemon.configurations(interface); },
    printConfigs};

constexpr List<HalvaneClient> kClients = {
    "clients", Operand::None, "no station is associated",
    [](auto& daemon, const auto&) { return daemon.stations(); }, printPlainTable};

std::optional<UsageError> problemOf(const std::vector<std::string>& arguments, Operand interface) {
    if (interface == Operand::None && !arguments.empty()) {
        return UsageError{"takes no argument ('" + arguments[0] + "')"};
    }
    if (arguments.size() > 1) return UsageError{"takes one interface"};
    if (interface == Operand::Required && arguments.empty()) return UsageError{"no interface"};
    if (!arguments.empty() && !isInterfaceName(arguments[0])) {
        return UsageError{"'" + arguments[0] + "' is no name of an interface"};
    }
    return std::nullopt;
}

template <const auto& list>
int printList() {
    const std::vector<std::string> arguments = takeArguments();
    const auto format = takeFormat();
    if (!format) return refuse(list.name, format.error());
    if (const auto problem = problemOf(arguments, list.interface)) {
        return refuse(list.name, *problem);
    }
    const auto interface = arguments.empty() ? InterfaceName() : InterfaceName(arguments[0]);
    DaemonClient daemon;
    const auto records = list.query(daemon, interface);
    if (!records) {
        return interface ? failFor(list.name, records.error(), daemon, *interface)
                         : failFor(list.name, records.error());
    }
    if (*format != Format::Text) {
        printRecords(*records, *format,
                     [](const auto& record) { return record.skeletonRepresentation(); });
        return kExitDone;
    }
    list.printText(*records, daemon, interface);
    if (records->empty()) complain(std::string(list.name) + ": " + list.emptiness);
    return kExitDone;
}

// --- Their options ---

constexpr CLIOption kExitStatus = {
    .type = kCLISection,
    .shortHelp = "EXIT STATUS",
    .longHelp =
        "0 success; 1 there is no daemon, it refused, it went away before it replied,\n"
        "its reply cannot be read, or writing failed; 2 usage error."};

CLIOption gListOptions[][3] = {
    {formatOption("json, plist: one document; jsonl: one line per device."),
     kExitStatus,
     {.type = kCLIEnd}},
    {formatOption("json, plist: one document; jsonl: one line per interface. All include\n"
                  "the device and the channels of each interface."),
     kExitStatus,
     {.type = kCLIEnd}},
    {formatOption("json, plist: one document; jsonl: one line per client. All include the\n"
                  "BSS record of each client."),
     kExitStatus,
     {.type = kCLIEnd}},
};

CLIOption gChannelListOptions[] = {
    formatOption("json, plist: one document; jsonl: one line per channel."),
    {.type = kCLIArgument,
     .longName = "INTERFACE",
     .shortHelp = "the name of the interface, such as wlan0"},
    kExitStatus,
    {.type = kCLIEnd},
};

CLIOption gConfigsOptions[] = {
    formatOption("json, plist: one document; jsonl: one line per configuration. All\n"
                 "include passphrases and keys."),
    {.type = kCLIArgument,
     .longName = "INTERFACE",
     .flags = kCLIOptionalValue,
     .shortHelp = "only those of this interface"},
    kExitStatus,
    {.type = kCLIEnd},
};

constexpr CLIOption kCommands[] = {
    {.type = kCLICommand,
     .longName = kDevices.name,
     .handler = handle<printList<kDevices>>,
     .subOptions = gListOptions[0],
     .shortHelp = "print the daemon's Wi-Fi devices",
     .longHelp = "Prints the Wi-Fi daemon's devices: number, radio chains, address."},
    {.type = kCLICommand,
     .longName = kInterfaces.name,
     .handler = handle<printList<kInterfaces>>,
     .subOptions = gListOptions[1],
     .shortHelp = "print the daemon's interfaces",
     .longHelp = "Prints the Wi-Fi daemon's network interfaces: name, role, subsystem, number\n"
                 "of channels, address."},
    {.type = kCLICommand,
     .longName = kChannelList.name,
     .handler = handle<printList<kChannelList>>,
     .subOptions = gChannelListOptions,
     .shortHelp = "print the channels of an interface",
     .longHelp = "Prints the Wi-Fi daemon's channels of an interface: number, frequency in\n"
                 "MHz, and the same flags as 'halvane country'."},
    {.type = kCLICommand,
     .longName = kConfigs.name,
     .handler = handle<printList<kConfigs>>,
     .subOptions = gConfigsOptions,
     .shortHelp = "print the daemon's BSS configurations",
     .longHelp = "Prints the Wi-Fi daemon's configurations of networks, of all interfaces or\n"
                 "of one: interface, preferred order, channel, width in MHz, security, keys,\n"
                 "SSID. The daemon chooses where 'auto' stands. The table has no passphrases."},
    {.type = kCLICommand,
     .longName = kClients.name,
     .handler = handle<printList<kClients>>,
     .subOptions = gListOptions[2],
     .shortHelp = "print the stations of hosted networks",
     .longHelp = "Prints the stations that the Wi-Fi daemon knows, of all interfaces: address,\n"
                 "maker, whether the station is associated or gone, its signal in dBm, when it\n"
                 "joined and left in s of the daemon's up-time, and the reason for which it is\n"
                 "gone. From 120 columns on also its rate in Mbit/s, security and channel."},
};

}  // namespace

std::span<const CLIOption> daemonListCommands() {
    return kCommands;
}

}  // namespace halvane::tool

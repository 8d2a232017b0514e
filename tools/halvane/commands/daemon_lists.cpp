// Prints the lists of the Wi-Fi daemon.
#include <cinttypes>
#include <cstdint>
#include <cstdio>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "halvane/base/escaped_text.h"
#include "halvane/base/number.h"
#include "halvane/daemon/daemon_client.h"
#include "halvane/daemon/daemon_result.h"
#include "halvane/ie/fancy_formatting.h"
#include "halvane/model/bss_config.h"
#include "halvane/model/bss_option_table_internal.h"
#include "halvane/model/client.h"
#include "halvane/model/device.h"
#include "halvane/model/interface.h"
#include "halvane/regulatory/channel.h"
#include "halvane/utils/cli.h"

#include "tools/halvane/commands/command.h"
#include "tools/halvane/commands/daemon_session.h"
#include "tools/halvane/options/argument.h"
#include "tools/halvane/options/format_option.h"
#include "tools/halvane/output/channel_table.h"
#include "tools/halvane/output/config_json.h"
#include "tools/halvane/output/format.h"
#include "tools/halvane/output/model_json.h"
#include "tools/halvane/output/print_records.h"
#include "tools/halvane/output/regulatory_json.h"
#include "tools/halvane/output/text_table.h"

namespace halvane::tool {

namespace {

// --- Cells of tables; "-" for an absent value ---

std::string cellOf(const std::string& text) {
    return text.empty() ? "-" : escapedText(text);
}

std::string cellOf(const std::optional<std::string>& text) {
    return cellOf(text.value_or(""));
}

std::string addressCell(const std::optional<ByteBuffer>& address) {
    return cellOf(address ? FancyFormatting::formattedMAC(*address) : "");
}

std::string cellOf(const std::optional<Number>& number) {
    return number ? number->description() : "-";
}

// Microseconds of up-time as seconds. 0 means never.
std::string secondsCell(std::uint64_t microseconds) {
    if (microseconds == 0) return "-";
    char text[32];
    std::snprintf(text, sizeof(text), "%" PRIu64 ".%03u s", microseconds / 1000000,
                  static_cast<unsigned>(microseconds / 1000 % 1000));
    return text;
}

std::string securityCell(const HalvaneBSSConfig& config) {
    std::string words;
    for (const BSSOption& option : kSecurityOptions) {
        if ((config.*option.isAllowed)())
            words.append(words.empty() ? "" : ",").append(option.word);
    }
    return cellOf(words);
}

// --- Tables ---

constexpr Column<HalvaneDevice> kDeviceColumns[] = {
    {"Index", Align::Right,
     [](const auto& device) { return std::to_string(device.deviceIndex()); }},
    {"Chains", Align::Right,
     [](const auto& device) { return std::to_string(device.numRadioChains()); }},
    {"MAC address", Align::Left,
     [](const auto& device) { return addressCell(device.MACAddress()); }},
};

constexpr Column<HalvaneInterface> kInterfaceColumns[] = {
    {"Interface", Align::Left, [](const auto& interface) { return cellOf(interface.ifName()); }},
    {"Role", Align::Left, [](const auto& interface) { return cellOf(interface.ifRole()); }},
    {"Subsystem", Align::Left,
     [](const auto& interface) { return cellOf(interface.ifSubsystem()); }},
    {"Channels", Align::Right,
     [](const auto& interface) { return std::to_string(interface.availableChannels().size()); }},
    {"MAC address", Align::Left,
     [](const auto& interface) { return addressCell(interface.ifMAC()); }},
};

constexpr Column<HalvaneBSSConfig> kConfigColumns[] = {
    {"Order", Align::Right,
     [](const auto& config) { return std::to_string(config.preferredOrder()); }},
    {"Channel", Align::Right,
     [](const auto& config) {
         return config.channel() != 0 ? std::to_string(config.channel()) : std::string("any");
     }},
    {"Security", Align::Left, securityCell},
    {"SSID", Align::Left,
     [](const auto& config) { return config.ssid() ? escapedText(config.ssid()->bytes()) : "-"; }},
};

constexpr Column<HalvaneClient> kClientColumns[] = {
    {"MAC address", Align::Left, [](const auto& client) { return addressCell(client.mac()); }},
    {"Associated", Align::Left,
     [](const auto& client) { return std::string(client.isAssociated() ? "yes" : "no"); }},
    {"RSSI", Align::Right, [](const auto& client) { return cellOf(client.RSSI()); }},
    {"Joined", Align::Right, [](const auto& client) { return secondsCell(client.joinTime()); }},
    {"Left", Align::Right, [](const auto& client) { return secondsCell(client.leftTime()); }},
    {"Reason", Align::Right,
     [](const auto& client) { return std::to_string(client.deauthReason()); }},
};

// --- The commands ---

enum class Operand { None, Optional, Required };

using InterfaceName = std::optional<std::string>;

template <typename Record>
struct List {
    const char* name;
    Operand interface;
    DaemonResult<std::vector<Record>> (*query)(DaemonClient&, const InterfaceName&);
    void (*printText)(const std::vector<Record>&);
};

constexpr List<HalvaneDevice> kDevices = {
    "devices", Operand::None, [](auto& daemon, const auto&) { return daemon.devices(); },
    [](const auto& devices) { printTable<HalvaneDevice>(kDeviceColumns, devices); }};

constexpr List<HalvaneInterface> kInterfaces = {
    "interfaces", Operand::None, [](auto& daemon, const auto&) { return daemon.interfaces(); },
    [](const auto& interfaces) { printTable<HalvaneInterface>(kInterfaceColumns, interfaces); }};

constexpr List<HalvaneChannel> kChannelList = {
    "channel-list", Operand::Required,
    [](auto& daemon, const auto& interface) { return daemon.channels(*interface); },
    printChannelTable};

constexpr List<HalvaneBSSConfig> kConfigs = {
    "configs", Operand::Optional,
    [](auto& daemon, const auto& interface) { return daemon.configurations(interface); },
    [](const auto& configs) { printTable<HalvaneBSSConfig>(kConfigColumns, configs); }};

constexpr List<HalvaneClient> kClients = {
    "clients", Operand::None, [](auto& daemon, const auto&) { return daemon.stations(); },
    [](const auto& clients) { printTable<HalvaneClient>(kClientColumns, clients); }};

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

template <typename Record>
void print(const std::vector<Record>& records, Format format,
           void (*printText)(const std::vector<Record>&)) {
    if (format == Format::Text) return printText(records);
    printRecords(records, format,
                 [](const Record& record) { return record.skeletonRepresentation(); });
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
    if (!records) return failFor(list.name, records.error());
    print(*records, *format, list.printText);
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
     .longHelp = "Prints the Wi-Fi daemon's channels of an interface, with the same flags as\n"
                 "'halvane country'."},
    {.type = kCLICommand,
     .longName = kConfigs.name,
     .handler = handle<printList<kConfigs>>,
     .subOptions = gConfigsOptions,
     .shortHelp = "print the daemon's BSS configurations",
     .longHelp = "Prints the Wi-Fi daemon's configurations of networks, of all interfaces or\n"
                 "of one: preferred order, channel, security, SSID."},
    {.type = kCLICommand,
     .longName = kClients.name,
     .handler = handle<printList<kClients>>,
     .subOptions = gListOptions[2],
     .shortHelp = "print the stations of hosted networks",
     .longHelp = "Prints the stations that the Wi-Fi daemon knows, of all interfaces: address,\n"
                 "whether the station is associated, its signal in dBm, when it joined and\n"
                 "left in seconds of the daemon's up-time, and the reason code of its last\n"
                 "deauthentication."},
};

}  // namespace

std::span<const CLIOption> daemonListCommands() {
    return kCommands;
}

}  // namespace halvane::tool

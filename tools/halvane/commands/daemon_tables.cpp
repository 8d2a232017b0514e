#include "tools/halvane/commands/daemon_tables.h"

#include <array>
#include <cinttypes>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <optional>
#include <span>
#include <string_view>

#include "halvane/air/security.h"
#include "halvane/base/byte_buffer.h"
#include "halvane/base/mac_address.h"
#include "halvane/base/number.h"
#include "halvane/ie/fancy_formatting.h"
#include "halvane/model/bss_option_table_internal.h"

#include "tools/halvane/config/configured_security.h"
#include "tools/halvane/input/maker_list.h"
#include "tools/halvane/networks/security_label.h"
#include "tools/halvane/output/fitted_table.h"
#include "tools/halvane/output/maker_name.h"
#include "tools/halvane/output/reason_code.h"
#include "tools/halvane/output/shown_text.h"
#include "tools/halvane/output/signal_bar.h"
#include "tools/halvane/output/text_table.h"
#include "tools/halvane/output/theme.h"

namespace halvane::tool {

namespace {

constexpr std::size_t kWideTable = 120;  // the width from which there is room for more

constexpr FittedColumn left(const char* name, const char* header, std::size_t least,
                            std::size_t most = kAnyWidth) {
    return {.name = name, .header = header, .align = Align::Left, .least = least, .most = most};
}
constexpr FittedColumn right(const char* name, const char* header, std::size_t least) {
    return {
        .name = name, .header = header, .align = Align::Right, .least = least, .most = kAnyWidth};
}
constexpr FittedColumn from(std::size_t width, FittedColumn column) {
    column.from = width;
    return column;
}

// --- Cells ---

FittedCell addressCell(const std::optional<ByteBuffer>& address, const ListLook& look) {
    return ownCell(address ? FancyFormatting::formattedMAC(*address) : "", look);
}

FittedCell numberCell(const std::optional<Number>& number, const ListLook& look) {
    return ownCell(number ? number->description() : "", look);
}

// Microseconds of up-time as seconds. 0 means never.
FittedCell secondsCell(std::uint64_t microseconds, const ListLook& look) {
    if (microseconds == 0) return ownCell("", look);
    char text[32];
    std::snprintf(text, sizeof(text), "%" PRIu64 ".%03u", microseconds / 1000000,
                  static_cast<unsigned>(microseconds / 1000 % 1000));
    return ownCell(text, look);
}

void addWord(std::string& words, std::string_view word) {
    words.append(words.empty() ? "" : ",").append(word);
}

// WPA3 has no word of its own: it is WPA2 with SAE, and both if a station may do without SAE.
std::string_view securityWord(const HalvaneBSSConfig& config, const BSSOption& option) {
    if (option.isAllowed != &HalvaneBSSConfig::allowSecurityWPA2 || !allowsSAE(config)) {
        return option.word;
    }
    const bool mayDoWithout = config.allowKeyManagementPSK() || config.allowKeyManagement8021X();
    return shortSecurityName(mayDoWithout ? air::Security::Wpa2Wpa3Personal
                                          : air::Security::Wpa3Personal);
}

FittedCell securityCell(const HalvaneBSSConfig& config, const ListLook& look) {
    std::string words;
    for (const BSSOption& option : kSecurityOptions) {
        if ((config.*option.isAllowed)()) addWord(words, securityWord(config, option));
    }
    return ownCell(words, look);
}

FittedCell keysCell(const HalvaneBSSConfig& config, const ListLook& look) {
    std::string words;
    for (const BSSOption& option : kKeyManagementOptions) {
        if ((config.*option.isAllowed)()) addWord(words, option.word);
    }
    if (allowsSAE(config)) addWord(words, "SAE");
    return ownCell(words, look);
}

// The daemon chooses a channel or width that is 0.
FittedCell choiceCell(std::int64_t number, const ListLook& look) {
    return ownCell(number != 0 ? std::to_string(number) : "auto", look);
}

// --- Devices and interfaces ---

constexpr auto kDeviceColumns = std::to_array<FittedColumn>({
    right("index", "INDEX", 5),
    right("chains", "CHAINS", 6),
    left("address", "ADDRESS", 17),
});
constexpr auto kDeviceCells = std::to_array<ListCell<HalvaneDevice>>({
    [](const auto& device, const ListLook& look) {
        return ownCell(std::to_string(device.deviceIndex()), look);
    },
    [](const auto& device, const ListLook& look) {
        return ownCell(std::to_string(device.numRadioChains()), look);
    },
    [](const auto& device, const ListLook& look) { return addressCell(device.MACAddress(), look); },
});

constexpr auto kInterfaceColumns = std::to_array<FittedColumn>({
    left("interface", "INTERFACE", 9),
    left("role", "ROLE", 4),
    left("subsystem", "SUBSYSTEM", 9),
    right("channels", "CHANNELS", 8),
    left("address", "ADDRESS", 17),
});
constexpr auto kInterfaceSqueezes = std::to_array<Squeeze>({
    {.column = "subsystem", .least = 9},
    {.column = "role", .least = 4},
});
constexpr auto kInterfaceCells = std::to_array<ListCell<HalvaneInterface>>({
    [](const auto& interface, const ListLook& look) {
        return shownCell(interface.ifName().value_or(""), look);
    },
    [](const auto& interface, const ListLook& look) {
        return shownCell(interface.ifRole().value_or(""), look);
    },
    [](const auto& interface, const ListLook& look) {
        return shownCell(interface.ifSubsystem().value_or(""), look);
    },
    [](const auto& interface, const ListLook& look) {
        return ownCell(std::to_string(interface.availableChannels().size()), look);
    },
    [](const auto& interface, const ListLook& look) {
        return addressCell(interface.ifMAC(), look);
    },
});

// --- Configurations ---

FittedCell nameCell(const HalvaneBSSConfig& config, const ListLook& look) {
    const auto& ssid = config.ssid();
    if (!ssid) return ownCell("", look);
    const std::span<const std::uint8_t> octets = ssid->bytes();
    return {shownName({reinterpret_cast<const char*>(octets.data()), octets.size()}, look.rules)};
}

constexpr auto kConfigColumns = std::to_array<FittedColumn>({
    left("interface", "INTERFACE", 9),
    right("order", "ORDER", 5),
    right("channel", "CH", 3),
    right("width", "MHz", 4),
    left("security", "SECURITY", 8),
    left("keys", "KEYS", 4),
    left("ssid", "SSID", 4),
});
constexpr auto kConfigSqueezes = std::to_array<Squeeze>({{.column = "ssid", .least = 12}});
constexpr auto kConfigCells = std::to_array<ListCell<HostedConfig>>({
    [](const auto& row, const ListLook& look) { return shownCell(row.interface, look); },
    [](const auto& row, const ListLook& look) {
        return ownCell(std::to_string(row.config.preferredOrder()), look);
    },
    [](const auto& row, const ListLook& look) { return choiceCell(row.config.channel(), look); },
    [](const auto& row, const ListLook& look) {
        return choiceCell(row.config.channelWidth(), look);
    },
    [](const auto& row, const ListLook& look) { return securityCell(row.config, look); },
    [](const auto& row, const ListLook& look) { return keysCell(row.config, look); },
    [](const auto& row, const ListLook& look) { return nameCell(row.config, look); },
});

// --- Stations ---

FittedCell makerCell(const HalvaneClient& client, const ListLook& look) {
    const auto mac = MacAddress::fromBytes(client.mac().bytes());
    return ownCell(mac ? MakerList::ofSystem().cell(*mac) : "", look);
}

bool isGone(const HalvaneClient& client) {
    return !client.isAssociated() && client.leftTime() != 0;
}

FittedCell stateCell(const HalvaneClient& client, const ListLook& look) {
    if (client.isAssociated()) return ownCell("associated", look, Meaning::Good);
    return isGone(client) ? ownCell("gone", look, Meaning::Secondary) : ownCell("", look);
}

// A signal above 0 dBm is not believed.
std::optional<int> signalOf(const HalvaneClient& client) {
    const auto& signal = client.RSSI();
    if (!signal || signal->int64() > 0 || signal->int64() < INT8_MIN) return std::nullopt;
    return static_cast<int>(signal->int64());
}

FittedCell signalCell(const HalvaneClient& client, const ListLook& look) {
    const auto signal = signalOf(client);
    if (!signal) return ownCell("", look);
    return ownCell(std::to_string(*signal), look, meaningOfSignal(*signal));
}

FittedCell barCell(const HalvaneClient& client, const ListLook& look) {
    const auto signal = signalOf(client);
    if (!signal) return {};
    return ownCell(signalBar(*signal, look.glyphs), look, meaningOfBar(*signal));
}

// A station that is still there has no reason to have left.
FittedCell reasonCell(const HalvaneClient& client, const ListLook& look, bool isBrief) {
    return ownCell(isGone(client) ? reasonText(client.deauthReason(), isBrief) : "", look);
}

constexpr auto kClientColumns = std::to_array<FittedColumn>({
    left("address", "ADDRESS", 17),
    left("maker", "MAKER", 5, kMakerCells),
    left("state", "STATE", 10),
    right("signal", "dBm", 3),
    left("bar", "", 4),
    from(kWideTable, right("rate", "Mbit/s", 6)),
    from(kWideTable, left("security", "SECURITY", 8)),
    from(kWideTable, right("channel", "CH", 3)),
    right("joined", "JOINED s", 8),
    right("left", "LEFT s", 8),
    left("reason", "REASON", 6),
});
// The maker gives way first.
constexpr auto kClientSqueezes = std::to_array<Squeeze>({
    {.column = "maker", .least = 8},
    {.column = "reason", .least = 6},
    {.column = "security", .least = 8},
});
template <bool isBrief>
constexpr auto kClientCells = std::to_array<ListCell<HalvaneClient>>({
    [](const auto& client, const ListLook& look) { return addressCell(client.mac(), look); },
    makerCell,
    stateCell,
    signalCell,
    barCell,
    [](const auto& client, const ListLook& look) { return numberCell(client.maxPHYRate(), look); },
    [](const auto& client, const ListLook& look) {
        return shownCell(client.securityFriendlyName().value_or(""), look);
    },
    [](const auto& client, const ListLook& look) { return numberCell(client.channel(), look); },
    [](const auto& client, const ListLook& look) { return secondsCell(client.joinTime(), look); },
    [](const auto& client, const ListLook& look) { return secondsCell(client.leftTime(), look); },
    [](const auto& client, const ListLook& look) { return reasonCell(client, look, isBrief); },
});

template <bool isBrief>
RecordList<HalvaneClient> clientList() {
    return {{kClientColumns, kClientSqueezes}, kClientCells<isBrief>};
}

// Whether the table has room for the whole words of each reason, where the maker alone gives way.
bool fitsWholeReasons(const std::vector<HalvaneClient>& clients, const ListLook& look) {
    if (!look.width) return true;
    if (*look.width < kWideTable) return false;
    RecordList<HalvaneClient> list = clientList<false>();
    list.design.squeezes = list.design.squeezes.first(1);
    FittedTable table(list.design, look.width);
    for (const HalvaneClient& client : clients) table.fit(rowOf(list, table, client, look));
    table.settle();
    const std::size_t reason = table.standing().size() - 1;
    return table.beginOf(reason) + table.cellsOf(reason) <= *look.width;
}

static_assert(kDeviceCells.size() == kDeviceColumns.size());
static_assert(kInterfaceCells.size() == kInterfaceColumns.size());
static_assert(kConfigCells.size() == kConfigColumns.size());
static_assert(kClientCells<true>.size() == kClientColumns.size());

}  // namespace

void printTableOf(const std::vector<HalvaneDevice>& devices, const ListLook& look) {
    printList<HalvaneDevice>({{kDeviceColumns, {}}, kDeviceCells}, devices, look);
}

void printTableOf(const std::vector<HalvaneInterface>& interfaces, const ListLook& look) {
    printList<HalvaneInterface>({{kInterfaceColumns, kInterfaceSqueezes}, kInterfaceCells},
                                interfaces, look);
}

void printTableOf(const std::vector<HostedConfig>& configs, const ListLook& look) {
    printList<HostedConfig>({{kConfigColumns, kConfigSqueezes}, kConfigCells}, configs, look);
}

void printTableOf(const std::vector<HalvaneClient>& clients, const ListLook& look) {
    printList(fitsWholeReasons(clients, look) ? clientList<false>() : clientList<true>(), clients,
              look);
}

}  // namespace halvane::tool

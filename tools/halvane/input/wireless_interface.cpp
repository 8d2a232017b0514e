#include "tools/halvane/input/wireless_interface.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <memory>
#include <net/if.h>
#include <utility>

#include "tools/halvane/input/interface_facts.h"

namespace halvane::tool {

namespace {

constexpr std::array<const char*, 13> kModeNames = {
    "unspecified", "IBSS",       "managed", "AP",         "AP/VLAN",          "WDS", "monitor",
    "mesh point",  "P2P-client", "P2P-GO",  "P2P-device", "outside of a BSS", "NAN",
};

struct NameListFreer {
    void operator()(struct if_nameindex* list) const { ::if_freenameindex(list); }
};
using NameList = std::unique_ptr<struct if_nameindex, NameListFreer>;

}  // namespace

std::string modeName(InterfaceMode mode) {
    const auto number = static_cast<std::size_t>(mode);
    return number < kModeNames.size() ? kModeNames.at(number) : "mode " + std::to_string(number);
}

const WirelessInterface* findInterface(std::span<const WirelessInterface> interfaces,
                                       const std::string& name) {
    const auto found = std::ranges::find(interfaces, name, &WirelessInterface::name);
    return found != interfaces.end() ? &*found : nullptr;
}

std::string listText(std::span<const WirelessInterface> interfaces) {
    std::string text;
    for (const WirelessInterface& interface : interfaces) {
        if (!text.empty()) text += ", ";
        text += interface.name + " (" + modeName(interface.mode) + ")";
    }
    return text;
}

std::string thereAre(std::span<const WirelessInterface> interfaces) {
    if (interfaces.empty()) return "there is no Wi-Fi interface";
    return (interfaces.size() == 1 ? "there is: " : "there are: ") + listText(interfaces);
}

std::vector<WirelessInterface> monitorInterfaces() {
    std::vector<WirelessInterface> found;
    const NameList list(::if_nameindex());
    for (const struct if_nameindex* entry = list.get(); entry && entry->if_index != 0; ++entry) {
        const auto facts = interfaceFacts(entry->if_name);
        if (!facts || !isMonitorType(facts->hardwareType)) continue;
        found.push_back({entry->if_name, facts->index, InterfaceMode::Monitor});
    }
    return found;
}

std::vector<WirelessInterface> joined(std::vector<WirelessInterface> told,
                                      std::vector<WirelessInterface> found) {
    for (WirelessInterface& interface : found) {
        if (!findInterface(told, interface.name)) told.push_back(std::move(interface));
    }
    std::ranges::stable_sort(told, {}, &WirelessInterface::index);
    return told;
}

}  // namespace halvane::tool

#include "tools/halvane/input/nl80211_interfaces.h"

#include <linux/nl80211.h>
#include <utility>

#include "tools/halvane/input/nl80211_message.h"

namespace halvane::tool {

Result<std::vector<WirelessInterface>, Nl80211Fault> interfacesOf(Nl80211Channel& channel) {
    const auto answer = channel.ask({.command = NL80211_CMD_GET_INTERFACE, .isList = true});
    if (!answer) return Unexpected(answer.error());
    std::vector<WirelessInterface> interfaces;
    for (const auto& message : answer->messages) {
        auto interface = readInterface(message);
        if (interface && *interface) interfaces.push_back(std::move(**interface));
    }
    return joined({}, std::move(interfaces));
}

std::vector<WirelessInterface> wirelessInterfaces() {
    std::vector<WirelessInterface> told;
    if (const auto channel = Nl80211Channel::open()) {
        if (auto interfaces = interfacesOf(**channel)) told = std::move(*interfaces);
    }
    return joined(std::move(told), monitorInterfaces());
}

}  // namespace halvane::tool

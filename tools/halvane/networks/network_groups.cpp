#include "tools/halvane/networks/network_groups.h"

#include <algorithm>
#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <tuple>
#include <utility>

#include "halvane/air/channel_use.h"
#include "halvane/base/mac_address.h"

#include "tools/halvane/survey/network_statistics.h"

namespace halvane::tool {

namespace {

template <typename Key, typename KeyOf>
std::vector<NetworkGroup> groupsBy(std::span<const Network> networks, KeyOf keyOf) {
    std::vector<NetworkGroup> groups;
    std::map<Key, std::size_t> places;
    for (const Network& network : networks) {
        const auto [place, isNew] = places.emplace(keyOf(network), groups.size());
        if (isNew) groups.emplace_back();
        groups[place->second].push_back(&network);
    }
    return groups;
}

// The address without what tells the networks of one radio apart.
MacAddress radioAddress(const MacAddress& bssid) {
    constexpr unsigned kLocal = 0x02;
    constexpr unsigned kNetwork = 0x0F;
    auto octets = bssid.octets();
    octets.front() = static_cast<std::uint8_t>(octets.front() & ~kLocal);
    octets.back() = static_cast<std::uint8_t>(octets.back() & ~kNetwork);
    return MacAddress(octets);
}

struct Name {
    enum class Kind { Ssid, Mesh, Hidden, Missing, CutOff };

    Kind kind;
    std::string octets;

    auto operator<=>(const Name&) const = default;
};

Name::Kind kindOf(const Network& network) {
    if (network.details.meshID) return Name::Kind::Mesh;
    if (isNameCutOff(network)) return Name::Kind::CutOff;
    if (!network.profile.ssid) return Name::Kind::Missing;
    return isHidden(network) ? Name::Kind::Hidden : Name::Kind::Ssid;
}

struct Radio {
    std::string accessPoint;
    MacAddress address;
    std::optional<air::Band> band;
    int channel;
    int width;

    auto operator<=>(const Radio&) const = default;
};

Radio radioOf(const Network& network) {
    const air::ChannelUse& use = network.profile.channel;
    const std::string& name = network.details.accessPoint;
    Radio radio{.accessPoint = name,
                .address = radioAddress(network.bssid),
                .band = use.band ? std::optional(use.band->value) : std::nullopt,
                .channel = use.primaryChannel ? use.primaryChannel->value : 0,
                .width = use.span->width};
    if (name.empty()) return radio;
    radio.address = {};
    radio.width = 0;
    return radio;
}

}  // namespace

std::vector<NetworkGroup> groupsByName(std::span<const Network> networks) {
    return groupsBy<Name>(networks, [](const Network& network) {
        return Name{kindOf(network), isNamed(network) ? std::string(nameOf(network)) : ""};
    });
}

std::size_t nameCount(std::span<const Network> networks) {
    return static_cast<std::size_t>(std::ranges::count_if(
        groupsByName(networks), [](const NetworkGroup& group) { return isNamed(*group.front()); }));
}

std::vector<NetworkGroup> groupsByRadio(std::span<const Network> networks) {
    return groupsBy<Radio>(networks, radioOf);
}

std::optional<int> signalOf(const NetworkGroup& group) {
    std::optional<int> strongest;
    for (const Network* const network : group) {
        const auto signal = signalOf(*network);
        if (signal && (!strongest || *signal > *strongest)) strongest = signal;
    }
    return strongest;
}

std::size_t accessPointCount(const NetworkGroup& group) {
    std::set<std::string> names;
    std::set<MacAddress> addresses;
    std::set<const NetworkStatistics*> senders;
    for (const Network* const network : group) {
        if (!network->details.accessPoint.empty()) {
            names.insert(network->details.accessPoint);
        } else if (network->profile.mld) {
            addresses.insert(network->profile.mld->address);
        } else {
            senders.insert(network->statistics);
        }
    }
    return names.size() + addresses.size() + senders.size();
}

std::vector<int> channelsOf(const NetworkGroup& group, air::Band band) {
    std::set<int> channels;
    for (const Network* const network : group) {
        const air::ChannelUse& use = network->profile.channel;
        if (use.band && use.band->value == band && use.primaryChannel) {
            channels.insert(use.primaryChannel->value);
        }
    }
    return {channels.begin(), channels.end()};
}

}  // namespace halvane::tool

// Networks that belong together: those of one name, or those of one radio.
//
// Pure functions; any thread may call them.
#ifndef TOOLS_HALVANE_NETWORKS_NETWORK_GROUPS_H
#define TOOLS_HALVANE_NETWORKS_NETWORK_GROUPS_H

#include <cstddef>
#include <optional>
#include <span>
#include <vector>

#include "halvane/air/channel.h"

#include "tools/halvane/survey/network.h"

namespace halvane::tool {

// In the order of their networks. Never empty.
using NetworkGroup = std::vector<const Network*>;

// The groups, in the order of their first networks, borrow the networks.
// Hidden networks are one group, whatever they are, and so are those without an SSID and those
// whose name was cut off. A mesh is not its SSID's namesake.
std::vector<NetworkGroup> groupsByName(std::span<const Network> networks);

// How many names there are. Hidden networks, and those whose name was cut off, have none.
std::size_t nameCount(std::span<const Network> networks);

// A radio sends on one channel of one width from addresses that differ in their last four bits and
// in the bit of local addresses, or under one name of an access point.
std::vector<NetworkGroup> groupsByRadio(std::span<const Network> networks);

// The strongest of the signals, in dBm.
std::optional<int> signalOf(const NetworkGroup& group);

// The access points: those with one name or one multi-link address, and those that share beacons,
// are one; otherwise each address is one.
std::size_t accessPointCount(const NetworkGroup& group);

// The primary channels in a band, rising, each once.
std::vector<int> channelsOf(const NetworkGroup& group, air::Band band);

}  // namespace halvane::tool

#endif

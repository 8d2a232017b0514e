// Networks in the order that a user asks for.
//
// Pure functions; any thread may call them.
#ifndef TOOLS_HALVANE_NETWORKS_NETWORK_ORDER_H
#define TOOLS_HALVANE_NETWORKS_NETWORK_ORDER_H

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "halvane/base/result.h"

#include "tools/halvane/networks/network_columns.h"
#include "tools/halvane/survey/network.h"

namespace halvane::tool {

struct OrderKey {
    const NetworkColumn* column;
    bool isFalling = false;

    bool operator==(const OrderKey&) const = default;
};

struct NetworkOrder {
    std::vector<OrderKey> keys{};  // the first decides
    bool isReversed = false;       // the whole order, absent values too

    bool operator==(const NetworkOrder&) const = default;
};

// The strongest first.
NetworkOrder defaultOrder();

// Reads "band,channel,-signal": names of columns, with '-' before one that falls. The error is a
// name that no column of such a list has.
Result<std::vector<OrderKey>, std::string> orderKeysOf(std::string_view text,
                                                       ListKind list = ListKind::Captures);

// What an order compares of a network: a value for each key.
using OrderValues = std::vector<PlainValue>;
OrderValues orderValuesOf(const Network& network, const NetworkOrder& order,
                          const CellSurroundings& surroundings);

// Whether the values `left` stand before `right` in the order, as sortNetworks() has it. Signals
// that differ by less than `noise` dB count as equal, and no later key decides then: so a row that
// passes another one does so for a reason.
bool standsBefore(const OrderValues& left, const OrderValues& right, const NetworkOrder& order,
                  int noise = 0);

// Absent values stand last, whether a key rises or falls. Texts are ordered by octets after ASCII
// letters became small. Networks that are equal stay in their order.
void sortNetworks(std::span<Network> networks, const NetworkOrder& order,
                  const CellSurroundings& surroundings);

}  // namespace halvane::tool

#endif

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
};

struct NetworkOrder {
    std::vector<OrderKey> keys{};  // the first decides
    bool isReversed = false;       // the whole order, absent values too
};

// The strongest first.
NetworkOrder defaultOrder();

// Reads "band,channel,-signal": names of columns, with '-' before one that falls. The error is a
// name that no column of such a list has.
Result<std::vector<OrderKey>, std::string> orderKeysOf(std::string_view text,
                                                       ListKind list = ListKind::Captures);

// Absent values stand last, whether a key rises or falls. Texts are ordered by octets after ASCII
// letters became small. Networks that are equal stay in their order.
void sortNetworks(std::span<Network> networks, const NetworkOrder& order,
                  const CellSurroundings& surroundings);

}  // namespace halvane::tool

#endif

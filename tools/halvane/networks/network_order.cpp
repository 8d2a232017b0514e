#include "tools/halvane/networks/network_order.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdlib>
#include <optional>
#include <utility>

#include "tools/halvane/output/folded_case.h"

namespace halvane::tool {

namespace {

// Negative if the left value stands before the right one. Absent ones stand last.
int compared(const PlainValue& left, const PlainValue& right, bool isFalling) {
    if (left.isAbsent() || right.isAbsent()) {
        return static_cast<int>(left.isAbsent()) - static_cast<int>(right.isAbsent());
    }
    const bool areNumbers = left.number && right.number;
    const int order = areNumbers ? static_cast<int>(*left.number > *right.number) -
                                       static_cast<int>(*left.number < *right.number)
                                 : left.text.compare(right.text);
    return isFalling ? -order : order;
}

// The same of the values of all keys.
int compared(const OrderValues& left, const OrderValues& right, std::span<const OrderKey> keys) {
    for (std::size_t k = 0; k < keys.size(); ++k) {
        const int order = compared(left[k], right[k], keys[k].isFalling);
        if (order != 0) return order;
    }
    return 0;
}

// Whether the first key that differs is a signal that differs by less than `noise` dB.
bool differInNoise(const OrderValues& left, const OrderValues& right,
                   std::span<const OrderKey> keys, int noise) {
    for (std::size_t k = 0; k < keys.size(); ++k) {
        if (compared(left[k], right[k], false) == 0) continue;
        const std::optional<double>& a = left[k].number;
        const std::optional<double>& b = right[k].number;
        return std::string_view(keys[k].column->layout.name) == "signal" && a && b &&
               std::abs(*a - *b) < noise;
    }
    return false;
}

struct Placed {
    std::size_t index;
    OrderValues values;
};

// Moves each network to its place, without a second list of networks.
void takePlaces(std::span<Network> networks, std::span<Placed> places) {
    for (std::size_t start = 0; start < places.size(); ++start) {
        std::size_t hole = start;
        while (places[hole].index != start) {
            const std::size_t from = std::exchange(places[hole].index, hole);
            std::swap(networks[hole], networks[from]);
            hole = from;
        }
        places[hole].index = hole;
    }
}

}  // namespace

NetworkOrder defaultOrder() {
    return {.keys = {{networkColumnNamed("signal"), true}}};
}

Result<std::vector<OrderKey>, std::string> orderKeysOf(std::string_view text, ListKind list) {
    std::vector<OrderKey> keys;
    for (bool isLast = false; !isLast;) {
        const std::size_t comma = text.find(',');
        isLast = comma == std::string_view::npos;
        std::string_view name = text.substr(0, comma);
        const bool isFalling = name.starts_with('-');
        if (isFalling) name.remove_prefix(1);
        const NetworkColumn* const column = networkColumnNamed(name, list);
        if (column == nullptr) return Unexpected(std::string(name));
        keys.push_back({column, isFalling});
        if (!isLast) text.remove_prefix(comma + 1);
    }
    return keys;
}

OrderValues orderValuesOf(const Network& network, const NetworkOrder& order,
                          const CellSurroundings& surroundings) {
    OrderValues values;
    values.reserve(order.keys.size());
    for (const OrderKey& key : order.keys) {
        values.push_back(key.column->value(network, surroundings));
        values.back().text = foldedCase(values.back().text);
    }
    return values;
}

bool standsBefore(const OrderValues& left, const OrderValues& right, const NetworkOrder& order,
                  int noise) {
    if (differInNoise(left, right, order.keys, noise)) return false;
    const int way = compared(left, right, order.keys);
    return order.isReversed ? way > 0 : way < 0;
}

void sortNetworks(std::span<Network> networks, const NetworkOrder& order,
                  const CellSurroundings& surroundings) {
    std::vector<Placed> places;
    places.reserve(networks.size());
    for (std::size_t i = 0; i < networks.size(); ++i) {
        places.push_back({i, orderValuesOf(networks[i], order, surroundings)});
    }
    std::ranges::stable_sort(places, [&](const Placed& left, const Placed& right) {
        return compared(left.values, right.values, order.keys) < 0;
    });
    if (order.isReversed) std::ranges::reverse(places);
    takePlaces(networks, places);
}

}  // namespace halvane::tool

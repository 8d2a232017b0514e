#include "tools/halvane/networks/network_order.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "tools/halvane/output/folded_case.h"

namespace halvane::tool {

namespace {

// What a key compares.
struct Compared {
    PlainValue value;

    explicit Compared(PlainValue plain) : value(std::move(plain)) {
        value.text = foldedCase(value.text);
    }

    // Negative if this one stands before the other.
    int before(const Compared& other, bool isFalling) const {
        if (value.isAbsent() || other.value.isAbsent()) {
            return static_cast<int>(value.isAbsent()) - static_cast<int>(other.value.isAbsent());
        }
        const int order = compare(other);
        return isFalling ? -order : order;
    }

  private:
    int compare(const Compared& other) const {
        if (value.number && other.value.number) {
            return static_cast<int>(*value.number > *other.value.number) -
                   static_cast<int>(*value.number < *other.value.number);
        }
        return value.text.compare(other.value.text);
    }
};

struct Placed {
    std::size_t index;
    std::vector<Compared> values;
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

void sortNetworks(std::span<Network> networks, const NetworkOrder& order,
                  const CellSurroundings& surroundings) {
    std::vector<Placed> places;
    places.reserve(networks.size());
    for (std::size_t i = 0; i < networks.size(); ++i) {
        Placed& place = places.emplace_back(Placed{i, {}});
        for (const OrderKey& key : order.keys) {
            place.values.emplace_back(key.column->value(networks[i], surroundings));
        }
    }
    std::ranges::stable_sort(places, [&](const Placed& left, const Placed& right) {
        for (std::size_t k = 0; k < order.keys.size(); ++k) {
            const int before = left.values[k].before(right.values[k], order.keys[k].isFalling);
            if (before != 0) return before < 0;
        }
        return false;
    });
    if (order.isReversed) std::ranges::reverse(places);
    takePlaces(networks, places);
}

}  // namespace halvane::tool

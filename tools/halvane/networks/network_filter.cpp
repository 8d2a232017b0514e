#include "tools/halvane/networks/network_filter.h"

#include <algorithm>
#include <utility>

#include "tools/halvane/output/shell_word.h"

namespace halvane::tool {

void NetworkFilter::add(std::string_view option, std::string_view typed, NetworkCondition condition,
                        Subject subject) {
    auto known = std::ranges::find(options_, option, &Option::name);
    if (known == options_.end()) {
        known = options_.insert(known, Option{std::string(option), {}, subject, {}, {}});
    }
    Option& place = *known;
    if (!place.typed.empty()) place.typed += ' ';
    place.typed += option;
    if (!typed.empty()) place.typed += '=' + shellWord(typed);
    place.conditions.push_back(std::move(condition));
    place.values.emplace_back(typed);
}

bool NetworkFilter::Option::passes(const Network& network) const {
    return std::ranges::any_of(conditions,
                               [&](const NetworkCondition& holds) { return holds(network); });
}

bool NetworkFilter::passes(const Network& network) const {
    return std::ranges::all_of(options_,
                               [&](const Option& option) { return option.passes(network); });
}

bool NetworkFilter::mayPass(const MacAddress& bssid) const {
    const Network network{.bssid = bssid};
    return std::ranges::all_of(options_, [&](const Option& option) {
        return option.subject != Subject::Address || option.passes(network);
    });
}

std::vector<NetworkFilter::Share> NetworkFilter::sharesOf(std::span<const Network> networks) const {
    std::vector<Share> shares;
    for (const Option& option : options_) {
        const auto count = std::ranges::count_if(
            networks, [&](const Network& network) { return option.passes(network); });
        shares.push_back(
            {option.typed, static_cast<std::size_t>(count), option.name, option.values});
    }
    return shares;
}

}  // namespace halvane::tool

#include "tools/halvane/networks/filter_suggestion.h"

#include <algorithm>
#include <cstddef>
#include <map>
#include <optional>
#include <string_view>
#include <vector>

#include "halvane/base/escaped_text.h"
#include "halvane/base/mac_address.h"

#include "tools/halvane/output/address_text.h"
#include "tools/halvane/output/near_word.h"

namespace halvane::tool {

namespace {

// Words that are there, and how many networks each stands for.
using Words = std::map<std::string, std::size_t>;

Words namesOf(std::span<const Network> networks) {
    Words names;
    for (const Network& network : networks) {
        if (isNamed(network)) ++names[escapedText(nameOf(network))];
    }
    return names;
}

Words addressesOf(std::span<const Network> networks) {
    Words addresses;
    for (const Network& network : networks) ++addresses[addressText(network.bssid)];
    return addresses;
}

// The nearest word to the first value that has one.
const Words::value_type* nearest(const Words& words, std::span<const std::string> values) {
    std::vector<std::string_view> known;
    std::vector<const Words::value_type*> rows;
    for (const auto& row : words) {
        known.emplace_back(row.first);
        rows.push_back(&row);
    }
    for (const std::string& value : values) {
        if (const auto place = nearWord(value, known)) return rows[*place];
    }
    return nullptr;
}

// As names are shown, without the signs of a pattern that stand for others.
std::string asName(const std::string& value) {
    std::string name = value;
    std::erase(name, '*');
    return escapedText(name);
}

// As addresses are shown; a value with a mask, which is no address, stays.
std::string asAddress(const std::string& value) {
    const auto address = MacAddress::fromText(value);
    return address ? addressText(*address) : value;
}

std::vector<std::string> changed(std::vector<std::string> values,
                                 std::string (*change)(const std::string&)) {
    std::ranges::transform(values, values.begin(), change);
    return values;
}

}  // namespace

std::string filterSuggestion(const NetworkFilter::Share& share, std::span<const Network> networks) {
    if (share.option == "--ssid") {
        const Words names = namesOf(networks);
        const auto* const row = nearest(names, changed(share.values, asName));
        if (row == nullptr) return {};
        return "did you mean '" + row->first + "' (" + std::to_string(row->second) + ")?";
    }
    if (share.option != "--bssid") return {};
    const Words addresses = addressesOf(networks);
    const auto* const row = nearest(addresses, changed(share.values, asAddress));
    return row == nullptr ? std::string() : "did you mean " + row->first + '?';
}

}  // namespace halvane::tool

#include "tools/halvane/output/country_text.h"

#include <array>
#include <cstddef>
#include <string_view>

namespace halvane::tool {

namespace {

// The tables of annex E by their numbers, from 1 on.
constexpr std::array<std::string_view, 5> kTables = {"United States", "Europe", "Japan", "global",
                                                     "China"};

}  // namespace

std::string environmentText(const air::Country& country) {
    using Environment = air::Country::Environment;
    switch (country.environment()) {
        case Environment::Any:
            return "indoor and outdoor";
        case Environment::Outdoor:
            return "outdoor";
        case Environment::Indoor:
            return "indoor";
        case Environment::Noncountry:
            return "no country";
        case Environment::OperatingClassTable: {
            const auto table = static_cast<std::size_t>(*country.operatingClassTable());
            return std::string(kTables.at(table - 1)) + " table (E-" + std::to_string(table) + ')';
        }
        case Environment::Unknown:
            break;
    }
    return "environment " + std::to_string(country.environmentOctet);
}

}  // namespace halvane::tool

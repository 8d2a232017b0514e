#include "halvane/air/country.h"

#include <algorithm>

#include "halvane/air/country_layout_internal.h"
#include "halvane/air/element_codec_internal.h"

namespace halvane::air {

namespace {

constexpr int kLastTable = 5;

bool isCapital(std::uint8_t octet) {
    return octet >= 'A' && octet <= 'Z';
}

}  // namespace

HALVANE_AIR_DEFINE_ELEMENT(Country, kCountryLayout)

std::optional<std::string> Country::code() const {
    if (!std::ranges::all_of(countryCode, isCapital)) return std::nullopt;
    return std::string(countryCode.begin(), countryCode.end());
}

Country::Environment Country::environment() const {
    switch (environmentOctet) {
        case ' ':
            return Environment::Any;
        case 'O':
            return Environment::Outdoor;
        case 'I':
            return Environment::Indoor;
        case 'X':
            return Environment::Noncountry;
        default:
            return operatingClassTable() ? Environment::OperatingClassTable : Environment::Unknown;
    }
}

std::optional<int> Country::operatingClassTable() const {
    if (environmentOctet < 1 || environmentOctet > kLastTable) return std::nullopt;
    return environmentOctet;
}

}  // namespace halvane::air

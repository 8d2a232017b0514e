#include "tools/halvane/survey/network_details.h"

#include <algorithm>
#include <cstddef>
#include <string_view>

#include "halvane/air/device_name.h"
#include "halvane/air/element_id.h"
#include "halvane/air/element_range.h"
#include "halvane/air/extended_supported_rates.h"
#include "halvane/air/mesh_id.h"
#include "halvane/air/rate_octet.h"
#include "halvane/air/supported_rates.h"

namespace halvane::tool {

namespace {

constexpr std::size_t kVendorHead = 4;  // OUI and type

// In units of 500 kbit/s (IEEE 802.11-2020, clauses 15 and 16).
bool isRateOf11b(int rate) {
    constexpr int kRates[] = {2, 4, 11, 22};
    return std::ranges::count(kRates, rate) > 0;
}

template <typename Rates>
void addRates(air::Octets body, NetworkDetails& details) {
    const auto rates = Rates::decode(body);
    if (!rates) return;
    for (const air::RateOctet& octet : rates->rates) {
        const int rate = octet.rate().value_or(0);
        details.highestRate = std::max(details.highestRate, rate);
        if (rate > 0 && !isRateOf11b(rate)) details.hasOFDM = true;
    }
}

// The octets after the OUI and the type, if these are those of the element.
template <typename T>
std::optional<T> decodeVendor(air::Octets body) {
    if (body.size() < kVendorHead || body[3] != T::kType) return std::nullopt;
    if (!std::ranges::equal(T::kOui, body.first(T::kOui.size()))) return std::nullopt;
    return T::decode(body.subspan(kVendorHead));
}

std::string accessPointIn(air::Octets vendorBody) {
    if (const auto name = decodeVendor<air::AironetDeviceName>(vendorBody)) {
        return std::string(name->name.text());
    }
    if (const auto name = decodeVendor<air::MistDeviceName>(vendorBody)) {
        return std::string(name->name.text());
    }
    const auto name = decodeVendor<air::ArubaDeviceName>(vendorBody);
    return name && name->name ? std::string(name->name->text()) : std::string();
}

void addElement(const air::Element& element, NetworkDetails& details) {
    switch (element.id) {
        case air::ElementId::SupportedRates:
            return addRates<air::SupportedRates>(element.body, details);
        case air::ElementId::ExtendedSupportedRates:
            return addRates<air::ExtendedSupportedRates>(element.body, details);
        case air::ElementId::MeshId:
            if (const auto mesh = air::MeshId::decode(element.body)) {
                details.meshID = std::string(mesh->name.text());
            }
            return;
        case air::ElementId::CcxDeviceName:
            if (const auto device = air::CcxDeviceName::decode(element.body)) {
                details.accessPoint = std::string(device->name());
            }
            return;
        case air::ElementId::Vendor:
            if (details.accessPoint.empty()) details.accessPoint = accessPointIn(element.body);
            return;
        default:
            return;
    }
}

}  // namespace

NetworkDetails networkDetailsOf(air::Octets elements) {
    NetworkDetails details;
    for (const air::Element& element : air::ElementRange(elements)) addElement(element, details);
    return details;
}

}  // namespace halvane::tool

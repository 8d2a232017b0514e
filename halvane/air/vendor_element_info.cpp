#include <algorithm>
#include <tuple>

#include "halvane/air/element_decoder.h"
#include "halvane/air/element_info.h"
#include "halvane/base/byte_cursor.h"

namespace halvane::air {

namespace {

constexpr OUI kWfa = {0x50, 0x6F, 0x9A};

constexpr std::string_view kWfaSource = "Wi-Fi Alliance";

// A vendor's own row stands after those of its types.
constexpr VendorElementInfo kVendors[] = {
    {kWPAOUI, 1, "WPA", kWfaSource},
    {kWPAOUI, 2, "WMM", kWfaSource},
    {kWPAOUI, 4, "Wi-Fi Protected Setup", kWfaSource},
    {kWPAOUI, std::nullopt, "Microsoft", "IEEE registry"},
    {kWfa, 9, "Wi-Fi Direct", kWfaSource},
    {kWfa, 10, "Wi-Fi Display", kWfaSource},
    {kWfa, 16, "Hotspot 2.0 Indication", kWfaSource},
    {kWfa, 18, "OSEN", kWfaSource},
    {kWfa, 22, "MBO-OCE", kWfaSource},
    {kWfa, 28, "OWE Transition Mode", kWfaSource},
    {kWfa, 41, "RSN Override", kWfaSource},
    {kWfa, 42, "RSN Override 2", kWfaSource},
    {kWfa, 43, "RSNX Override", kWfaSource},
    {kWfa, std::nullopt, "Wi-Fi Alliance", "IEEE registry"},
};

}  // namespace

std::span<const VendorElementInfo> vendorElementInfos() {
    return kVendors;
}

const VendorElementInfo* vendorElementInfo(Octets body) {
    ByteCursor cursor(body);
    const auto oui = cursor.take(std::tuple_size_v<OUI>);
    if (!oui) return nullptr;
    const auto type = cursor.u8();
    for (const VendorElementInfo& row : kVendors) {
        if (std::ranges::equal(row.oui, *oui) && (!row.type || row.type == type)) return &row;
    }
    return nullptr;
}

}  // namespace halvane::air

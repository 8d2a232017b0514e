#include <algorithm>
#include <tuple>

#include "halvane/air/element_decoder.h"
#include "halvane/air/element_info.h"
#include "halvane/air/osen.h"
#include "halvane/air/owe_transition_mode.h"
#include "halvane/air/rsn_override.h"
#include "halvane/air/rsnx.h"
#include "halvane/air/wpa.h"
#include "halvane/base/byte_cursor.h"

namespace halvane::air {

namespace {

constexpr std::string_view kWfaSource = "Wi-Fi Alliance";

// A vendor's own row stands after those of its types.
constexpr VendorElementInfo kVendors[] = {
    {kWPAOUI, 1, "WPA", kWfaSource, decoderOf<Wpa>()},
    {kWPAOUI, 2, "WMM", kWfaSource},
    {kWPAOUI, 4, "Wi-Fi Protected Setup", kWfaSource},
    {kWPAOUI, std::nullopt, "Microsoft", "IEEE registry"},
    {kWfaOUI, 9, "Wi-Fi Direct", kWfaSource},
    {kWfaOUI, 10, "Wi-Fi Display", kWfaSource},
    {kWfaOUI, 16, "Hotspot 2.0 Indication", kWfaSource},
    {kWfaOUI, 18, "OSEN", kWfaSource, decoderOf<Osen>()},
    {kWfaOUI, 22, "MBO-OCE", kWfaSource},
    {kWfaOUI, 28, "OWE Transition Mode", kWfaSource, decoderOf<OweTransitionMode>()},
    {kWfaOUI, 41, "RSN Override", kWfaSource, decoderOf<RsnOverride>()},
    {kWfaOUI, 42, "RSN Override 2", kWfaSource, decoderOf<RsnOverride2>()},
    {kWfaOUI, 43, "RSNX Override", kWfaSource, decoderOf<RsnxOverride>()},
    {kWfaOUI, std::nullopt, "Wi-Fi Alliance", "IEEE registry"},
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

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <optional>
#include <span>
#include <string_view>
#include <tuple>

#include "halvane/air/bit_octets.h"
#include "halvane/air/device_name.h"
#include "halvane/air/element_decoder.h"
#include "halvane/air/element_info.h"
#include "halvane/air/hotspot_indication.h"
#include "halvane/air/mbo_oce.h"
#include "halvane/air/osen.h"
#include "halvane/air/owe_transition_mode.h"
#include "halvane/air/p2p.h"
#include "halvane/air/rsn_override.h"
#include "halvane/air/rsnx.h"
#include "halvane/air/wifi_display.h"
#include "halvane/air/wmm.h"
#include "halvane/air/wpa.h"
#include "halvane/air/wps_summary.h"
#include "halvane/base/byte_cursor.h"
#include "halvane/base/oui.h"

namespace halvane::air {

namespace {

constexpr std::string_view kWfaSource = "Wi-Fi Alliance";
constexpr std::string_view kMakers = "IEEE registry";
constexpr std::string_view kField = "known from the field";

// A vendor's types in their order, then its own row.
constexpr VendorElementInfo kVendors[] = {
    {kWPAOUI, 1, "WPA", kWfaSource, decoderOf<Wpa>()},
    {kWPAOUI, 2, "WMM", kWfaSource, decoderOf<Wmm>()},
    {kWPAOUI, 4, "Wi-Fi Protected Setup", kWfaSource, decoderOf<WpsSummary>()},
    {kWPAOUI, std::nullopt, "Microsoft", kMakers},
    {kWfaOUI, 9, "Wi-Fi Direct", kWfaSource, decoderOf<P2p>()},
    {kWfaOUI, 10, "Wi-Fi Display", kWfaSource, decoderOf<WifiDisplay>()},
    {kWfaOUI, 16, "Hotspot 2.0 Indication", kWfaSource, decoderOf<HotspotIndication>()},
    {kWfaOUI, 18, "OSEN", kWfaSource, decoderOf<Osen>()},
    {kWfaOUI, 19, "NAN", kWfaSource},
    {kWfaOUI, 22, "MBO-OCE", kWfaSource, decoderOf<MboOce>()},
    {kWfaOUI, 27, "Multi-AP", kWfaSource},
    {kWfaOUI, 28, "OWE Transition Mode", kWfaSource, decoderOf<OweTransitionMode>()},
    {kWfaOUI, 29, "Roaming Consortium Selection", kWfaSource},
    {kWfaOUI, 30, "Configurator Connectivity", kWfaSource},
    {kWfaOUI, 31, "SAE-PK", kWfaSource},
    {kWfaOUI, 34, "QoS Management", kWfaSource},
    {kWfaOUI, 35, "Wi-Fi Alliance Capabilities", kWfaSource},
    {kWfaOUI, 41, "RSN Override", kWfaSource, decoderOf<RsnOverride>()},
    {kWfaOUI, 42, "RSN Override 2", kWfaSource, decoderOf<RsnOverride2>()},
    {kWfaOUI, 43, "RSNX Override", kWfaSource, decoderOf<RsnxOverride>()},
    {kWfaOUI, 44, "RSN Selection", kWfaSource},
    {kWfaOUI, std::nullopt, "Wi-Fi Alliance", kMakers},
    {ArubaDeviceName::kOui, 1, "Aruba Device Name", kField, decoderOf<ArubaDeviceName>()},
    {AironetDeviceName::kOui, 47, "Aironet Device Name", kField, decoderOf<AironetDeviceName>()},
    {MistDeviceName::kOui, 1, "Mist Device Name", kField, decoderOf<MistDeviceName>()},
    {OUI{0x00, 0x0B, 0x86}, std::nullopt, "Aruba", kMakers},
    {OUI{0x00, 0x40, 0x96}, std::nullopt, "Cisco Aironet", kMakers},
    {OUI{0x5C, 0x5B, 0x35}, std::nullopt, "Mist", kMakers},
    {OUI{0x00, 0x13, 0x92}, std::nullopt, "Ruckus", kMakers},
    {OUI{0x00, 0x15, 0x6D}, std::nullopt, "Ubiquiti", kMakers},
    {OUI{0x00, 0x19, 0x77}, std::nullopt, "Aerohive", kMakers},
    {OUI{0x00, 0x18, 0x0A}, std::nullopt, "Meraki", kMakers},
    {OUI{0x00, 0x09, 0x0F}, std::nullopt, "Fortinet", kMakers},
    {OUI{0x00, 0xA0, 0xF8}, std::nullopt, "Zebra", kMakers},
    {OUI{0x00, 0x1A, 0x1E}, std::nullopt, "Aruba", kMakers},
    {OUI{0x88, 0x3A, 0x30}, std::nullopt, "Aruba", kMakers},
    {OUI{0x00, 0x26, 0x86}, std::nullopt, "Quantenna", kMakers},
    {OUI{0x00, 0x10, 0x18}, std::nullopt, "Broadcom", kMakers},
    {OUI{0x00, 0x90, 0x4C}, std::nullopt, "Epigram", kMakers},
    {OUI{0x00, 0x03, 0x7F}, std::nullopt, "Atheros", kMakers},
    {OUI{0x00, 0xA0, 0xC6}, std::nullopt, "Qualcomm", kMakers},
    {OUI{0x8C, 0xFD, 0xF0}, std::nullopt, "Qualcomm", kMakers},
    {OUI{0x00, 0x0C, 0xE7}, std::nullopt, "MediaTek", kMakers},
    {OUI{0x00, 0x0C, 0x43}, std::nullopt, "Ralink", kMakers},
    {OUI{0x00, 0xE0, 0x4C}, std::nullopt, "Realtek", kMakers},
    {OUI{0x00, 0x17, 0x35}, std::nullopt, "Intel", kMakers},
    {OUI{0x00, 0x17, 0xF2}, std::nullopt, "Apple", kMakers},
    {OUI{0x00, 0x50, 0x43}, std::nullopt, "Marvell", kMakers},
    {OUI{0x00, 0x00, 0xF0}, std::nullopt, "Samsung", kMakers},
    {kRSNOUI, std::nullopt, "IEEE 802.11", kMakers},
};

// The OUIs of the rows close to each other, since most vendor elements make a search go through
// many of them.
constexpr auto kOuis = [] {
    std::array<std::uint32_t, std::size(kVendors)> numbers{};
    std::ranges::transform(kVendors, numbers.begin(),
                           [](const VendorElementInfo& row) { return ouiNumber(row.oui); });
    return numbers;
}();

}  // namespace

std::span<const VendorElementInfo> vendorElementInfos() {
    return kVendors;
}

const VendorElementInfo* vendorElementInfo(Octets body) {
    ByteCursor cursor(body);
    const auto octets = cursor.take(std::tuple_size_v<OUI>);
    if (!octets) return nullptr;
    const std::uint32_t oui = ouiNumber({(*octets)[0], (*octets)[1], (*octets)[2]});
    const auto type = cursor.u8();
    for (std::size_t i = 0; i < kOuis.size(); ++i) {
        if (kOuis[i] != oui) continue;
        const VendorElementInfo& row = kVendors[i];
        if (!row.type || row.type == type) return &row;
    }
    return nullptr;
}

}  // namespace halvane::air

// HE Capabilities (802.11ax-2021, 9.4.2.248): what a station can do since Wi-Fi 6.
#ifndef HALVANE_AIR_HE_CAPABILITIES_H
#define HALVANE_AIR_HE_CAPABILITIES_H

#include <cstdint>
#include <optional>
#include <vector>

#include "halvane/air/bit_octets.h"
#include "halvane/air/element_damage.h"
#include "halvane/air/element_id.h"
#include "halvane/air/field_sink.h"
#include "halvane/air/he_mac_capabilities.h"
#include "halvane/air/he_phy_capabilities.h"
#include "halvane/air/mcs_map.h"
#include "halvane/air/ppe_thresholds.h"
#include "halvane/base/byte_buffer.h"
#include "halvane/base/export.h"

namespace halvane::air {

// What a station receives and sends at one width.
struct HeMcsNssSet {
    HeMcsMap rx{};
    HeMcsMap tx{};

    friend constexpr bool operator==(const HeMcsNssSet&, const HeMcsNssSet&) = default;
};

struct HALVANE_EXPORT HeCapabilities {
    static constexpr ElementId kId = ElementId::HeCapabilities;

    HeMacCapabilities mac{};
    HePhyCapabilities phy{};
    HeMcsNssSet upTo80{};
    // There if the Supported Channel Width Set has the width. encode() takes these fields as they
    // are, and changes no bit of `phy`.
    std::optional<HeMcsNssSet> at160{};
    std::optional<HeMcsNssSet> at80Plus80{};
    std::optional<HePpeThresholds> ppe{};  // there if HePhyCapability::PpeThresholdsPresent is set
    ByteBuffer rest{};

    static std::optional<HeCapabilities> decode(Octets body);
    static std::optional<ElementDamage> describe(Octets body, FieldSink& sink);
    std::vector<std::uint8_t> encode() const;

    friend bool operator==(const HeCapabilities&, const HeCapabilities&) = default;
};

}  // namespace halvane::air

#endif

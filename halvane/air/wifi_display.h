// Wi-Fi Display (Wi-Fi Alliance, vendor element 50-6F-9A, type 10): screens and what sends pictures
// to them.
#ifndef HALVANE_AIR_WIFI_DISPLAY_H
#define HALVANE_AIR_WIFI_DISPLAY_H

#include <cstdint>
#include <optional>
#include <vector>

#include "halvane/air/bit_octets.h"
#include "halvane/air/element_damage.h"
#include "halvane/air/field_sink.h"
#include "halvane/air/vendor_attribute.h"
#include "halvane/base/export.h"
#include "halvane/base/oui.h"

namespace halvane::air {

// What the device does: it sends pictures, shows them, or both.
enum class WifiDisplayRole : std::uint8_t { Source, PrimarySink, SecondarySink, Dual };

// Of the WFD Device Information subelement.
struct WifiDisplayDevice {
    std::uint16_t information = 0;
    std::uint16_t controlPort = 0;        // TCP
    std::uint16_t maximumThroughput = 0;  // Mbit/s

    WifiDisplayRole role() const { return WifiDisplayRole(information & 3); }
    bool isSessionAvailable() const { return (information >> 4 & 3) == 1; }
    bool isServiceDiscoverySupported() const { return (information & 0x40) != 0; }
    bool isContentProtectionSupported() const { return (information & 0x100) != 0; }

    friend bool operator==(const WifiDisplayDevice&, const WifiDisplayDevice&) = default;
};

struct HALVANE_EXPORT WifiDisplay {
    static constexpr OUI kOui = kWfaOUI;
    static constexpr std::uint8_t kType = 10;

    VendorAttributes attributes{};  // subelements

    // Absent if the subelement is missing or too short.
    std::optional<WifiDisplayDevice> device() const;

    static std::optional<WifiDisplay> decode(Octets body);
    static std::optional<ElementDamage> describe(Octets body, FieldSink& sink);
    std::vector<std::uint8_t> encode() const;

    friend bool operator==(const WifiDisplay&, const WifiDisplay&) = default;
};

}  // namespace halvane::air

#endif

// Wi-Fi Protected Setup (Wi-Fi Alliance, vendor element 00-50-F2, type 4): what an access point
// tells in its beacons about setup by a button or a PIN, and about itself.
#ifndef HALVANE_AIR_WPS_SUMMARY_H
#define HALVANE_AIR_WPS_SUMMARY_H

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "halvane/air/bit_octets.h"
#include "halvane/air/element_damage.h"
#include "halvane/air/field_sink.h"
#include "halvane/air/vendor_attribute.h"
#include "halvane/base/export.h"
#include "halvane/base/oui.h"

namespace halvane::air {

// Whether the access point has been set up.
enum class WpsState : std::uint8_t { NotConfigured = 1, Configured = 2 };

// The flags of Config Methods, by bit of the number.
enum class WpsConfigMethod : std::uint8_t {
    Usb = 0,
    Ethernet = 1,
    Label = 2,
    Display = 3,
    ExternalNfcToken = 4,
    IntegratedNfcToken = 5,
    NfcInterface = 6,
    PushButton = 7,
    Keypad = 8,
    VirtualPushButton = 9,
    PhysicalPushButton = 10,
    P2ps = 12,
    VirtualDisplay = 13,
    PhysicalDisplay = 14,
};

// Of the Primary Device Type attribute.
struct WpsPrimaryDeviceType {
    std::uint16_t category = 0;         // 6: network infrastructure
    std::array<std::uint8_t, 4> oui{};  // 00-50-F2-04: the Wi-Fi Alliance's subcategories
    std::uint16_t subcategory = 0;      // of 6: 1: access point

    friend bool operator==(const WpsPrimaryDeviceType&, const WpsPrimaryDeviceType&) = default;
};

// The text accessors are empty, and the others absent, for an attribute that is missing or too
// short. An element that was split into several is decoded from their bodies, joined.
struct HALVANE_EXPORT WpsSummary {
    static constexpr OUI kOui = kWPAOUI;
    static constexpr std::uint8_t kType = kWPSType;

    VendorAttributes attributes{};

    // 0x10 for 1.0; every version says so. versionOf2() tells a newer one: 0x20 for 2.0.
    std::optional<std::uint8_t> version() const { return attributeOctet(attributes, 0x104A); }
    std::optional<std::uint8_t> versionOf2() const;
    std::optional<WpsState> state() const;
    // The access point takes no PIN any more.
    bool isSetupLocked() const { return attributeOctet(attributes, 0x1057).value_or(0) != 0; }
    // Somebody has pressed the button, or entered a PIN.
    bool isRegistrarSelected() const { return attributeOctet(attributes, 0x1041).value_or(0) != 0; }
    // 0: PIN; 4: push button.
    std::optional<std::uint16_t> devicePasswordId() const {
        return attributeNumber(attributes, 0x1012);
    }
    bool hasConfigMethod(WpsConfigMethod method) const;
    std::string_view deviceName() const { return attributeText(attributes, 0x1011); }
    std::string_view manufacturer() const { return attributeText(attributes, 0x1021); }
    std::string_view modelName() const { return attributeText(attributes, 0x1023); }
    std::string_view modelNumber() const { return attributeText(attributes, 0x1024); }
    std::string_view serialNumber() const { return attributeText(attributes, 0x1042); }
    std::optional<std::array<std::uint8_t, 16>> uuid() const;  // UUID-E, otherwise UUID-R
    std::optional<WpsPrimaryDeviceType> primaryDeviceType() const;
    // Bits: 0: 2.4 GHz; 1: 5 GHz; 2: 60 GHz.
    std::optional<std::uint8_t> rfBands() const { return attributeOctet(attributes, 0x103C); }

    static std::optional<WpsSummary> decode(Octets body);
    static std::optional<ElementDamage> describe(Octets body, FieldSink& sink);
    std::vector<std::uint8_t> encode() const;

    friend bool operator==(const WpsSummary&, const WpsSummary&) = default;
};

}  // namespace halvane::air

#endif

// MBO-OCE (Wi-Fi Alliance Agile Multiband and Optimized Connectivity, vendor element 50-6F-9A,
// type 22).
#ifndef HALVANE_AIR_MBO_OCE_H
#define HALVANE_AIR_MBO_OCE_H

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

struct HALVANE_EXPORT MboOce {
    static constexpr OUI kOui = kWfaOUI;
    static constexpr std::uint8_t kType = 22;

    VendorAttributes attributes{};

    // Whether the access point takes part in Agile Multiband.
    bool isMbo() const { return findAttribute(attributes, 1) != nullptr; }
    bool isCellularDataAware() const {
        return (attributeOctet(attributes, 1).value_or(0) & 0x40) != 0;
    }
    // Why the access point takes no stations now: 1 unspecified, 2 too many stations, 3 air
    // interface overloaded, 4 authentication server overloaded, 5 insufficient signal.
    std::optional<std::uint8_t> associationDisallowed() const {
        return attributeOctet(attributes, 4);
    }
    // The release of Optimized Connectivity that the access point takes part in.
    std::optional<int> oceRelease() const;
    // Downlink and uplink capacity of the way to the internet, in units of 100 kbit/s as powers of
    // 2: n means 2^n * 100 kbit/s. Absent if the access point does not tell.
    std::optional<int> downlinkCapacity() const;
    std::optional<int> uplinkCapacity() const;

    static std::optional<MboOce> decode(Octets body);
    static std::optional<ElementDamage> describe(Octets body, FieldSink& sink);
    std::vector<std::uint8_t> encode() const;

    friend bool operator==(const MboOce&, const MboOce&) = default;
};

}  // namespace halvane::air

#endif

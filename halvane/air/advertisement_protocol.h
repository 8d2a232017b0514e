// Advertisement Protocol (IEEE 802.11-2020, 9.4.2.92): how a station may ask before it joins.
#ifndef HALVANE_AIR_ADVERTISEMENT_PROTOCOL_H
#define HALVANE_AIR_ADVERTISEMENT_PROTOCOL_H

#include <cstdint>
#include <optional>
#include <vector>

#include "halvane/air/bit_octets.h"
#include "halvane/air/element_damage.h"
#include "halvane/air/element_id.h"
#include "halvane/air/field_sink.h"
#include "halvane/base/byte_buffer.h"
#include "halvane/base/export.h"
#include "halvane/base/oui.h"

namespace halvane::air {

// Table 9-190.
enum class AdvertisementProtocolId : std::uint8_t {
    Anqp = 0,
    MihInformation = 1,
    MihCommandAndEvent = 2,
    EmergencyAlert = 3,
    RegisteredLocationQuery = 4,
    Vendor = 221,
};

// A protocol that the access point answers, and how.
struct AdvertisementProtocolTuple {
    BitOctets<1> response{};
    std::uint8_t id = 0;
    std::optional<ByteBuffer> vendor{};  // of the vendor's protocol, which begins with its OUI

    AdvertisementProtocolId protocol() const { return AdvertisementProtocolId(id); }
    // Octets of a reply at most; absent if only the management frames limit it.
    std::optional<int> responseLimit() const {
        if (response.bits(0, 7) == 127) return std::nullopt;
        return 256 * static_cast<int>(response.bits(0, 7));
    }
    bool isPameBi() const { return response.bit(7); }  // replies do not depend on the BSSID

    friend bool operator==(const AdvertisementProtocolTuple&,
                           const AdvertisementProtocolTuple&) = default;
};

struct HALVANE_EXPORT AdvertisementProtocol {
    static constexpr ElementId kId = ElementId::AdvertisementProtocol;

    std::vector<AdvertisementProtocolTuple> protocols{};

    static std::optional<AdvertisementProtocol> decode(Octets body);
    static std::optional<ElementDamage> describe(Octets body, FieldSink& sink);
    std::vector<std::uint8_t> encode() const;

    friend bool operator==(const AdvertisementProtocol&, const AdvertisementProtocol&) = default;
};

}  // namespace halvane::air

#endif

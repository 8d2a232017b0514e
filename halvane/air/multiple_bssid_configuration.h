// Multiple BSSID Configuration (IEEE 802.11ax-2021, 9.4.2.260): how many networks share the beacon,
// which need not tell of all of them at once.
#ifndef HALVANE_AIR_MULTIPLE_BSSID_CONFIGURATION_H
#define HALVANE_AIR_MULTIPLE_BSSID_CONFIGURATION_H

#include <cstdint>
#include <optional>
#include <vector>

#include "halvane/air/bit_octets.h"
#include "halvane/air/element_damage.h"
#include "halvane/air/element_id.h"
#include "halvane/air/field_sink.h"
#include "halvane/base/byte_buffer.h"
#include "halvane/base/export.h"

namespace halvane::air {

struct HALVANE_EXPORT MultipleBssidConfiguration {
    static constexpr ElementId kId = ElementId::MultipleBssidConfiguration;

    std::uint8_t bssidCount = 0;            // active ones
    std::uint8_t fullSetRxPeriodicity = 0;  // beacons that tell of all; 0 if nothing is promised
    ByteBuffer rest{};

    static std::optional<MultipleBssidConfiguration> decode(Octets body);
    static std::optional<ElementDamage> describe(Octets body, FieldSink& sink);
    std::vector<std::uint8_t> encode() const;

    friend bool operator==(const MultipleBssidConfiguration&,
                           const MultipleBssidConfiguration&) = default;
};

}  // namespace halvane::air

#endif

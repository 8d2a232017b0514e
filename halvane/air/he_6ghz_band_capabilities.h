// HE 6 GHz Band Capabilities (802.11ax-2021, 9.4.2.263): what HT and VHT Capabilities say in the
// other bands.
#ifndef HALVANE_AIR_HE_6GHZ_BAND_CAPABILITIES_H
#define HALVANE_AIR_HE_6GHZ_BAND_CAPABILITIES_H

#include <cstddef>
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

// How a station saves power by using one antenna.
enum class SmPowerSave : std::uint8_t { Static, Dynamic, Reserved, Disabled };

struct HALVANE_EXPORT He6GhzBandCapabilities {
    static constexpr ElementId kId = ElementId::He6GhzBandCapabilities;

    BitOctets<2> information{};
    ByteBuffer rest{};

    // Between two MPDUs of an A-MPDU at least: 0 (no limit), then 1/4 microsecond times 2^(n-1).
    double minimumMpduStartSpacing() const {
        return field(0, 3) == 0 ? 0.0 : 0.125 * (1 << field(0, 3));
    }
    // Octets, without the extension of the HE MAC Capabilities: 8191 to 1048575.
    int maximumAmpduLength() const { return (1 << (13 + field(3, 3))) - 1; }
    int maximumAmpduLengthExponent() const { return field(3, 3); }
    // Octets: 3895, 7991 or 11454; absent for the reserved value.
    std::optional<int> maximumMpduLength() const;
    SmPowerSave smPowerSave() const { return SmPowerSave(field(9, 2)); }
    bool isRdResponder() const { return information.bit(11); }
    bool isRxAntennaPatternConsistent() const { return information.bit(12); }
    bool isTxAntennaPatternConsistent() const { return information.bit(13); }

    static std::optional<He6GhzBandCapabilities> decode(Octets body);
    static std::optional<ElementDamage> describe(Octets body, FieldSink& sink);
    std::vector<std::uint8_t> encode() const;

    friend bool operator==(const He6GhzBandCapabilities&, const He6GhzBandCapabilities&) = default;

  private:
    int field(std::size_t first, std::size_t count) const {
        return static_cast<int>(information.bits(first, count));
    }
};

}  // namespace halvane::air

#endif

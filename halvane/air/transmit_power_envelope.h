// Transmit Power Envelope (IEEE 802.11-2020, 9.4.2.161; 802.11ax-2021 and 802.11be-2024): the
// highest power that stations may use, by width or by 20 MHz.
#ifndef HALVANE_AIR_TRANSMIT_POWER_ENVELOPE_H
#define HALVANE_AIR_TRANSMIT_POWER_ENVELOPE_H

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
#include "halvane/base/inline_list.h"

namespace halvane::air {

// The values of a BSS of 320 MHz, for the 20 MHz that TransmitPowerEnvelope::values leave out.
struct TransmitPsdExtension {
    BitOctets<1> information{};
    InlineList<std::int8_t, 15> values{};

    friend bool operator==(const TransmitPsdExtension&, const TransmitPsdExtension&) = default;
};

// Power is in units of 0.5 dBm, or of 0.5 dBm/MHz for a power spectral density (PSD).
struct HALVANE_EXPORT TransmitPowerEnvelope {
    static constexpr ElementId kId = ElementId::TransmitPowerEnvelope;

    enum class Interpretation : std::uint8_t {
        LocalEirp = 0,
        LocalEirpPsd = 1,
        RegulatoryClientEirp = 2,
        RegulatoryClientEirpPsd = 3,
        AdditionalRegulatoryClientEirp = 4,
        AdditionalRegulatoryClientEirpPsd = 5,
        Reserved6 = 6,
        Reserved7 = 7,
    };

    // Of a PSD, -128 forbids the 20 MHz. 127 is no limit.
    static constexpr std::int8_t kForbidden = -128;
    static constexpr std::int8_t kNoLimit = 127;

    BitOctets<1> information{};
    // Of an EIRP: for 20, 40, 80 and 160 MHz, as many as there are. Of a PSD: for each 20 MHz from
    // the lowest on, or one for all of them. None if count or interpretation are reserved; `rest`
    // has the octets then.
    InlineList<std::int8_t, 8> values{};
    std::optional<std::int8_t> power320{};               // of an EIRP
    std::optional<TransmitPsdExtension> psdExtension{};  // of a PSD
    ByteBuffer rest{};

    constexpr Interpretation interpretation() const {
        return static_cast<Interpretation>(information.bits(3, 3));
    }
    constexpr bool isPsd() const { return information.bit(3); }
    // 0: default, 1: for subordinate devices; 2 and 3 are reserved.
    constexpr int category() const { return static_cast<int>(information.bits(6, 2)); }
    // Whether one value holds for each 20 MHz of the channel.
    constexpr bool isPsdOfWholeChannel() const { return isPsd() && information.bits(0, 3) == 0; }
    // How many values the information field tells; 0 if it is reserved.
    constexpr std::size_t valueCount() const {
        const std::size_t count = information.bits(0, 3);
        if (interpretation() >= Interpretation::Reserved6) return 0;
        if (!isPsd()) return count <= 3 ? count + 1 : 0;
        if (count > 4) return 0;
        return count == 0 ? 1 : std::size_t{1} << (count - 1);
    }

    static std::optional<TransmitPowerEnvelope> decode(Octets body);
    static std::optional<ElementDamage> describe(Octets body, FieldSink& sink);
    std::vector<std::uint8_t> encode() const;

    friend bool operator==(const TransmitPowerEnvelope&, const TransmitPowerEnvelope&) = default;
};

}  // namespace halvane::air

#endif

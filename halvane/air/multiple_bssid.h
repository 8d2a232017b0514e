// Multiple BSSID (IEEE 802.11-2020, 9.4.2.45): profiles of the networks that have no beacon of
// their own. multiple_bssid_profiles.h reads what they say.
#ifndef HALVANE_AIR_MULTIPLE_BSSID_H
#define HALVANE_AIR_MULTIPLE_BSSID_H

#include <cstdint>
#include <optional>
#include <vector>

#include "halvane/air/bit_octets.h"
#include "halvane/air/element_damage.h"
#include "halvane/air/element_id.h"
#include "halvane/air/field_sink.h"
#include "halvane/air/subelement.h"
#include "halvane/base/byte_buffer.h"
#include "halvane/base/export.h"

namespace halvane::air {

// The subelement that is the profile of a nontransmitted BSSID, or a part of one.
inline constexpr std::uint8_t kNontransmittedProfile = 0;

// Octets after the last whole subelement are `rest`.
struct HALVANE_EXPORT MultipleBssid {
    static constexpr ElementId kId = ElementId::MultipleBssid;

    std::uint8_t maxIndicator = 1;  // n, from 1 to 8: the set has up to 2^n BSSIDs
    std::vector<Subelement> subelements{};
    ByteBuffer rest{};

    static std::optional<MultipleBssid> decode(Octets body);
    static std::optional<ElementDamage> describe(Octets body, FieldSink& sink);
    std::vector<std::uint8_t> encode() const;

    friend bool operator==(const MultipleBssid&, const MultipleBssid&) = default;
};

}  // namespace halvane::air

#endif

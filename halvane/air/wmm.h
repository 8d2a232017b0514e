// WMM (Wi-Fi Alliance, vendor element 00-50-F2, type 2): the priorities of a BSS.
#ifndef HALVANE_AIR_WMM_H
#define HALVANE_AIR_WMM_H

#include <array>
#include <cstdint>
#include <optional>
#include <vector>

#include "halvane/air/access_category.h"
#include "halvane/air/bit_octets.h"
#include "halvane/air/element_damage.h"
#include "halvane/air/field_sink.h"
#include "halvane/base/byte_buffer.h"
#include "halvane/base/export.h"
#include "halvane/base/oui.h"

namespace halvane::air {

// What the vendor element of type 2 holds.
enum class WmmSubtype : std::uint8_t { Information = 0, Parameter = 1, Tspec = 2 };

// The parameters of all access categories.
struct WmmParameters {
    std::uint8_t reserved = 0;
    std::array<EdcaRecord, 4> records{};  // of best effort, background, video and voice

    friend bool operator==(const WmmParameters&, const WmmParameters&) = default;
};

struct HALVANE_EXPORT Wmm {
    static constexpr OUI kOui = kWPAOUI;
    static constexpr std::uint8_t kType = 2;

    std::uint8_t subtypeNumber = 0;
    std::uint8_t version = 1;
    std::optional<BitOctets<1>> qosInfo{};      // of an information or a parameter element
    std::optional<WmmParameters> parameters{};  // of a parameter element
    ByteBuffer rest{};

    WmmSubtype subtype() const { return WmmSubtype(subtypeNumber); }
    // Of an access point; changes with the parameters.
    int parameterSetCount() const { return qosInfo ? static_cast<int>(qosInfo->bits(0, 4)) : 0; }
    bool isUapsdSupported() const { return qosInfo && qosInfo->bit(7); }

    static std::optional<Wmm> decode(Octets body);
    static std::optional<ElementDamage> describe(Octets body, FieldSink& sink);
    std::vector<std::uint8_t> encode() const;

    friend bool operator==(const Wmm&, const Wmm&) = default;
};

}  // namespace halvane::air

#endif

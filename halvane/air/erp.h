// ERP (IEEE 802.11-2020, 9.4.2.11): how a BSS of 802.11g protects its frames from stations of
// 802.11b.
#ifndef HALVANE_AIR_ERP_H
#define HALVANE_AIR_ERP_H

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

struct HALVANE_EXPORT Erp {
    static constexpr ElementId kId = ElementId::Erp;

    BitOctets<1> parameters{};
    ByteBuffer rest{};

    constexpr bool isNonErpPresent() const { return parameters.bit(0); }
    constexpr bool isProtectionUsed() const { return parameters.bit(1); }
    // The Barker preamble mode.
    constexpr bool isLongPreambleNeeded() const { return parameters.bit(2); }

    static std::optional<Erp> decode(Octets body);
    static std::optional<ElementDamage> describe(Octets body, FieldSink& sink);
    std::vector<std::uint8_t> encode() const;

    friend bool operator==(const Erp&, const Erp&) = default;
};

}  // namespace halvane::air

#endif

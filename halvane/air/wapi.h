// WAPI Parameter Set (GB 15629.11, element ID 68): the ciphers and the key management of a BSS of
// the Chinese standard.
#ifndef HALVANE_AIR_WAPI_H
#define HALVANE_AIR_WAPI_H

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "halvane/air/bit_octets.h"
#include "halvane/air/element_damage.h"
#include "halvane/air/element_id.h"
#include "halvane/air/field_sink.h"
#include "halvane/air/rsn.h"
#include "halvane/air/suite.h"
#include "halvane/base/byte_buffer.h"
#include "halvane/base/export.h"
#include "halvane/base/inline_list.h"

namespace halvane::air {

// IEEE 802.11 gives the same element ID to BSS AC Access Delay, which has four octets. This element
// has at least kMinSize, those of its mandatory fields without a suite in its lists.
struct HALVANE_EXPORT Wapi {
    static constexpr ElementId kId = ElementId::BssAcAccessDelay;
    static constexpr std::size_t kMinSize = 12;  // octets

    std::uint16_t version = 1;    // of the protocol; 1
    Rsn::Suites akms{};           // key management suites
    Rsn::Suites unicast{};        // ciphers of single stations
    Suite multicast{};            // cipher of the group
    BitOctets<2> capabilities{};  // bit 0: preauthentication
    // Identifiers of base keys; absent if the element ends before.
    std::optional<InlineList<Rsn::Pmkid, 15>> bkids{};
    ByteBuffer rest{};

    // Whether a station can authenticate through another access point before it comes.
    bool hasPreauthentication() const { return capabilities.bit(0); }

    // Whether an element with the ID 68 is this one.
    static bool isWapi(Octets body) { return body.size() >= kMinSize; }

    static std::optional<Wapi> decode(Octets body);
    static std::optional<ElementDamage> describe(Octets body, FieldSink& sink);
    std::vector<std::uint8_t> encode() const;

    friend bool operator==(const Wapi&, const Wapi&) = default;
};

}  // namespace halvane::air

#endif

// RSN (IEEE 802.11-2020, 9.4.2.24): the ciphers and the key management of a BSS.
#ifndef HALVANE_AIR_RSN_H
#define HALVANE_AIR_RSN_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "halvane/air/bit_octets.h"
#include "halvane/air/element_damage.h"
#include "halvane/air/element_id.h"
#include "halvane/air/field_sink.h"
#include "halvane/air/suite.h"
#include "halvane/base/byte_buffer.h"
#include "halvane/base/export.h"
#include "halvane/base/inline_list.h"

namespace halvane::air {

// Every field after the version may be missing; the fields after a missing one are missing too.
// decode() fails if a count exceeds the suites that follow.
struct HALVANE_EXPORT Rsn {
    static constexpr ElementId kId = ElementId::Rsn;
    static constexpr std::size_t kMaxSuites = 63;  // more do not fit into an element

    using Suites = InlineList<Suite, kMaxSuites>;
    using Pmkid = std::array<std::uint8_t, 16>;

    std::uint16_t version = 1;
    std::optional<Suite> group{};
    std::optional<Suites> pairwise{};
    std::optional<Suites> akms{};
    std::optional<BitOctets<2>> capabilities{};
    std::optional<InlineList<Pmkid, 15>> pmkids{};
    std::optional<Suite> groupManagement{};
    ByteBuffer rest{};

    // Of the capabilities; false if they are missing.
    bool isPmfRequired() const { return capabilities && capabilities->bit(6); }
    bool isPmfCapable() const { return capabilities && capabilities->bit(7); }

    static std::optional<Rsn> decode(Octets body);
    static std::optional<ElementDamage> describe(Octets body, FieldSink& sink);
    std::vector<std::uint8_t> encode() const;

    friend bool operator==(const Rsn&, const Rsn&) = default;
};

}  // namespace halvane::air

#endif

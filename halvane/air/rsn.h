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

// The flags of the RSN Capabilities, by bit.
enum class RsnCapability : std::uint8_t {
    Preauthentication = 0,
    NoPairwise = 1,
    PmfRequired = 6,
    PmfCapable = 7,
    JointMultiBand = 8,
    PeerKey = 9,
    SppAmsduCapable = 10,
    SppAmsduRequired = 11,
    Pbac = 12,
    ExtendedKeyId = 13,
    Ocvc = 14,
};

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
    bool has(RsnCapability flag) const {
        return capabilities && capabilities->bit(static_cast<std::size_t>(flag));
    }
    bool isPmfRequired() const { return has(RsnCapability::PmfRequired); }
    bool isPmfCapable() const { return has(RsnCapability::PmfCapable); }
    // 1, 2, 4 or 16, for each security association with one station or with the group.
    int ptksaReplayCounters() const { return replayCounters(2); }
    int gtksaReplayCounters() const { return replayCounters(4); }

    static std::optional<Rsn> decode(Octets body);
    static std::optional<ElementDamage> describe(Octets body, FieldSink& sink);
    std::vector<std::uint8_t> encode() const;

    friend bool operator==(const Rsn&, const Rsn&) = default;

  private:
    int replayCounters(std::size_t firstBit) const {
        const auto value = capabilities ? capabilities->bits(firstBit, 2) : 0;
        return value == 3 ? 16 : 1 << value;
    }
};

}  // namespace halvane::air

#endif

// Multi-Link (IEEE 802.11be-2024, 9.4.2.312): the MLD that the sender belongs to, and the other
// links of that MLD.
#ifndef HALVANE_AIR_MULTI_LINK_H
#define HALVANE_AIR_MULTI_LINK_H

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "halvane/air/bit_octets.h"
#include "halvane/air/capability_information.h"
#include "halvane/air/element_damage.h"
#include "halvane/air/element_id.h"
#include "halvane/air/field_sink.h"
#include "halvane/air/multi_link_capabilities.h"
#include "halvane/base/byte_buffer.h"
#include "halvane/base/export.h"
#include "halvane/base/mac_address.h"

namespace halvane::air {

// The values 5 to 7 are reserved.
enum class MultiLinkType : std::uint8_t {
    Basic = 0,
    ProbeRequest = 1,
    Reconfiguration = 2,
    Tdls = 3,
    PriorityAccess = 4,
};

// Which fields are there depends on the type. A field without one of the types that carry it is
// absent.
struct HALVANE_EXPORT MultiLinkCommonInfo {
    std::optional<MacAddress> mldAddress{};  // for Tdls and PriorityAccess: of the AP MLD
    std::optional<BitOctets<1>> linkIdInfo{};
    std::optional<std::uint8_t> bssParametersChangeCount{};  // of the sender's link
    std::optional<MediumSynchronizationDelay> mediumSynchronizationDelay{};
    std::optional<EmlCapabilities> emlCapabilities{};
    std::optional<MldCapabilities> mldCapabilities{};
    std::optional<std::uint8_t> apMldId{};  // 0: the MLD of the sender
    std::optional<ExtendedMldCapabilities> extendedMldCapabilities{};
    ByteBuffer rest{};

    // The link on which the frame was sent.
    std::optional<std::uint8_t> linkId() const {
        if (!linkIdInfo) return std::nullopt;
        return static_cast<std::uint8_t>(linkIdInfo->bits(0, 4));
    }

    friend bool operator==(const MultiLinkCommonInfo&, const MultiLinkCommonInfo&) = default;
};

// When the DTIM beacons of a link come.
struct DtimInfo {
    std::uint8_t count = 0;   // beacons before the next DTIM
    std::uint8_t period = 0;  // beacons from one DTIM to the next

    friend constexpr bool operator==(const DtimInfo&, const DtimInfo&) = default;
};

// Of the type Reconfiguration. Further values are reserved.
enum class ReconfigurationOperation : std::uint8_t {
    ApRemoval = 0,
    OperationParameterUpdate = 1,
    AddLink = 2,
    DeleteLink = 3,
    NstrStatusUpdate = 4,
};

// One link. The element's type decides which fields it may have: Basic has all but the removal
// timer, Reconfiguration has the address and the removal timer, the others have the profile alone.
struct HALVANE_EXPORT PerStaProfile {
    BitOctets<2> control{};
    std::optional<MacAddress> address{};            // of the station on the link: an AP's BSSID
    std::optional<std::uint16_t> beaconInterval{};  // TU
    std::optional<std::int64_t> tsfOffset{};  // the link's TSF less the sender's, in units of 2 us
    std::optional<DtimInfo> dtim{};
    std::optional<std::uint16_t> nstrLinks{};  // bit k: no simultaneous use with link k
    std::optional<std::uint8_t> bssParametersChangeCount{};
    std::optional<std::uint16_t> apRemovalTimer{};  // beacons before the AP goes
    ByteBuffer infoRest{};                          // of the STA Info field
    ByteBuffer profile{};

    std::uint8_t linkId() const { return static_cast<std::uint8_t>(control.bits(0, 4)); }
    // Whether the profile holds everything but what it inherits; of a Probe Request: whether it
    // asks for that.
    bool isComplete() const { return control.bit(4); }
    // Of the type Reconfiguration.
    ReconfigurationOperation operation() const {
        return static_cast<ReconfigurationOperation>(control.bits(7, 4));
    }

    // The Capability Information field, with which the profile of an access point or of a station
    // begins; absent if the profile is too short.
    std::optional<CapabilityInformation> capabilities() const;
    // The elements after the fixed fields, valid as long as `profile`. In a beacon, a probe
    // response and an association request the capabilities are the only fixed field. In an
    // association response the status follows, so that they take 4 octets; in a probe request and
    // in Priority Access there is none.
    Octets elements(std::size_t fixedOctets = 2) const;

    friend bool operator==(const PerStaProfile&, const PerStaProfile&) = default;
};

// An item of the Link Info field.
struct HALVANE_EXPORT MultiLinkSubelement {
    static constexpr std::uint8_t kPerStaProfile = 0;
    static constexpr std::uint8_t kFragment = 254;

    std::uint8_t id = kPerStaProfile;
    std::optional<PerStaProfile> link{};  // of kPerStaProfile, except in an element of type Tdls
    ByteBuffer body{};                    // of any other
    bool endsEmpty = false;  // a body that fills its last piece has an empty fragment after it

    friend bool operator==(const MultiLinkSubelement&, const MultiLinkSubelement&) = default;
};

// Subelements longer than 255 octets are read and written as fragments. Octets of Link Info that
// make no subelement, and everything of a reserved type, are `rest`.
struct HALVANE_EXPORT MultiLink {
    static constexpr ElementId kId = ElementId::MultiLink;

    BitOctets<2> control{};  // encode() sets the presence bits to what is there
    MultiLinkCommonInfo common{};
    std::vector<MultiLinkSubelement> subelements{};
    ByteBuffer rest{};

    MultiLinkType type() const { return static_cast<MultiLinkType>(control.bits(0, 3)); }
    // Null if the element tells nothing of the link. The first of several counts.
    const PerStaProfile* link(std::uint8_t linkId) const;

    static std::optional<MultiLink> decode(Octets body);
    static std::optional<ElementDamage> describe(Octets body, FieldSink& sink);
    std::vector<std::uint8_t> encode() const;

    friend bool operator==(const MultiLink&, const MultiLink&) = default;
};

}  // namespace halvane::air

#endif

// FILS Indication (IEEE 802.11-2020, 9.4.2.177): how a station may authenticate in one round trip.
#ifndef HALVANE_AIR_FILS_INDICATION_H
#define HALVANE_AIR_FILS_INDICATION_H

#include <array>
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
#include "halvane/base/mac_address.h"

namespace halvane::air {

// The flags of the FILS Information field, by bit.
enum class FilsFlag : std::uint8_t {
    IpAddressConfiguration = 6,
    CacheIdentifierIncluded = 7,
    HessidIncluded = 8,
    SharedKeyWithoutPfs = 9,
    SharedKeyWithPfs = 10,
    PublicKey = 11,
};

// A public key that the network may be known by.
struct FilsPublicKeyIdentifier {
    std::uint8_t keyType = 0;
    ByteBuffer indicator{};  // of the key or of who certifies it

    friend bool operator==(const FilsPublicKeyIdentifier&,
                           const FilsPublicKeyIdentifier&) = default;
};

struct HALVANE_EXPORT FilsIndication {
    static constexpr ElementId kId = ElementId::FilsIndication;
    static constexpr std::size_t kMaxItems = 7;  // of either list

    using Pair = std::array<std::uint8_t, 2>;

    // encode() takes the fields below as they are, and changes neither flags nor counts here.
    BitOctets<2> information{};
    std::optional<Pair> cacheIdentifier{};
    std::optional<MacAddress> hessid{};
    InlineList<Pair, kMaxItems> realms{};  // hashes of the realms' names
    std::vector<FilsPublicKeyIdentifier> publicKeys{};
    ByteBuffer rest{};

    bool has(FilsFlag flag) const { return information.bit(static_cast<std::size_t>(flag)); }
    std::size_t publicKeyCount() const { return information.bits(0, 3); }
    std::size_t realmCount() const { return information.bits(3, 3); }

    static std::optional<FilsIndication> decode(Octets body);
    static std::optional<ElementDamage> describe(Octets body, FieldSink& sink);
    std::vector<std::uint8_t> encode() const;

    friend bool operator==(const FilsIndication&, const FilsIndication&) = default;
};

}  // namespace halvane::air

#endif

// The 48-bit address of a station or an access point (IEEE 802-2014, 8.2: EUI-48).
//
// A plain value. Threads: as for an integer.
#ifndef HALVANE_BASE_MAC_ADDRESS_H
#define HALVANE_BASE_MAC_ADDRESS_H

#include <algorithm>
#include <array>
#include <compare>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <ostream>
#include <span>
#include <string>
#include <string_view>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/export.h"

namespace halvane {

class HALVANE_EXPORT MacAddress {
  public:
    static constexpr std::size_t kSize = 6;
    using Octets = std::array<std::uint8_t, kSize>;

    // 00:00:00:00:00:00.
    constexpr MacAddress() = default;

    // The octets in transmission order, which is also the order in which they are written.
    constexpr explicit MacAddress(const Octets& octets) : octets_(octets) {}

    // Absent unless there are exactly six octets.
    static constexpr std::optional<MacAddress> fromBytes(std::span<const std::uint8_t> bytes) {
        if (bytes.size() != kSize) return std::nullopt;
        MacAddress address;
        std::ranges::copy(bytes, address.octets_.begin());
        return address;
    }

    // Reads six pairs of hexadecimal digits of either case. One of ':' and '-' separates all pairs,
    // or no separator stands anywhere. Absent for any other text.
    static std::optional<MacAddress> fromText(std::string_view text);

    constexpr const Octets& octets() const { return octets_; }
    ByteBuffer buffer() const { return ByteBuffer(octets_); }

    // "00:1a:2b:3c:4d:5e".
    std::string text() const;

    // Whether the address names a group of stations (the I/G bit).
    constexpr bool isGroup() const { return (octets_[0] & 0x01) != 0; }
    // Whether the address is ff:ff:ff:ff:ff:ff, the group of all stations.
    constexpr bool isBroadcast() const {
        return std::ranges::all_of(octets_, [](std::uint8_t octet) { return octet == 0xFF; });
    }
    // Whether the address is locally administered (the U/L bit). No manufacturer assigns such an
    // address: a station makes one up for privacy, or an access point derives one for an additional
    // network.
    constexpr bool isLocal() const { return (octets_[0] & 0x02) != 0; }

    // The first three octets. They identify the manufacturer unless the address is local.
    constexpr std::array<std::uint8_t, 3> oui() const {
        return {octets_[0], octets_[1], octets_[2]};
    }

    // Addresses are ordered as 48-bit numbers.
    friend constexpr auto operator<=>(const MacAddress&, const MacAddress&) = default;

    friend std::ostream& operator<<(std::ostream& stream, const MacAddress& address) {
        return stream << address.text();
    }

  private:
    Octets octets_{};
};

}  // namespace halvane

// Within one process equal addresses have the same hash.
template <>
struct std::hash<halvane::MacAddress> {
    std::size_t operator()(const halvane::MacAddress& address) const noexcept {
        std::uint64_t number = 0;
        for (const std::uint8_t octet : address.octets()) number = number << 8 | octet;
        return std::hash<std::uint64_t>()(number);
    }
};

#endif

// The 48-bit address of a station or an access point (IEEE 802-2014, 8.2: EUI-48).
//
// A plain value; threads as for an integer.
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

    // The octets in the order in which they are sent, which is the one that they are written in.
    constexpr explicit MacAddress(const Octets& octets) : octets_(octets) {}

    // Absent for any other number of octets than six.
    static constexpr std::optional<MacAddress> fromBytes(std::span<const std::uint8_t> bytes) {
        if (bytes.size() != kSize) return std::nullopt;
        MacAddress address;
        std::ranges::copy(bytes, address.octets_.begin());
        return address;
    }

    // Six pairs of hexadecimal digits of either case; ':' or '-' separates all of them, or none.
    // Absent for every other text.
    static std::optional<MacAddress> fromText(std::string_view text);

    constexpr const Octets& octets() const { return octets_; }
    ByteBuffer buffer() const { return ByteBuffer(octets_); }

    // "00:1a:2b:3c:4d:5e".
    std::string text() const;

    // The address of a group of stations (the I/G bit).
    constexpr bool isGroup() const { return (octets_[0] & 0x01) != 0; }
    // ff:ff:ff:ff:ff:ff, the group of all stations.
    constexpr bool isBroadcast() const {
        return std::ranges::all_of(octets_, [](std::uint8_t octet) { return octet == 0xFF; });
    }
    // No maker assigned it (the U/L bit): a station made it up for privacy, or an access point
    // derived it for one more network.
    constexpr bool isLocal() const { return (octets_[0] & 0x02) != 0; }

    // The first three octets. Where the address is not local, they tell its maker.
    constexpr std::array<std::uint8_t, 3> oui() const {
        return {octets_[0], octets_[1], octets_[2]};
    }

    // As 48-bit numbers.
    friend constexpr auto operator<=>(const MacAddress&, const MacAddress&) = default;

    friend std::ostream& operator<<(std::ostream& stream, const MacAddress& address) {
        return stream << address.text();
    }

  private:
    Octets octets_{};
};

}  // namespace halvane

template <>
struct std::hash<halvane::MacAddress> {
    std::size_t operator()(const halvane::MacAddress& address) const noexcept {
        std::uint64_t number = 0;
        for (const std::uint8_t octet : address.octets()) number = number << 8 | octet;
        return std::hash<std::uint64_t>()(number);
    }
};

#endif
